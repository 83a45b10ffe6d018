# Functions that declare the targets of this project: one for a library, one for a program.

include(GNUInstallDirs)

# Sets the language, warnings and sanitizers of a target of this project. The host of an embedded MRCommon is not affected.
function(mrcommon_target_defaults target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        $<$<BOOL:${MRCOMMON_WERROR}>:-Werror>)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    if(MRCOMMON_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${MRCOMMON_SANITIZE} -fno-omit-frame-pointer
            -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${MRCOMMON_SANITIZE})
    endif()
    if(MRCOMMON_HARDEN)
        target_compile_options(${target} PRIVATE -D_GLIBCXX_ASSERTIONS -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3
            -fstack-protector-strong -fstack-clash-protection)
        target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
    endif()
endfunction()

# mrcommon_add_library(<name> SOURCES <file>... [LINKS <target>...])
# Adds a shared library of the family, known inside and outside as MRCommon::<name>. Symbols are hidden unless a
# header exports them; the loader searches for the sibling libraries in the folder of the library.
function(mrcommon_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(MRCommon::${name} ALIAS ${name})
    target_link_libraries(${name} PUBLIC mrcommon_headers ${ARG_LINKS})
    # Floating point is evaluated as written: a fused multiply-add would change the last bit of a result.
    target_compile_options(${name} PRIVATE -ffp-contract=off -fno-semantic-interposition)
    if(NOT APPLE)
        # The registry and the other singletons last as long as the process, even if the first plug-in loaded them.
        target_link_options(${name} PRIVATE -Wl,-z,nodelete)
        if(NOT MRCOMMON_SANITIZE)
            target_link_options(${name} PRIVATE -Wl,--no-undefined)
        endif()
    endif()
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${MRCOMMON_SOVERSION}
        CXX_VISIBILITY_PRESET hidden
        INSTALL_RPATH $<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>)
    mrcommon_target_defaults(${name})
    if(MRCOMMON_INSTALL)
        install(TARGETS ${name} EXPORT MRCommonTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
    endif()
endfunction()

# mrcommon_add_program(<name> SOURCES <file>... [LINKS <target>...])
# Adds a program that is linked with libMRCommon.
function(mrcommon_add_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE MRCommon::MRCommon ${ARG_LINKS})
    mrcommon_target_defaults(${name})
endfunction()
