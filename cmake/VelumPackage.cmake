# The CMake package "velum_types": find_package(velum_types CONFIG) defines velum::types and the
# libraries below it. Each library adds itself to the export set in velum_add_library.
include(CMakePackageConfigHelpers)
set(velum_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/velum_types")
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/velum_typesConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/velum_typesConfig.cmake"
    INSTALL_DESTINATION "${velum_package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/velum_typesConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/velum_typesConfig.cmake"
              "${PROJECT_BINARY_DIR}/velum_typesConfigVersion.cmake"
        DESTINATION "${velum_package_dir}")
install(
    EXPORT velum_typesTargets
    NAMESPACE velum::
    DESTINATION "${velum_package_dir}")
