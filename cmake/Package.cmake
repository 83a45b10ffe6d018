# What an installed tree offers: headers, libraries, find_package(MRCommon CONFIG), MRCommon.pc. All of it may be moved.

include(CMakePackageConfigHelpers)

set(MRCOMMON_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/MRCommon)
configure_package_config_file(cmake/MRCommonConfig.cmake.in ${PROJECT_BINARY_DIR}/MRCommonConfig.cmake
    INSTALL_DESTINATION ${MRCOMMON_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MRCommonConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)

file(RELATIVE_PATH MRCOMMON_PC_PREFIX
    "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/MRCommon.pc.in ${PROJECT_BINARY_DIR}/MRCommon.pc @ONLY)

install(DIRECTORY src/MRCommon src/qn_basic src/qn_fileio DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development FILES_MATCHING PATTERN "*.h")
install(EXPORT MRCommonTargets NAMESPACE MRCommon:: DESTINATION ${MRCOMMON_CMAKE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/MRCommonConfig.cmake ${PROJECT_BINARY_DIR}/MRCommonConfigVersion.cmake
    DESTINATION ${MRCOMMON_CMAKE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/MRCommon.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
