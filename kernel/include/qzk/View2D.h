// A view of a 2D drawing: adds the ortho width, the width of design the view spans, and the
// notices of focus, activation and status message to View2DObserver.
//
// Observers register here (or through the derived views' typed RegisterObserver) and hear the
// notices as messages, never inside the call that caused them. The ortho width and the width
// of the location are kept apart: the layer saves and restores them separately, and a view may
// be placed before its width is known.
#pragma once

#include "qzk/View.h"

namespace qzref {
class View2DInspector;
}

namespace qzk {

class View2DObserver;

class View2D : public View {
public:
    // A plain 2D view of scene, added to it; the derived views have their own Create.
    static du::SmartPtr<View2D> Create(Scene& scene, unsigned int pages);
    ~View2D() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Always true; 0.0 until a width is set.
    bool GetOrthoWidth(double& out) const;
    // Journalled. A width that is not above 0 (or not a number) is refused: false, no change.
    bool SetOrthoWidth(double width);

    // false for an observer registered anywhere already.
    bool RegisterObserver(View2DObserver& observer);
    bool UnregisterObserver(View2DObserver& observer);

protected:
    View2D(Scene& scene, unsigned int pages);

    // For the derived views' typed RegisterObserver.
    bool _RegisterViewObserver(View2DObserver& observer);
    // Posts an event of a derived view to every registered observer.
    void _PostViewEvent(dom::ObservableEvent const& event);

private:
    friend class qzref::View2DInspector;

    // What the user does to the view, told to its observers.
    void NotifyFocus(bool focused);
    void NotifyActivate();
    // Stores the message and tells the observers that it changed.
    void PostStatusMessage(std::string const& text);

    mutable std::mutex widthMutex_;
    double orthoWidth_ = 0.0;
};

} // namespace qzk
