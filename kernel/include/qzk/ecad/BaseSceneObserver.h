// The root of the ECAD kernel scene observers: decodes the notices every ECAD kernel scene sends
// and calls the handler; all handlers do nothing until a derived class overrides them.
//
// The notice ids of all ECAD kernel scenes are listed here, one block for the family, so the
// concrete observers and the scenes agree on them. They follow the ids of qzk::Observer (0 to 2)
// as the view observers' ids do; a scene's notices reach only the observers registered with
// that kernel scene, so they never meet the API scenes' event numbers. An id this class does not
// know is handed to qzk::SceneObserver. A malformed message throws std::runtime_error, which the
// message loop keeps.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/SceneObserver.h"
#include "qzk/ecad/OverlayAppearance.h"

#include <set>

namespace qzk {
class AnnoSet;
}

namespace qzk::ecad {

class Overlay;

class BaseSceneObserver : public qzk::SceneObserver {
public:
    enum : unsigned char {
        DrawOrderChangedEventId = 3,
        OverlapChangedEventId,
        GroupOverlapColorChangedEventId,
        HighlightSettingsEventId,
        NewerFileErrorEventId,
        NewerFileWarningEventId,
        ApplyAnnotationSetEventId,
        OverlayCreateEventId,
        OverlayRemoveEventId,
        OverlayUpdateEventId,
        OverlayAppearanceChangedEventId,
        FontNameEventId,
        FontMinSizeEventId,
        // Notices of the concrete scenes.
        ViewCreateEventId,
        ViewRemoveEventId,
        AppearanceChangedEventId,
        FillShapesChangedEventId,
        IsolateEventId,
        IsolateLayersEventId,
        IsolateOnlyVisibleChangedEventId,
        SlExcludedObjTypesChangedEventId,
        SublayerColorVisChangedEventId,
        SublayerVisChangedEventId,
        PcbDrawOrderChangedEventId,
        SchDrawOrderChangedEventId,
        PcbSublayerColorVisChangedEventId,
        SchSublayerColorVisChangedEventId,
        // Notices of the compare scenes.
        CompareColorChangedEventId,
        CompareResultApplyEventId,
    };

    BaseSceneObserver();
    ~BaseSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnDrawOrderChanged();
    // on: the overlap colouring switch; count: the items that had a group look at the time.
    virtual void OnOverlapChanged(bool on, unsigned short count);
    virtual void OnGroupOverlapColorChanged();
    // The highlight-only-visible switch.
    virtual void OnHighlightSettings(bool onlyVisible);
    virtual void OnNewerFileError(du::Symbol const& url);
    virtual void OnNewerFileWarning(du::Symbol const& url);
    virtual void OnApplyAnnotationSet(du::SmartPtr<qzk::AnnoSet> const& set);
    virtual void OnOverlayCreate(du::SmartPtr<Overlay> const& overlay);
    virtual void OnOverlayRemove(du::SmartPtr<Overlay> const& overlay);
    virtual void OnOverlayUpdate(du::SmartPtr<Overlay> const& overlay);
    virtual void OnOverlayAppearanceChanged(du::SmartPtr<Overlay> const& overlay,
                                            std::set<OverlayAppearance> const& on,
                                            std::set<OverlayAppearance> const& off);
    virtual void OnFontName();
    virtual void OnFontMinSize();
};

} // namespace qzk::ecad
