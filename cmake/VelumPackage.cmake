# The CMake package "velum_types": find_package(velum_types CONFIG) defines velum::types and the
# libraries beside it. Each library adds itself to the export set in velum_add_library. The package
# "velum_arxml" asks for the same and makes sure that the library that reads ARXML is there.
include(CMakePackageConfigHelpers)
function(velum_add_package name)
    set(dir "${CMAKE_INSTALL_LIBDIR}/cmake/${name}")
    configure_package_config_file(
        "${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/${name}Config.cmake"
        INSTALL_DESTINATION "${dir}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake"
                                     COMPATIBILITY SameMajorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/${name}Config.cmake"
                  "${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake" DESTINATION "${dir}")
endfunction()
velum_add_package(velum_types)
if(TARGET velum_arxml)
    velum_add_package(velum_arxml)
endif()
install(
    EXPORT velum_typesTargets
    NAMESPACE velum::
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/velum_types")
