// Class type ids of kernel and API objects.
//
// An id names one class; the kernel keeps a table of each id's parent ids, so that
// Object::IsATypeOf answers for a class and all its kernel bases. Classes register their parents
// once, at static initialisation, with RegisterClass.
#pragma once

#include <initializer_list>
#include <vector>

namespace qzk {

class ClassType {
public:
    explicit ClassType(unsigned int id) noexcept : id_(id) {}
    unsigned int GetId() const noexcept { return id_; }
    friend bool operator==(ClassType const& a, ClassType const& b) noexcept {
        return a.id_ == b.id_;
    }

    // Records the direct parents of a class id. Returns true so it can seed a static.
    static bool RegisterClass(unsigned int id, std::initializer_list<unsigned int> parents);
    // The id itself, then every ancestor once, nearest first.
    static std::vector<unsigned int> Lineage(unsigned int id);

private:
    unsigned int id_;
};

// Ids of the kernel's own classes. The scene kinds and API scene ids are fixed numbers the host
// knows; the rest are the kernel's choice and only need to be distinct.
namespace classid {
enum : unsigned int {
    Object = 1,
    ObjectWithRWLock = 2,
    Observable = 3,
    Scene = 4,
    Scene2D = 5,
    View = 6,
    View2D = 7,
    World = 8,
    Preferences = 9,
    Kernel = 10,
    SelectionManager = 11,
    SelectionItem = 12,
    ObjectSelectionItem = 13,
    GeometrySelectionItem = 14,
    Annotation = 15,
    AnnoSet = 16,
    AnnoSetTable = 17,
    AnnoSetTableEntry = 18,
    Instance = 19,
    ViewableSource = 20,
    WorkflowManager = 21,
    EcadDesign = 22,
    EcadSelectionItem = 30,
    EcadGeometrySelectionItem = 31,
    EcadOverlaySelectionItem = 32,
    EcadOverlay = 33,
    EcadImageAnnotation = 34,
    EcadBaseScene = 40,
    EcadScene = 41,
    EcadCompareScene = 42,
    EcadBaseView = 43,
    EcadView = 44,
    EcadPCBView = 45,
    EcadSchematicView = 46,
    EcadCompareView = 47,
    EcadPCBCompareView = 48,
    EcadSchematicCompareView = 49,
    Qz2dDesign = 50,
    EcadSchematicScene = 73,
    EcadPCBScene = 74,
    EcadSchematicSceneAlt = 77,
    EcadPCBCompareScene = 159,
    EcadSchematicCompareScene = 161,
    EcadPCBSchCompareScene = 171,
    EcadPCBOvlCompareScene = 177,
    // The annotation that stands for a board scene's layer of overlays (id 0).
    EcadOverlayLayerAnnotation = 0x40000,
};
} // namespace classid

} // namespace qzk
