# Settings that every target of the project shares.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# Where generated sources stand, under the same relative paths as hand-written ones.
set(VELUM_GENERATED_DIR "${PROJECT_BINARY_DIR}/generated")

# What is installed finds its siblings wherever the prefix is moved to.
file(RELATIVE_PATH velum_bindir_to_libdir "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
if(APPLE)
    set(CMAKE_INSTALL_RPATH "@loader_path" "@loader_path/${velum_bindir_to_libdir}")
else()
    set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/${velum_bindir_to_libdir}")
endif()

# ccache needs to be told that precompiled headers may be trusted by content. It compares the text of
# every header (CCACHE_DEPEND), never what the preprocessor made of it: a compiler knows the headers of a
# precompiled one by their whole text, so one that was made before a comment changed would not fit.
find_program(VELUM_CCACHE ccache DOC "Compiler cache, used if present")
mark_as_advanced(VELUM_CCACHE)
if(VELUM_CCACHE AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_DEPEND=1
        "${VELUM_CCACHE}")
endif()

# The flags of every compilation. Source paths in assertion texts are relative to the repository,
# so that a message reads the same on every machine and no binary holds an absolute path.
add_library(velum_build_flags INTERFACE)
target_compile_options(
    velum_build_flags
    INTERFACE
        -Wall
        -Wextra
        -Wpedantic
        -Wconversion
        -Wshadow
        -Woverloaded-virtual
        # g++ 12 sees an overlap or an overflow in "literal" + std::string (its bug 105651).
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-stringop-overflow>
        # A library with symbols that are unique in the process is never unloaded.
        $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
        $<$<BOOL:${VELUM_WARNINGS_AS_ERRORS}>:-Werror>
        # The last that fits wins: from the widest folder to the narrowest.
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
        -ffile-prefix-map=${PROJECT_BINARY_DIR}/=
        -ffile-prefix-map=${VELUM_GENERATED_DIR}/=)
