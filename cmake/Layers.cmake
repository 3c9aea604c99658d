# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# Every folder of src is a library that sees only itself and what lies below it: each has an include
# root of its own, in which nothing but that folder lies, so that an include of anything above does
# not compile (but for the layers export/print and playback/panel, see .ci/check-portable).
# ov_check_layers() makes sure that no call goes up either.

# The folder of src in which an include "FOLDER/..." is looked up, alone.
function(ov_include_root result folder)
    set(root ${PROJECT_BINARY_DIR}/include/${folder})
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
    set(${result} ${root} PARENT_SCOPE)
endfunction()

# ov_layer(<name> FOLDER <folder of src> [BELOW <layer>...] SOURCES <file>...)
function(ov_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 layer "" FOLDER "BELOW;SOURCES")
    ov_include_root(root ${layer_FOLDER})
    add_library(ov_${name} STATIC ${layer_SOURCES})
    # All of them go into the plug-in, which is a shared library.
    set_target_properties(ov_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_compile_features(ov_${name} PUBLIC cxx_std_20)
    target_include_directories(ov_${name} PUBLIC
        $<BUILD_INTERFACE:${root}> $<INSTALL_INTERFACE:${OV_ENGINE_INCLUDE_DIR}>)
    list(TRANSFORM layer_BELOW PREPEND ov_)
    target_link_libraries(ov_${name} PUBLIC ${layer_BELOW} PRIVATE $<BUILD_INTERFACE:ov_warnings>)
    set_property(GLOBAL APPEND PROPERTY OV_LAYERS ${name})
endfunction()

# A program for each layer that consists of the whole of it and links only what lies below: a call
# of anything above leaves it without an end.
function(ov_check_layers)
    get_property(layers GLOBAL PROPERTY OV_LAYERS)
    set(nothing ${PROJECT_BINARY_DIR}/layers/nothing.cpp)
    file(CONFIGURE OUTPUT ${nothing} CONTENT "int main() {}\n")
    foreach(name IN LISTS layers)
        add_executable(ov_alone_${name} ${nothing} $<TARGET_OBJECTS:ov_${name}>)
        get_target_property(needed ov_${name} LINK_LIBRARIES)
        target_link_libraries(ov_alone_${name} PRIVATE ${needed})
        set_target_properties(ov_alone_${name} PROPERTIES
            RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/layers)
    endforeach()
endfunction()

# ov_module(<name> FOLDER <folder of src> LAYERS <layer>... [LIBRARIES <target>...])
# A part of the programs that they load when they need it, see src/platform/loaded_module.h.
function(ov_module name)
    cmake_parse_arguments(PARSE_ARGV 1 module "" FOLDER "LAYERS;LIBRARIES")
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${module_FOLDER}/*.cpp)
    add_library(${name} MODULE ${sources})
    set_target_properties(${name} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    list(TRANSFORM module_LAYERS PREPEND ov_)
    target_link_libraries(${name} PRIVATE ${module_LAYERS} ${module_LIBRARIES} ov_warnings)
    target_link_options(${name} PRIVATE -Wl,--exclude-libs,ALL)
    install(TARGETS ${name} DESTINATION ${CMAKE_INSTALL_LIBDIR}/ovsearch)
endfunction()
