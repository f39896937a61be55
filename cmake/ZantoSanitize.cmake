# Everything that is built here is instrumented, or nothing.
if(ZANTO_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU) # instrumented, the standard library's own code looks odd
        add_compile_options(-Wno-maybe-uninitialized -Wno-stringop-overflow)
    endif()
endif()

# A fuzzer goes by which code an input has reached, and by what it is compared with on the way.
if(ZANTO_BUILD_FUZZERS)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
