# zanto_warnings(TARGET): enables the warnings that all code here must be free of.
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
                # With full optimisation, GCC 12 reports false positives for strings and variants.
                $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-maybe-uninitialized>
                $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
                $<$<BOOL:${ZANTO_WERROR}>:-Werror>)
    # A shared library with undefined symbols fails at its own link, not at its users'. Sanitizer
    # builds are exempt, because the sanitizers' symbols are resolved later.
    if(NOT ZANTO_SANITIZE)
        target_link_options(${target} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()
