# zanto_warnings(TARGET): the warnings that all code here is clean under.
option(ZANTO_WERROR "Treat warnings as errors" OFF)

function(zanto_warnings target)
    target_compile_options(
        ${target}
        PRIVATE -Wall
                -Wextra
                -Wpedantic
                -Wshadow
                -Wconversion
                -Wsign-conversion
                -Wnon-virtual-dtor
                -Woverloaded-virtual
                -Wold-style-cast
                # Optimised to the last, GCC 12 warns of strings and variants that are sound.
                $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-maybe-uninitialized>
                $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
                $<$<BOOL:${ZANTO_WERROR}>:-Werror>)
    # A shared library that lacks something says so here, not to its users; under the sanitizers their
    # own symbols are found later.
    if(NOT ZANTO_SANITIZE)
        target_link_options(${target} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()
