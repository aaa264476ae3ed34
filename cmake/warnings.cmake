# Warnings are errors in everything that we wrote; `vlx_own` marks a target as ours.
add_library(vlx_warnings INTERFACE)
target_compile_options(vlx_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wcast-qual -Wformat=2 -Wundef
    # GCC 12 sees overlaps in the concatenation of std::string that are not there (its bug 105651).
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast>)

add_library(vlx_sanitize INTERFACE)
if(VLX_SANITIZE)
    target_compile_options(vlx_sanitize INTERFACE
        -fsanitize=${VLX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(vlx_sanitize INTERFACE -fsanitize=${VLX_SANITIZE})
endif()

function(vlx_own target)
    target_link_libraries(${target} PRIVATE vlx_warnings vlx_sanitize)
    if(VLX_SANITIZE) # programs in C, too, link its run time whole
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
    endif()
endfunction()

# How tests are compiled, and the tools where they do not ship: optimized little, which GCC 12 takes
# for a reason to see stray copies in the standard containers that are not there.
function(vlx_own_light target)
    vlx_own(${target})
    target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Release>>:-O1
        $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds -Wno-stringop-overflow>>)
endfunction()
