# The oracle of the string operations; it stands on that of the character model.
include_guard(GLOBAL)

if(NOT TARGET vlx_test_chars)
    include(${CMAKE_CURRENT_LIST_DIR}/chars.cmake)
endif()

add_library(vlx_test_strings STATIC
    ${CMAKE_CURRENT_LIST_DIR}/oracle_strings.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_strings_copy.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_strings_token.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_strings_units.cpp)
vlx_own(vlx_test_strings)
target_link_libraries(vlx_test_strings PUBLIC vlx_test_chars)
