# The scene layer. Its sources compile once into an object library: the shared library, whose
# only visible symbols are the three entry points and the exported classes (QZECAD_EXPORT), is
# made from it, and the unit tests link the same objects directly so that they can reach the
# layer's internal classes.
#
# QZECAD_DIRS names the layer's folders, one per concern; the installed headers follow it too. A
# new kind of scene adds its folder here.
set(QZECAD_DIRS component scene design board schematic compare)
set(QZECAD_SOURCE_GLOBS)
foreach(dir ${QZECAD_DIRS})
    list(APPEND QZECAD_SOURCE_GLOBS ${PROJECT_SOURCE_DIR}/${dir}/*.cpp)
endforeach()
file(GLOB_RECURSE QZECAD_SOURCES CONFIGURE_DEPENDS ${QZECAD_SOURCE_GLOBS})
add_library(qzecad_objects OBJECT ${QZECAD_SOURCES})
qz_warnings(qzecad_objects)
set_target_properties(qzecad_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_definitions(qzecad_objects PRIVATE QZECAD_BUILDING)
target_include_directories(qzecad_objects PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
target_link_libraries(qzecad_objects PUBLIC qzkernel)

add_library(qzecad SHARED $<TARGET_OBJECTS:qzecad_objects>)
add_library(Qz::ecad ALIAS qzecad)
set_target_properties(qzecad PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0 EXPORT_NAME ecad)
target_include_directories(qzecad PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qzecad>)
target_link_libraries(qzecad PUBLIC qzkernel)
