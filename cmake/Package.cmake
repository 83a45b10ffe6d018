# Installs what src/ and tools/ leave out: find_package(MRCommon CONFIG), MRCommon.pc, the pages and examples.
# An installed tree may be moved. Components: runtime (the libraries), development (headers and what finds them),
# tools, docs.

include(CMakePackageConfigHelpers)

set(MRCOMMON_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/MRCommon)
configure_package_config_file(cmake/MRCommonConfig.cmake.in ${PROJECT_BINARY_DIR}/MRCommonConfig.cmake
    INSTALL_DESTINATION ${MRCOMMON_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MRCommonConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)

file(RELATIVE_PATH MRCOMMON_PC_PREFIX
    "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/MRCommon.pc.in ${PROJECT_BINARY_DIR}/MRCommon.pc @ONLY)

install(EXPORT MRCommonTargets NAMESPACE MRCommon:: DESTINATION ${MRCOMMON_CMAKE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/MRCommonConfig.cmake ${PROJECT_BINARY_DIR}/MRCommonConfigVersion.cmake
    cmake/MRCommonPlugin.cmake DESTINATION ${MRCOMMON_CMAKE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/MRCommon.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
# The pages keep their places, so that links between them hold.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs USE_SOURCE_PERMISSIONS)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs FILES_MATCHING PATTERN "*.md" PATTERN manual EXCLUDE)
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/manual/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs OPTIONAL) # if it was made

# Debian packages, one for each component: cpack -G DEB in the folder of the preset hardened. Other builds have none, and
# neither has an embedded MRCommon.
if(NOT PROJECT_IS_TOP_LEVEL OR NOT MRCOMMON_HARDEN)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "MRCommon developers")
set(CPACK_PACKAGE_CONTACT "MRCommon developers <developers@mrcommon.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tools docs)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=") # within one SONAME older callers work with a newer library
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libmrcommon${MRCOMMON_SOVERSION})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmrcommon-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME mrcommon-tools) # separate, so that libraries of two SONAMEs can be installed together
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_DOCS_PACKAGE_NAME libmrcommon-doc)
set(CPACK_DEBIAN_DOCS_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCS_PACKAGE_ARCHITECTURE all)
if(TARGET mrcommon_python)
    list(APPEND CPACK_COMPONENTS_ALL debian_python)
    get_target_property(versions mrcommon_python MRCOMMON_PYTHON_VERSIONS)
    set(CPACK_DEBIAN_DEBIAN_PYTHON_PACKAGE_NAME python3-mrcommon)
    set(CPACK_DEBIAN_DEBIAN_PYTHON_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_DEBIAN_PYTHON_PACKAGE_DEPENDS "${versions}, python3-numpy")
    set(CPACK_DEBIAN_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-distributed, python3-matplotlib")
endif()

include(CPack)
cpack_add_component(runtime DESCRIPTION "${PROJECT_DESCRIPTION}: shared libraries")
cpack_add_component(development DESCRIPTION "${PROJECT_DESCRIPTION}: headers, CMake and pkg-config files"
    DEPENDS runtime)
cpack_add_component(tools DESCRIPTION "${PROJECT_DESCRIPTION}: command-line programs" DEPENDS runtime)
if(TARGET mrcommon_python)
    cpack_add_component(debian_python DESCRIPTION "${PROJECT_DESCRIPTION}: Python module" DEPENDS runtime)
endif()
cpack_add_component(docs DESCRIPTION "${PROJECT_DESCRIPTION}: documentation")
