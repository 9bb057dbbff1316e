# Debian packages, one per component: 'cpack -G DEB' in a build folder; script/package makes those of
# both widths. The 32-bit ones stand beside the machine's own, as Debian's lib32 packages do.
set(pm_lib_name libpm)
set(pm_node_package pmnode)
if(CMAKE_INSTALL_LIBDIR STREQUAL lib32)
  set(pm_lib_name lib32pm)
  set(pm_node_package pmnode32)
  set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/lib32_packages.cmake)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libpm-dev (= ${PROJECT_VERSION})")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS g++-multilib)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "pmnode (= ${PROJECT_VERSION})")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pm)
set(CPACK_PACKAGE_CONTACT "The PM maintainers <pm@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "The library, for the service processes of a chassis-based access-network node.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Headers and link names, a stand-in host, and products and programs to start from.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
  "A simulated node for product plugins, scripts that assert and recorded feeds.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime tools)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${pm_lib_name}${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${pm_lib_name}-dev)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${pm_node_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/host)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY =)
# The loader's cache learns of the libraries.
file(WRITE ${CMAKE_BINARY_DIR}/install/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/install/triggers)
set(CPACK_DEBIAN_TOOLS_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/install/triggers)
include(CPack)
