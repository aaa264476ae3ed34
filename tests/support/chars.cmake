# Code page objects in memory, the oracle of the character model, and locales for both.
add_library(vlx_test_chars STATIC
    ${CMAKE_CURRENT_LIST_DIR}/page_builder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/page_layout.cpp
    ${CMAKE_CURRENT_LIST_DIR}/random_page.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_chars.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oracle_step.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_locale.cpp)
vlx_own(vlx_test_chars)
target_include_directories(vlx_test_chars PUBLIC
    ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_LIST_DIR}/..)
target_link_libraries(vlx_test_chars PUBLIC vlx_headers)
