# Every option of the build. A project that embeds MRCommon gets only the libraries by default.

option(MRCOMMON_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_BUILD_EXAMPLES "Build the example host and the small examples" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_BUILD_BENCHMARKS "Build the benchmarks" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_BUILD_FUZZERS "Build the fuzz targets (with Clang the engine, else the replay main)" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_BUILD_TOOLS "Build the command-line tools" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_BUILD_DOCS "Add the target `manual` (needs Doxygen)" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_INSTALL "Install the libraries, headers and manual; off if embedded, where the host decides" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_WERROR "Treat warnings as errors" ${PROJECT_IS_TOP_LEVEL})
option(MRCOMMON_HARDEN "Check buffers and containers at run time and protect the stack; Debian packages are built so" OFF)
set(MRCOMMON_BUILD_PYTHON OFF CACHE STRING
    "Build the Python module: ON, OFF, or AUTO, which leaves it out if Python's headers or pybind11 are missing")
set(MRCOMMON_SANITIZE "" CACHE STRING "Sanitizers for everything built here, for example address,undefined")

if(PROJECT_IS_TOP_LEVEL AND DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    message(FATAL_ERROR "MRCommon has only shared libraries: a process has one class registry, which its host and all "
        "plug-ins share. Configure without BUILD_SHARED_LIBS=OFF.")
endif()

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Release, Debug or RelWithDebInfo" FORCE)
endif()
