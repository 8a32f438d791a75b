# What `cmake --install` lays down: the program, the shared libraries with their version, the public headers,
# a CMake package and a pkg-config file. tests/structure/installed builds a project against it.
include(CMakePackageConfigHelpers)

set(libraries efiutl bailuxhost bailuxsko)
foreach(library ${libraries})
    add_library(bailuxsko::${library} ALIAS ${library})
    set_target_properties(${library} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH $ORIGIN
        INSTALL_RPATH_USE_LINK_PATH ON)
    target_compile_features(${library} PUBLIC cxx_std_20)
    target_include_directories(${library} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()
file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(bailuxsko-program PROPERTIES
    OUTPUT_NAME bailuxsko
    INSTALL_RPATH $ORIGIN/${bin_to_lib}
    INSTALL_RPATH_USE_LINK_PATH ON)

install(TARGETS ${libraries} EXPORT bailuxsko)
install(TARGETS bailuxsko-program)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ TYPE INCLUDE)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/bailuxsko)
install(EXPORT bailuxsko NAMESPACE bailuxsko:: FILE bailuxskoConfig.cmake DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/bailuxskoConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/bailuxskoConfigVersion.cmake DESTINATION ${package_dir})

file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/bailuxsko.pc.in ${CMAKE_BINARY_DIR}/bailuxsko.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/bailuxsko.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
