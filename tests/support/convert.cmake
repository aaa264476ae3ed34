# The oracle of conversion and line ends; it stands on that of the string operations.
include_guard(GLOBAL)

include(${CMAKE_CURRENT_LIST_DIR}/strings.cmake)

add_library(vlx_test_convert STATIC
    ${CMAKE_CURRENT_LIST_DIR}/oracle_convert.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_convert_buffer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_convert_elements.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_convert_eol.cpp)
vlx_own(vlx_test_convert)
target_link_libraries(vlx_test_convert PUBLIC vlx_test_strings)
