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
        $<$<BOOL:${VELUM_WARNINGS_AS_ERRORS}>:-Werror>
        -ffile-prefix-map=${VELUM_GENERATED_DIR}/=
        -ffile-prefix-map=${PROJECT_BINARY_DIR}/=
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
