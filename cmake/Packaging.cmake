# Installation for plug-in developers: headers, libraries, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(TDUTILW_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/TDUtilW)

install(TARGETS TDUtilW tdhost EXPORT TDUtilWTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/TDUtilW.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/platform/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tdhost)

install(EXPORT TDUtilWTargets NAMESPACE TDUtilW:: DESTINATION ${TDUTILW_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/TDUtilWConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/TDUtilWConfig.cmake INSTALL_DESTINATION ${TDUTILW_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/TDUtilWConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/TDUtilWConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/TDUtilWConfigVersion.cmake
  DESTINATION ${TDUTILW_CMAKE_DIR})

# Relocatable: paths are relative to where the .pc file is installed.
file(RELATIVE_PATH TDUTILW_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(${CMAKE_CURRENT_LIST_DIR}/TDUtilW.pc.in ${CMAKE_CURRENT_BINARY_DIR}/TDUtilW.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/TDUtilW.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
