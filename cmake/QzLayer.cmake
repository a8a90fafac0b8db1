# The scene layer: one shared library whose only visible symbols are the three entry points
# and the exported classes (marked QZECAD_EXPORT).
file(GLOB_RECURSE QZECAD_SOURCES CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/component/*.cpp
    ${PROJECT_SOURCE_DIR}/scene/*.cpp
    ${PROJECT_SOURCE_DIR}/design/*.cpp
    ${PROJECT_SOURCE_DIR}/board/*.cpp
    ${PROJECT_SOURCE_DIR}/schematic/*.cpp
    ${PROJECT_SOURCE_DIR}/compare/*.cpp)
add_library(qzecad SHARED ${QZECAD_SOURCES})
add_library(Qz::ecad ALIAS qzecad)
qz_warnings(qzecad)
set_target_properties(qzecad PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    VERSION ${PROJECT_VERSION} SOVERSION 0)
target_compile_definitions(qzecad PRIVATE QZECAD_BUILDING)
target_include_directories(qzecad PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qzecad>)
target_link_libraries(qzecad PUBLIC qzkernel)
