// The root of the ECAD kernel's views: a 2D view that goes from page to page of its scene's
// design and can be placed, fitted and read back. Every operation here is journalled and then
// stored through qzk::View's kernel side, whose readers tell tests what the view was told.
//
// Views are made by the kind's Create, which adds the view to its scene; the scene then tells
// its observers (OnViewCreate). A view belongs to one scene and shares its lock.
#pragma once

#include "dg/Location.h"
#include "qzk/View2D.h"

namespace qzk::ecad {

class BaseView : public qzk::View2D {
public:
    ~BaseView() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The page on view, 0-based.
    virtual unsigned int GetCurrentPage() const;
    // Goes to a page; false, and the page stays, for a page past the last. The flag is accepted
    // for the platform's signature and ignored.
    virtual bool SetViewPage(unsigned short page, bool flag);
    virtual void GetViewLocation(dg::Location& out) const;
    virtual void SetViewLocation(dg::Location const& location);
    // The default picture: counted (GetFitCount) and the location forgotten.
    virtual void FitView();

protected:
    BaseView(qzk::Scene& scene, unsigned int pages);

    // Adds view to its scene; a view that the scene refuses is handed back all the same.
    template <class T> static du::SmartPtr<T> _AddToScene(qzk::Scene& scene, du::SmartPtr<T> view) {
        scene.AddView(view);
        return view;
    }
};

} // namespace qzk::ecad
