# velum_generate(<name> MODEL <file>)
#
# Generates the C++ of one metamodel file into VELUM_GENERATED_DIR while building. Defines
#     <name>_GENERATED_SOURCES   what the library compiles
#     <name>_GENERATED_HEADERS   the public headers
# and the target <name>_generated, on which the library must depend.
#
# A file whose text stays the same keeps its time stamp, so an edit of the metamodel rebuilds what
# depends on it and nothing else. A faulty metamodel stops the build with every fault it has.
set(VELUM_GENERATOR_DIR "${CMAKE_CURRENT_LIST_DIR}")

# The interpreter of the distribution has the distribution's Jinja2; one that is first in the path
# for other reasons may not.
if(NOT VELUM_PYTHON)
    set(candidates "/usr/bin/python3")
    find_package(Python3 3.11 QUIET COMPONENTS Interpreter)
    if(Python3_EXECUTABLE)
        list(APPEND candidates "${Python3_EXECUTABLE}")
    endif()
    foreach(candidate IN LISTS candidates)
        execute_process(
            COMMAND "${candidate}" -c "import sys, jinja2, tomllib; sys.exit(sys.version_info < (3, 11))"
            RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
        if(result EQUAL 0)
            set(VELUM_PYTHON "${candidate}" CACHE FILEPATH "A Python 3.11 with Jinja2, runs the generator")
            break()
        endif()
    endforeach()
    if(NOT VELUM_PYTHON)
        message(FATAL_ERROR "No Python 3.11 with Jinja2 is found (tried: ${candidates}). "
                            "Install python3-jinja2 or set VELUM_PYTHON.")
    endif()
endif()

function(velum_generate name)
    cmake_parse_arguments(ARG "" "MODEL" "" ${ARGN})
    get_filename_component(model "${ARG_MODEL}" ABSOLUTE)
    set(generator "${VELUM_GENERATOR_DIR}/generate.py")
    # Which files there will be must be known now, so a change of the model configures again.
    set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${model}")
    execute_process(
        COMMAND "${VELUM_PYTHON}" "${generator}" list "${model}"
        RESULT_VARIABLE result OUTPUT_VARIABLE listing)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "The metamodel file ${ARG_MODEL} has the faults above.")
    endif()
    string(REPLACE "\n" ";" listing "${listing}")
    foreach(entry IN LISTS listing)
        if(entry MATCHES "^input=(.*)$")
            list(APPEND inputs "${CMAKE_MATCH_1}")
        elseif(entry MATCHES "^(header|private|source)=(.*)$")
            set(path "${VELUM_GENERATED_DIR}/${CMAKE_MATCH_2}")
            list(APPEND outputs "${path}")
            list(APPEND ${CMAKE_MATCH_1}s "${path}")
        endif()
    endforeach()
    set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${inputs})

    set(stamp "${PROJECT_BINARY_DIR}/generated-${name}.stamp")
    add_custom_command(
        OUTPUT "${stamp}"
        BYPRODUCTS ${outputs}
        COMMAND "${VELUM_PYTHON}" "${generator}" write "${model}" --out "${VELUM_GENERATED_DIR}" --stamp "${stamp}"
        DEPENDS ${inputs}
        COMMENT "Generating C++ from ${ARG_MODEL}"
        VERBATIM)
    add_custom_target(${name}_generated DEPENDS "${stamp}")
    if(TARGET velum_generated)
        add_dependencies(velum_generated ${name}_generated)
    endif()
    set(${name}_GENERATED_SOURCES ${sources} PARENT_SCOPE)
    set(${name}_GENERATED_HEADERS ${headers} PARENT_SCOPE)
endfunction()
