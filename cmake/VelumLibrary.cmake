# velum_add_library(<target>
#     EXPORT_NAME <name>          velum::<name>, in the build and for users of the package
#     EXPORT_MACRO <macro>        defined while the library itself is compiled
#     INCLUDE_DIRS <dir>...       public include trees, installed as they stand
#     SOURCES <file>...
#     PUBLIC_LINK <target>...     PRIVATE_LINK <target>...)
#
# Makes one of the project's shared libraries: hidden visibility, SONAME, install rules.
function(velum_add_library target)
    cmake_parse_arguments(
        ARG "" "EXPORT_NAME;EXPORT_MACRO" "INCLUDE_DIRS;SOURCES;PUBLIC_LINK;PRIVATE_LINK" ${ARGN})
    add_library(${target} SHARED ${ARG_SOURCES})
    add_library(velum::${ARG_EXPORT_NAME} ALIAS ${target})
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_definitions(${target} PRIVATE ${ARG_EXPORT_MACRO})
    target_link_libraries(
        ${target}
        PUBLIC ${ARG_PUBLIC_LINK}
        PRIVATE $<BUILD_INTERFACE:velum_build_flags> ${ARG_PRIVATE_LINK})
    foreach(dir IN LISTS ARG_INCLUDE_DIRS)
        target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${dir}>)
        install(DIRECTORY "${dir}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
    endforeach()
    target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(
        ${target}
        PROPERTIES EXPORT_NAME ${ARG_EXPORT_NAME}
                   VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}.${PROJECT_VERSION_PATCH}
                   SOVERSION ${PROJECT_VERSION_MAJOR})
    install(
        TARGETS ${target}
        EXPORT velum_typesTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endfunction()

# velum_add_test(<target> LINK <target>... SOURCES <file>...)
#
# One GoogleTest program; each of its cases becomes a CTest test.
function(velum_add_test target)
    cmake_parse_arguments(ARG "" "" "LINK;SOURCES" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE velum_build_flags ${ARG_LINK} GTest::gtest_main)
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST)
endfunction()
