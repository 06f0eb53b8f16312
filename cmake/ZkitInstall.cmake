# `cmake --install`: headers, libraries, the CMake package and the pkg-config files. Nothing installed knows the prefix,
# so that a finished installation may be moved.
include(CMakePackageConfigHelpers)

install(DIRECTORY include/zkit TYPE INCLUDE)
install(TARGETS zkit_core zkit_color zkit_img EXPORT zkit)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/zkit)
install(EXPORT zkit NAMESPACE zkit:: DESTINATION ${packageDir})
configure_package_config_file(cmake/zkitConfig.cmake.in zkitConfig.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(zkitConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zkitConfig.cmake ${PROJECT_BINARY_DIR}/zkitConfigVersion.cmake
  DESTINATION ${packageDir})

# A pkg-config file for each library; the prefix is found from the place of the file.
file(RELATIVE_PATH prefixFromPkgConfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
set(pcCflags "")
if(NOT BUILD_SHARED_LIBS)
  set(pcCflags " -DZKIT_STATIC")
endif()
function(zkit_pkg_config name description requires)
  configure_file(cmake/zkit.pc.in zkit-${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/zkit-${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
zkit_pkg_config(core "error state, images, regions, vectors" "")
zkit_pkg_config(color "colour components and colour spaces" "zkit-core")
zkit_pkg_config(img "image processing" "zkit-color")
