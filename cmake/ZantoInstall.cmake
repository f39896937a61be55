# Installs three components: runtime (libraries, and the resources that an application may edit),
# development (headers, CMake package, pkg-config files) and player (the program). No installed file
# contains an absolute path, so the tree can be moved.
include(CMakePackageConfigHelpers)

set(ZANTO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZantoPlayerFramework)
set(ZANTO_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/ZantoPlayerFramework)

install(
    TARGETS ${ZANTO_LIBRARIES}
    EXPORT ZantoPlayerFrameworkTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT runtime
            NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    INCLUDES
    DESTINATION ${ZANTO_INCLUDE_DIR}
    FILE_SET HEADERS
    DESTINATION ${ZANTO_INCLUDE_DIR}
    COMPONENT development)
install(
    EXPORT ZantoPlayerFrameworkTargets
    NAMESPACE Zanto::
    DESTINATION ${ZANTO_CMAKE_DIR}
    COMPONENT development)
configure_package_config_file(
    cmake/ZantoPlayerFrameworkConfig.cmake.in ${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfig.cmake
    INSTALL_DESTINATION ${ZANTO_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(
    FILES ${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfig.cmake
          ${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfigVersion.cmake
          cmake/ZantoDependencies.cmake
    DESTINATION ${ZANTO_CMAKE_DIR}
    COMPONENT development)
include(cmake/ZantoPkgConfig.cmake)

install(
    FILES Resources/VertexPhotoShader.vsh
          Resources/FragmentPhotoShader.fsh
          Resources/FragmentVideoShader.fsh
          Resources/Shader.vsh
          Resources/Shader.fsh
          Resources/watermark.png
          Resources/panorama.jpg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/ZantoPlayerFramework
    COMPONENT runtime)
set_target_properties(${ZANTO_LIBRARIES} PROPERTIES INSTALL_RPATH "$ORIGIN")

if(ZANTO_BUILD_APPS)
    file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zanto-player PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
    install(TARGETS zanto-player RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT player)
    install(
        FILES packaging/zanto-player.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
        COMPONENT player)
    install(
        FILES packaging/zanto-player.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        COMPONENT player)
endif()
# Debian packages install these two differently.
if(NOT ZANTO_DEBIAN_PACKAGES)
    install(
        FILES LICENSE README.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT runtime)
    if(ZANTO_BUILD_APPS)
        install(
            FILES packaging/zanto-player.1
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
            COMPONENT player)
    endif()
endif()
