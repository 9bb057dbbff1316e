# What is installed, in three components:
#  runtime      the library
#  development  headers, link names, package descriptions, sources to start a product from
#  tools        the stand-in host, pmnode with its product and examples, manual pages
include(CMakePackageConfigHelpers)

set(pm_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/pm)
set(pm_own_dir ${CMAKE_INSTALL_LIBDIR}/pm)
set(pm_share_dir ${CMAKE_INSTALL_DATADIR}/pm)
# find_package looks into lib/ only on Debian, there into every folder whose name begins with the
# package's, and takes the one whose version file agrees to the width.
set(pm_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/pm)
if(CMAKE_INSTALL_LIBDIR STREQUAL lib32)
  set(pm_cmake_dir lib/cmake/pm-32)
endif()

install(TARGETS pm EXPORT pmTargets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
set_target_properties(pm_host PROPERTIES EXPORT_NAME host)
install(TARGETS pm_host EXPORT pmTargets
  LIBRARY COMPONENT tools NAMELINK_COMPONENT development)

# Headers: the library's at the top, so that "pm.h" and "platform/..." mean what they mean here.
install(DIRECTORY include/ DESTINATION ${pm_include_dir} COMPONENT development
  FILES_MATCHING PATTERN *.h)
install(DIRECTORY platform DESTINATION ${pm_include_dir} COMPONENT development
  FILES_MATCHING PATTERN *.h)
install(DIRECTORY host DESTINATION ${pm_include_dir} COMPONENT development
  FILES_MATCHING PATTERN *.hpp PATTERN call.hpp EXCLUDE)

# The program lies beside the libraries of its width, and only its name in the folder of programs.
if(PM_BUILD_NODE)
  file(RELATIVE_PATH pm_libraries_from_own
    /${pm_own_dir} /${CMAKE_INSTALL_LIBDIR})
  file(RELATIVE_PATH pm_own_from_bin /${CMAKE_INSTALL_BINDIR} /${pm_own_dir})
  set_target_properties(pmnode bundled_product PROPERTIES
    INSTALL_RPATH "$ORIGIN/${pm_libraries_from_own}")
  install(TARGETS pmnode bundled_product
    RUNTIME DESTINATION ${pm_own_dir} COMPONENT tools
    LIBRARY DESTINATION ${pm_own_dir} COMPONENT tools)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/install)
  file(CREATE_LINK ${pm_own_from_bin}/pmnode ${CMAKE_BINARY_DIR}/install/pmnode SYMBOLIC)
  install(FILES ${CMAKE_BINARY_DIR}/install/pmnode
    DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  install(DIRECTORY examples/ DESTINATION ${pm_share_dir}/examples COMPONENT tools
    FILES_MATCHING REGEX "/[^/]*_(product|plugin|program)$" EXCLUDE PATTERN *.toml PATTERN *.pmn)
  install(DIRECTORY examples/bundled_product examples/product_plugin examples/service_program
    DESTINATION ${pm_share_dir}/examples COMPONENT development)
  file(GLOB pm_man_pages CONFIGURE_DEPENDS docs/man/*.1)
  install(FILES ${pm_man_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()

# find_package(pm) and pkg-config. Paths are relative to where the files lie, so that the whole can
# be moved.
write_basic_package_version_file(${CMAKE_BINARY_DIR}/install/pmConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
configure_package_config_file(cmake/pmConfig.cmake.in
  ${CMAKE_BINARY_DIR}/install/pmConfig.cmake
  INSTALL_DESTINATION ${pm_cmake_dir} PATH_VARS pm_own_dir pm_share_dir)
install(FILES ${CMAKE_BINARY_DIR}/install/pmConfig.cmake
  ${CMAKE_BINARY_DIR}/install/pmConfigVersion.cmake
  DESTINATION ${pm_cmake_dir} COMPONENT development)
install(EXPORT pmTargets NAMESPACE pm:: DESTINATION ${pm_cmake_dir} COMPONENT development)

file(RELATIVE_PATH pm_prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(description pm pm-host)
  configure_file(cmake/${description}.pc.in
    ${CMAKE_BINARY_DIR}/install/${description}.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/install/${description}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()
