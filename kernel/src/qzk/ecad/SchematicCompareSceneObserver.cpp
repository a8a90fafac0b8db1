#include "qzk/ecad/SchematicCompareSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/SchematicCompareView.h"

#include <vector>

namespace qzk::ecad {

namespace {

std::set<SchematicAppearance> ToAppearances(std::vector<unsigned int> const& values) {
    std::set<SchematicAppearance> out;
    for (unsigned int value : values) {
        out.insert(static_cast<SchematicAppearance>(value));
    }
    return out;
}

} // namespace

SchematicCompareSceneObserver::SchematicCompareSceneObserver() = default;
SchematicCompareSceneObserver::~SchematicCompareSceneObserver() = default;

void SchematicCompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::SchematicCompareSceneObserver", id);
    switch (id) {
    case ViewCreateEventId:
        OnViewCreate(in.ObjectAs<SchematicCompareView>());
        break;
    case ViewRemoveEventId:
        OnViewRemove(in.ObjectAs<SchematicCompareView>());
        break;
    case AppearanceChangedEventId: {
        // A notice about a board's look is not this scene's; it is read and dropped.
        bool schematic = in.Bool();
        std::set<SchematicAppearance> on = ToAppearances(in.UInts());
        std::set<SchematicAppearance> off = ToAppearances(in.UInts());
        if (schematic) {
            OnAppearanceChanged(on, off);
        }
        break;
    }
    case SublayerColorVisChangedEventId:
        OnSublayerColorVisChanged();
        break;
    case SlExcludedObjTypesChangedEventId:
        OnSlExcludedObjTypesChanged();
        break;
    default:
        CompareSceneObserver::HandleEvent(id, reader);
        break;
    }
}

void SchematicCompareSceneObserver::OnViewCreate(du::SmartPtr<SchematicCompareView> const&) {}
void SchematicCompareSceneObserver::OnViewRemove(du::SmartPtr<SchematicCompareView> const&) {}
void SchematicCompareSceneObserver::OnAppearanceChanged(std::set<SchematicAppearance> const&,
                                                        std::set<SchematicAppearance> const&) {}
void SchematicCompareSceneObserver::OnSublayerColorVisChanged() {}
void SchematicCompareSceneObserver::OnSlExcludedObjTypesChanged() {}

} // namespace qzk::ecad
