# One pkg-config file per library. The files locate the tree relative to themselves.
set(ZANTO_PKG_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# zanto_pkg_config(NAME DESCRIPTION REQUIRES REQUIRES_PRIVATE): the lists are in pkg-config syntax.
# Private requirements are written for static libraries only: a program that links a shared library
# needs neither those libraries nor their pkg-config files.
function(zanto_pkg_config name description requires requires_private)
    set(libs_private)
    if(BUILD_SHARED_LIBS)
        set(requires_private)
    elseif(NOT requires)
        set(libs_private -lstdc++ -ldl)
    endif()
    file(RELATIVE_PATH to_prefix ${CMAKE_INSTALL_PREFIX}/${ZANTO_PKG_CONFIG_DIR}
         ${CMAKE_INSTALL_PREFIX})
    string(REGEX REPLACE "/$" "" to_prefix ${to_prefix})
    list(JOIN libs_private " " libs_private)
    configure_file(cmake/Library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(
        FILES ${PROJECT_BINARY_DIR}/${name}.pc
        DESTINATION ${ZANTO_PKG_CONFIG_DIR}
        COMPONENT development)
endfunction()

zanto_pkg_config(
    ZantoPlayerFramework "Player of spherical pictures and videos" ""
    "cairo libcurl libexif glesv2 gio-2.0 gstreamer-1.0 gstreamer-app-1.0 gstreamer-pbutils-1.0 gstreamer-video-1.0 libpng libturbojpeg libwebp libwebpdemux"
)
zanto_pkg_config(ZantoHostEmbedded "The player in an application's own window, context and loop"
                 ZantoPlayerFramework glesv2)
zanto_pkg_config(ZantoHostHeadless "The player without a window" ZantoHostEmbedded egl)
if(ZANTO_BUILD_SDL_HOST)
    zanto_pkg_config(ZantoHostSDL "The player in a window of its own, made with SDL"
                     ZantoHostEmbedded "sdl2 glesv2")
endif()
