# Instruments everything that is built here, or nothing. The two choices exclude each other: address
# (together with undefined behaviour) and thread.
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
    # instrumentation causes false warnings in the standard library
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        add_compile_options(-Wno-array-bounds -Wno-maybe-uninitialized -Wno-stringop-overflow)
    endif()
endif()

# A fuzzer is guided by code coverage and by the comparisons that an input passes.
if(ZANTO_BUILD_FUZZERS)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
