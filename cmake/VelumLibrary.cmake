# velum_add_library(<target>
#     EXPORT_NAME <name>          velum::<name>, in the build and for users of the package
#     EXPORT_MACRO <macro>        defined while the library itself is compiled
#     DESCRIPTION <sentence>      one line for users of pkg-config
#     INCLUDE_DIRS <dir>...       public include trees, installed but for
#     INTERNAL <path>...          what in them only the project's own libraries include
#     SOURCES <file>...           written by hand
#     GENERATED <file>...         written by the generator
#     PUBLIC_LINK <target>...     PRIVATE_LINK <target>...
#     PRECOMPILE <header>...)     headers that most of the sources include
#
# Makes one of the project's shared libraries: hidden visibility, SONAME, install rules and a
# pkg-config file. A public link to another of our libraries also becomes its "Requires".
function(velum_add_library target)
    cmake_parse_arguments(
        ARG "" "EXPORT_NAME;EXPORT_MACRO;DESCRIPTION"
        "INCLUDE_DIRS;INTERNAL;SOURCES;GENERATED;PUBLIC_LINK;PRIVATE_LINK;PRECOMPILE" ${ARGN})
    add_library(${target} SHARED ${ARG_SOURCES} ${ARG_GENERATED})
    velum_unite(${target} MOST 12 SOURCES ${ARG_SOURCES})
    if(ARG_GENERATED)
        velum_unite(${target} MOST 24 SOURCES ${ARG_GENERATED})
    endif()
    add_library(velum::${ARG_EXPORT_NAME} ALIAS ${target})
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_definitions(${target} PRIVATE ${ARG_EXPORT_MACRO})
    target_link_libraries(
        ${target}
        PUBLIC ${ARG_PUBLIC_LINK}
        PRIVATE $<BUILD_INTERFACE:velum_build_flags> ${ARG_PRIVATE_LINK})
    foreach(dir IN LISTS ARG_INCLUDE_DIRS)
        target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${dir}>)
        list(TRANSFORM ARG_INTERNAL REPLACE "(.+)" "PATTERN;\\1;EXCLUDE" OUTPUT_VARIABLE internal)
        install(DIRECTORY "${dir}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" ${internal})
    endforeach()
    target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(
        ${target}
        PROPERTIES EXPORT_NAME ${ARG_EXPORT_NAME}
                   VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}.${PROJECT_VERSION_PATCH}
                   SOVERSION ${PROJECT_VERSION_MAJOR})
    velum_precompile(${target} ${ARG_PRECOMPILE})
    install(
        TARGETS ${target}
        EXPORT velum_typesTargets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")

    set(pc_name ${target})
    set(pc_description "${PROJECT_DESCRIPTION}")
    if(ARG_DESCRIPTION)
        set(pc_description "${ARG_DESCRIPTION}")
    endif()
    set(pc_requires)
    foreach(dependency IN LISTS ARG_PUBLIC_LINK)
        get_target_property(aliased ${dependency} ALIASED_TARGET)
        if(aliased)
            set(dependency ${aliased})
        endif()
        get_target_property(imported ${dependency} IMPORTED)
        if(NOT imported)
            list(APPEND pc_requires ${dependency})
        endif()
    endforeach()
    list(JOIN pc_requires ", " pc_requires)
    # From the folder of the .pc file up to the prefix, so that the prefix can be moved.
    file(RELATIVE_PATH pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${PROJECT_BINARY_DIR}/${target}.pc"
                   @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${target}.pc"
            DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

# velum_unite(<target> MOST <count> [SOURCES <file>...])
#
# Compiles sources of a target, all unless named, in units of up to that many neighbours in the list, so
# that the headers they share are read once a unit; VELUM_UNITY_SCALE times as many in builds that nobody
# edits in. Files with flags of their own are compiled alone; with VELUM_UNITY_BUILD off, all are.
function(velum_unite target)
    cmake_parse_arguments(ARG "" "MOST" "SOURCES" ${ARGN})
    if(NOT VELUM_UNITY_BUILD)
        return()
    endif()
    if(NOT ARG_SOURCES)
        get_target_property(ARG_SOURCES ${target} SOURCES)
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # Within a unit g++ takes a source for a header, whose unnamed namespaces would be a fault.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    math(EXPR most "${ARG_MOST} * ${VELUM_UNITY_SCALE}")
    set(count 0)
    foreach(source IN LISTS ARG_SOURCES)
        math(EXPR unit "${count} / ${most}")
        math(EXPR count "${count} + 1")
        set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${ARG_MOST}_${unit}")
    endforeach()
endfunction()

# velum_precompile(<target> <header>...)
#
# Precompiles headers for a target, unless the build says not to.
function(velum_precompile target)
    if(VELUM_PRECOMPILED_HEADERS AND ARGN)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# velum_add_test(<target> [LONG] LINK <target>... SOURCES <file>...)
#
# One GoogleTest program; each of its cases becomes a CTest test. Sees tests/ for "support/...". Its own
# code is optimised little, for it takes longer to compile than to run; LONG says that it doesn't.
function(velum_add_test target)
    cmake_parse_arguments(ARG "LONG" "" "LINK;SOURCES" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${target} PRIVATE velum_build_flags ${ARG_LINK} GTest::gtest_main)
    if(NOT ARG_LONG)
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1> ${VELUM_TEST_FLAGS})
    endif()
    list(FILTER ARG_SOURCES EXCLUDE REGEX "TARGET_OBJECTS")
    velum_unite(${target} MOST 6 SOURCES ${ARG_SOURCES})
    list(LENGTH ARG_SOURCES count)
    if(count GREATER 3) # with fewer files the header costs more than it saves
        velum_precompile(${target} <gtest/gtest.h>)
    endif()
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST)
endfunction()
