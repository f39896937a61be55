# Library, hosts, their public headers, the resources that a host may replace, and the program.
include(CMakePackageConfigHelpers)

set(ZANTO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZantoPlayerFramework)
set(ZANTO_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/ZantoPlayerFramework)

set(ZANTO_HOSTS ZantoHostEmbedded ZantoHostHeadless)
if(ZANTO_BUILD_SDL_HOST)
    list(APPEND ZANTO_HOSTS ZantoHostSDL)
endif()

install(
    TARGETS ZantoPlayerFramework ${ZANTO_HOSTS}
    EXPORT ZantoPlayerFrameworkTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES
    DESTINATION ${ZANTO_INCLUDE_DIR}
    FILE_SET HEADERS
    DESTINATION ${ZANTO_INCLUDE_DIR})
install(
    EXPORT ZantoPlayerFrameworkTargets
    NAMESPACE Zanto::
    DESTINATION ${ZANTO_CMAKE_DIR})
configure_package_config_file(
    cmake/ZantoPlayerFrameworkConfig.cmake.in ${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfig.cmake
    INSTALL_DESTINATION ${ZANTO_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(
    FILES ${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfig.cmake
          ${PROJECT_BINARY_DIR}/ZantoPlayerFrameworkConfigVersion.cmake
          cmake/ZantoDependencies.cmake
    DESTINATION ${ZANTO_CMAKE_DIR})

install(
    FILES Resources/VertexPhotoShader.vsh Resources/FragmentPhotoShader.fsh
          Resources/FragmentVideoShader.fsh Resources/watermark.png Resources/panorama.jpg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/ZantoPlayerFramework)
install(FILES LICENSE README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(ZANTO_BUILD_APPS)
    file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zanto-player PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
    install(TARGETS zanto-player RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
set_target_properties(${ZANTO_HOSTS} PROPERTIES INSTALL_RPATH "$ORIGIN")
