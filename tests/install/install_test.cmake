# Installs the build into an empty prefix, moves the prefix, and builds and runs the same program
# against it twice: by find_package and by pkg-config.
cmake_minimum_required(VERSION 3.25)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/first")
# Moved, so that a path fixed at installation time would be found out.
file(RENAME "${WORK_DIR}/first" "${WORK_DIR}/prefix")

foreach(file IN ITEMS share/bash-completion/completions/velum share/man/man1/velum.1)
    file(READ "${WORK_DIR}/prefix/${file}" text)
    string(FIND "${text}" "velum" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "${file} is empty")
    endif()
endforeach()

message(STATUS "A CMake project with find_package")
run("${CMAKE_COMMAND}"
    -S "${CONSUMER_DIR}"
    -B "${WORK_DIR}/consumer"
    -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix"
    "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}"
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/consumer")
run("${WORK_DIR}/consumer/consumer")
run("${WORK_DIR}/consumer/arxml_consumer" "${SAMPLE}")

message(STATUS "A program built through pkg-config")
find_program(PKG_CONFIG pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} "${WORK_DIR}/prefix/${LIBDIR}/pkgconfig")
function(build_and_run source library)
    execute_process(
        COMMAND "${PKG_CONFIG}" --cflags --libs ${library}
        OUTPUT_VARIABLE flags
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS} ${flags}")
    set(program "${WORK_DIR}/${library}_consumer")
    run("${CXX_COMPILER}" -std=c++20 "${CONSUMER_DIR}/${source}" -o "${program}" ${flags}
        "-Wl,-rpath,${WORK_DIR}/prefix/${LIBDIR}")
    run("${program}" ${ARGN})
endfunction()
build_and_run(main.cpp velum_types)
build_and_run(arxml.cpp velum_arxml "${SAMPLE}")
