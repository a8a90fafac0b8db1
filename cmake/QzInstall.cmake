include(CMakePackageConfigHelpers)

install(TARGETS qzkernel EXPORT QzkernelTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qzkernel)
install(DIRECTORY kernel/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qzkernel)
install(DIRECTORY kernel/data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/qzkernel)
install(EXPORT QzkernelTargets NAMESPACE Qz:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Qzkernel)
configure_package_config_file(cmake/QzkernelConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/QzkernelConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Qzkernel)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/QzkernelConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QzkernelConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QzkernelConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Qzkernel)

install(TARGETS qzecad EXPORT QzecadTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qzecad)
foreach(dir ${QZECAD_DIRS})
    install(DIRECTORY ${dir}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qzecad/${dir}
        FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES qzecad.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qzecad)
install(EXPORT QzecadTargets NAMESPACE Qz:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Qzecad)
configure_package_config_file(cmake/QzecadConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/QzecadConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Qzecad)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/QzecadConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QzecadConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QzecadConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Qzecad)

# pkg-config files for hosts that do not use CMake. The prefix is the one given at install time
# (cmake --install --prefix), not the configured one.
foreach(name qzkernel qzecad)
    configure_file(cmake/${name}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc.in @ONLY)
    install(CODE "
        file(READ \"${CMAKE_CURRENT_BINARY_DIR}/${name}.pc.in\" _pc)
        string(REPLACE \"%PREFIX%\" \"\${CMAKE_INSTALL_PREFIX}\" _pc \"\${_pc}\")
        file(WRITE \"${CMAKE_CURRENT_BINARY_DIR}/${name}.pc\" \"\${_pc}\")
        file(INSTALL \"${CMAKE_CURRENT_BINARY_DIR}/${name}.pc\"
             DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig\")
    ")
endforeach()
