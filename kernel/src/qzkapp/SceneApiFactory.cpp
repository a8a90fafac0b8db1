#include "qzkapp/SceneApiFactory.h"

#include "qzk/Scene.h"
#include "qzref/Journal.h"

namespace qzkapp {
namespace {
char const* const receiver = "SceneApiFactory";
} // namespace

SceneApiFactory::~SceneApiFactory() = default;

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(du::SmartPtr<qzk::World> const&,
                                                      du::SmartPtr<qzk::AnnoSetTableEntry> const&,
                                                      unsigned int kind) {
    qzref::Journal::Record(receiver, "CreateScene", {"entry", qzref::Fmt(kind)});
    return nullptr;
}

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(du::SmartPtr<qzk::World> const&,
                                                      du::SmartPtr<qzk::Instance> const&,
                                                      du::SmartPtr<qzk::ViewableSource> const&,
                                                      du::SmartPtr<qzk::Instance> const&,
                                                      du::SmartPtr<qzk::ViewableSource> const&,
                                                      unsigned int kind) {
    qzref::Journal::Record(receiver, "CreateScene", {"two designs", qzref::Fmt(kind)});
    return nullptr;
}

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(du::SmartPtr<qzk::World> const&,
                                                      du::SmartPtr<qzk::Instance> const&,
                                                      du::SmartPtr<qzk::ViewableSource> const&,
                                                      unsigned int kind, bool&) {
    qzref::Journal::Record(receiver, "CreateScene", {"one design", qzref::Fmt(kind)});
    return nullptr;
}

void SceneApiFactory::DoAdditionalCreateScene(du::SmartPtr<qzk::Scene> const& scene,
                                              du::SmartPtr<qzk::Instance> const&,
                                              du::SmartPtr<qzk::ViewableSource> const&,
                                              qzk::AsyncEvent*) {
    qzref::Journal::Record(receiver, "DoAdditionalCreateScene",
                           {scene ? scene->GetObjectName().str() : std::string("null")});
}

void SceneApiFactory::ViewCreated(du::SmartPtr<qzk::Scene> const& scene,
                                  du::SmartPtr<qzk::View> const&) {
    qzref::Journal::Record(receiver, "ViewCreated",
                           {scene ? scene->GetObjectName().str() : std::string("null")});
}

} // namespace qzkapp
