# Declares plug-ins: shared libraries that a host opens while it runs. Part of the installed package.

# mrcommon_add_plugin(<name> SOURCES <file>... EXPORTS <function>...)
# Adds a module that exports the named C functions and no other symbol. Any further symbol could be bound by
# another module, which keeps the plug-in in memory after it was closed. The functions are declared with MRCOMMON_API and
# extern "C"; the linker reports a function that no source defines.
function(mrcommon_add_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;EXPORTS")
    if(ARG_UNPARSED_ARGUMENTS OR NOT ARG_SOURCES OR NOT ARG_EXPORTS)
        message(FATAL_ERROR "usage: mrcommon_add_plugin(<name> SOURCES <file>... EXPORTS <function>...)")
    endif()

    add_library(${name} MODULE ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE MRCommon::MRCommon)
    set_target_properties(${name} PROPERTIES
        C_VISIBILITY_PRESET hidden
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        SUFFIX "${CMAKE_SHARED_LIBRARY_SUFFIX}")

    set(exports ${CMAKE_CURRENT_BINARY_DIR}/${name}.exports)
    if(APPLE)
        list(TRANSFORM ARG_EXPORTS PREPEND "_" OUTPUT_VARIABLE lines)
        list(JOIN lines "\n" text)
        set(option -exported_symbols_list,) # the linker requires that each of them is defined
    else()
        list(JOIN ARG_EXPORTS ";\n    " lines)
        set(text "{\nglobal:\n    ${lines};\nlocal:\n    *;\n};")
        set(option --version-script=)
        foreach(function IN LISTS ARG_EXPORTS)
            target_link_options(${name} PRIVATE -Wl,--require-defined=${function})
        endforeach()
    endif()
    file(CONFIGURE OUTPUT ${exports} CONTENT "${text}\n" @ONLY)
    target_link_options(${name} PRIVATE "-Wl,${option}${exports}")
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${exports})
endfunction()
