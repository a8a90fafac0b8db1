// One annotation of a scene: an image, a compare area, a mark. It has an id, may be tied to a
// class of view (hasViewClass, GetViewClassId), can be shown, hidden and selected in a view.
//
// The layer's calls are journalled and their effect is kept for tests (selection and its view,
// visibility, the scenes it was told of). Show and Hide with an operation add a step that puts
// the former visibility back. notify (their first argument) true tells the annotation's set that
// the annotation changed in place; false changes it quietly, as the layer does when it brings an
// annotation into line with its own rows and must not hear of it again.
#pragma once

#include "du/SmartPtr.h"
#include "du/Types.h"
#include "qzk/Object.h"

#include <mutex>
#include <string>

namespace qzref {
class AnnotationInspector;
}

namespace qzk {

class AnnoSet;
class Operation;
class Scene;
class View;

class Annotation : public Object {
public:
    // A plain annotation; viewClassId 0 means none (hasViewClass false).
    static du::SmartPtr<Annotation> Create(uint64 id, unsigned int viewClassId = 0);
    ~Annotation() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    uint64 Id() const noexcept { return id_; }
    // The class type id of the view the annotation belongs in; read only when hasViewClass.
    unsigned int GetViewClassId() const noexcept { return viewClassId_; }

    // Journalled. view may be null.
    void SetSelected(bool selected, du::SmartPtr<View> const& view);
    void Show(bool notify, du::SmartPtr<Operation> const& operation);
    // deselect true also takes the selection away.
    void Hide(bool notify, du::SmartPtr<Operation> const& operation, bool deselect);
    virtual bool IsVisible() const;

    // Told by a scene as it selects or deselects the annotation. Journalled and counted.
    virtual void OnSelectedInScene(du::SmartPtr<Scene> const& scene);
    virtual void OnDeselectedInScene(du::SmartPtr<Scene> const& scene);

    // Kernel side: visibility without journal, notice or step (undo steps, controls).
    void StoreVisible(bool visible);
    // Kernel side: the set the annotation belongs to; null when it leaves it.
    AnnoSet* GetAnnoSet() const;
    void _SetAnnoSet(AnnoSet* set);
    // Kernel side: joins set unless the annotation belongs to a set already (false then), in one
    // step, so two sets cannot both take it.
    bool _ClaimAnnoSet(AnnoSet* set);

    // Whether the annotation is tied to a class of view.
    bool hasViewClass;

protected:
    Annotation(uint64 id, unsigned int viewClassId);
    void _OnDestroy() override;

private:
    friend class qzref::AnnotationInspector;

    bool IsSelected() const;
    // The view of the last SetSelected; null before.
    du::SmartPtr<View> GetSelectedView() const;
    unsigned int GetSelectedInSceneCount() const;
    unsigned int GetDeselectedInSceneCount() const;

    void ChangeVisibility(bool visible, bool notify, du::SmartPtr<Operation> const& operation);

    uint64 const id_;
    unsigned int const viewClassId_;
    mutable std::mutex mutex_;
    bool visible_ = true;
    bool selected_ = false;
    du::SmartPtr<View> selectedView_;
    unsigned int selectedInScene_ = 0;
    unsigned int deselectedInScene_ = 0;
    AnnoSet* set_ = nullptr;
};

} // namespace qzk
