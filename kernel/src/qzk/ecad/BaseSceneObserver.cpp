#include "qzk/ecad/BaseSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/AnnoSet.h"
#include "qzk/ecad/Overlay.h"

namespace qzk::ecad {

namespace {

std::set<OverlayAppearance> ToOverlayAppearances(std::vector<unsigned int> const& values) {
    std::set<OverlayAppearance> out;
    for (unsigned int value : values) {
        out.insert(static_cast<OverlayAppearance>(value));
    }
    return out;
}

} // namespace

BaseSceneObserver::BaseSceneObserver() = default;
BaseSceneObserver::~BaseSceneObserver() = default;

void BaseSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::BaseSceneObserver", id);
    switch (id) {
    case DrawOrderChangedEventId:
        OnDrawOrderChanged();
        break;
    case OverlapChangedEventId: {
        bool on = in.Bool();
        OnOverlapChanged(on, in.UInt16());
        break;
    }
    case GroupOverlapColorChangedEventId:
        OnGroupOverlapColorChanged();
        break;
    case HighlightSettingsEventId:
        OnHighlightSettings(in.Bool());
        break;
    case NewerFileErrorEventId:
        OnNewerFileError(du::Symbol(in.String()));
        break;
    case NewerFileWarningEventId:
        OnNewerFileWarning(du::Symbol(in.String()));
        break;
    case ApplyAnnotationSetEventId:
        OnApplyAnnotationSet(in.ObjectAs<qzk::AnnoSet>());
        break;
    case OverlayCreateEventId:
        OnOverlayCreate(in.ObjectAs<Overlay>());
        break;
    case OverlayRemoveEventId:
        OnOverlayRemove(in.ObjectAs<Overlay>());
        break;
    case OverlayUpdateEventId:
        OnOverlayUpdate(in.ObjectAs<Overlay>());
        break;
    case OverlayAppearanceChangedEventId: {
        du::SmartPtr<Overlay> overlay = in.ObjectAs<Overlay>();
        std::set<OverlayAppearance> on = ToOverlayAppearances(in.UInts());
        std::set<OverlayAppearance> off = ToOverlayAppearances(in.UInts());
        OnOverlayAppearanceChanged(overlay, on, off);
        break;
    }
    case FontNameEventId:
        OnFontName();
        break;
    case FontMinSizeEventId:
        OnFontMinSize();
        break;
    default:
        qzk::SceneObserver::HandleEvent(id, reader);
        break;
    }
}

void BaseSceneObserver::OnDrawOrderChanged() {}
void BaseSceneObserver::OnOverlapChanged(bool, unsigned short) {}
void BaseSceneObserver::OnGroupOverlapColorChanged() {}
void BaseSceneObserver::OnHighlightSettings(bool) {}
void BaseSceneObserver::OnNewerFileError(du::Symbol const&) {}
void BaseSceneObserver::OnNewerFileWarning(du::Symbol const&) {}
void BaseSceneObserver::OnApplyAnnotationSet(du::SmartPtr<qzk::AnnoSet> const&) {}
void BaseSceneObserver::OnOverlayCreate(du::SmartPtr<Overlay> const&) {}
void BaseSceneObserver::OnOverlayRemove(du::SmartPtr<Overlay> const&) {}
void BaseSceneObserver::OnOverlayUpdate(du::SmartPtr<Overlay> const&) {}
void BaseSceneObserver::OnOverlayAppearanceChanged(du::SmartPtr<Overlay> const&,
                                                   std::set<OverlayAppearance> const&,
                                                   std::set<OverlayAppearance> const&) {}
void BaseSceneObserver::OnFontName() {}
void BaseSceneObserver::OnFontMinSize() {}

} // namespace qzk::ecad
