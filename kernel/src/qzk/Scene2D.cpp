#include "qzk/Scene2D.h"

#include "qzk/AnnoSetTableEntry.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::Scene2D, {classid::Scene});
} // namespace

Scene2D::Scene2D(du::SmartPtr<World> const& world, du::SmartPtr<AnnoSetTableEntry> const& entry)
    : Scene(world), entry_(entry) {}

Scene2D::~Scene2D() = default;

ClassType const& Scene2D::GetClassType() const {
    static ClassType const type(classid::Scene2D);
    return type;
}

du::Symbol Scene2D::GetDebugClassName() const {
    return du::Symbol("qzk::Scene2D");
}

du::SmartPtr<AnnoSetTableEntry> Scene2D::GetAnnoEntry() const {
    std::lock_guard lock(pagesMutex_);
    return entry_;
}

unsigned int Scene2D::GetNumPages() const {
    std::lock_guard lock(pagesMutex_);
    return pages_;
}

void Scene2D::SetNumPages(unsigned int pages) {
    std::lock_guard lock(pagesMutex_);
    pages_ = pages == 0 ? 1 : pages;
}

void Scene2D::SetAnnoEntry(du::SmartPtr<AnnoSetTableEntry> const& entry) {
    du::SmartPtr<AnnoSetTableEntry> old;
    std::lock_guard lock(pagesMutex_);
    old = entry_;
    entry_ = entry;
}

void Scene2D::_OnDestroy() {
    Scene::_OnDestroy();
}

} // namespace qzk
