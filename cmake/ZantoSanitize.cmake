# Either everything that is built here is instrumented or nothing. The two kinds exclude each other:
# address (with undefined behaviour) and thread.
if(ZANTO_SANITIZE STREQUAL "address")
    set(sanitizers address,undefined)
elseif(ZANTO_SANITIZE STREQUAL "thread")
    set(sanitizers thread)
elseif(ZANTO_SANITIZE)
    message(FATAL_ERROR "ZANTO_SANITIZE is OFF, address or thread, not ${ZANTO_SANITIZE}")
endif()
if(ZANTO_SANITIZE)
    add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${sanitizers})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU) # instrumented, the standard library's own code looks odd
        add_compile_options(-Wno-array-bounds -Wno-maybe-uninitialized -Wno-stringop-overflow)
    endif()
endif()

# A fuzzer goes by which code an input has reached, and by what it is compared with on the way.
if(ZANTO_BUILD_FUZZERS)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
