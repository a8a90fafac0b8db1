#include "qzk/ecad/SchematicSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/SchematicView.h"

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

SchematicSceneObserver::SchematicSceneObserver() = default;
SchematicSceneObserver::~SchematicSceneObserver() = default;

void SchematicSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::SchematicSceneObserver", id);
    switch (id) {
    case ViewCreateEventId:
        OnViewCreate(in.ObjectAs<SchematicView>());
        break;
    case ViewRemoveEventId:
        OnViewRemove(in.ObjectAs<SchematicView>());
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
    default:
        SceneObserver::HandleEvent(id, reader);
        break;
    }
}

void SchematicSceneObserver::OnViewCreate(du::SmartPtr<SchematicView> const&) {}
void SchematicSceneObserver::OnViewRemove(du::SmartPtr<SchematicView> const&) {}
void SchematicSceneObserver::OnAppearanceChanged(std::set<SchematicAppearance> const&,
                                                 std::set<SchematicAppearance> const&) {}
void SchematicSceneObserver::OnSublayerColorVisChanged() {}

} // namespace qzk::ecad
