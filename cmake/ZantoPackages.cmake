# Debian packages, one per component, made by scripts/package: CPack collects the installed files,
# and the distribution's tools determine the dependencies.
option(ZANTO_DEBIAN_PACKAGES "Lay out the installation as Debian packages want it" OFF)
if(NOT ZANTO_DEBIAN_PACKAGES)
    return()
endif()

# Components that are loaded at run time, which those tools cannot detect: demuxers, decoders, the
# graphics driver.
set(ZANTO_LOADED_MEDIA "gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, \
gstreamer1.0-plugins-bad, gstreamer1.0-libav")
set(ZANTO_LOADED_GRAPHICS "libegl-mesa0 | libegl-vendor, libgl1-mesa-dri | libegl-vendor")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zantoplayerframework)
set(CPACK_PACKAGE_CONTACT "The ZantoPlayerFramework developers <zantoplayerframework@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development player)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/Hosts)
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzantoplayerframework1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS ${ZANTO_LOADED_MEDIA})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "ca-certificates, ${ZANTO_LOADED_GRAPHICS}")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "player of spherical pictures and videos - libraries
Shows equirectangular pictures and videos from inside the sphere, flat or as
a little planet, drawn with OpenGL ES 2.0 into a host application's window.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzantoplayerframework-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzantoplayerframework1 ${same_version}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "player of spherical pictures and videos - headers
What a host application is built with: headers, the CMake package and the
pkg-config files.")

set(CPACK_DEBIAN_PLAYER_PACKAGE_NAME zanto-player)
set(CPACK_DEBIAN_PLAYER_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PLAYER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PLAYER_PACKAGE_DEPENDS
    "libzantoplayerframework1 ${same_version}, ca-certificates, ${ZANTO_LOADED_GRAPHICS}")
# The font of the controls; without it, text is coarse.
set(CPACK_DEBIAN_PLAYER_PACKAGE_RECOMMENDS fonts-dejavu-core)
set(CPACK_COMPONENT_PLAYER_DESCRIPTION
    "player of spherical pictures and videos
A window that shows equirectangular pictures and videos from inside the
sphere, flat, as a little planet or side by side, and a command that renders
them without a display.")
include(CPack)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} COMPONENT)
    install(
        FILES packaging/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME}
        COMPONENT ${component})
endforeach()
# Compresses the manual page without a time stamp, so that equal sources yield equal packages.
set(manual ${PROJECT_BINARY_DIR}/zanto-player.1.gz)
add_custom_command(
    OUTPUT ${manual}
    COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/packaging/zanto-player.1 > ${manual}
    DEPENDS packaging/zanto-player.1
    VERBATIM)
add_custom_target(zanto-manual ALL DEPENDS ${manual})
install(
    FILES ${manual}
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    COMPONENT player)
