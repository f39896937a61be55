# zanto_embed(TARGET FILE SYMBOL): embeds FILE into TARGET as the base64 text SYMBOL.
function(zanto_embed target file symbol)
    set(input ${PROJECT_SOURCE_DIR}/${file})
    set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded/${symbol}.cpp)
    set(script ${PROJECT_SOURCE_DIR}/cmake/EmbedBase64.cmake)
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -DINPUT=${input} -DOUTPUT=${output} -DSYMBOL=${symbol} -P ${script}
        DEPENDS ${input} ${script}
        COMMENT "Embedding ${file}"
        VERBATIM)
    target_sources(${target} PRIVATE ${output})
endfunction()
