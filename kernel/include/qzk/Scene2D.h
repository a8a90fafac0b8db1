// A scene of 2D pages: the number of pages its design has and, for a scene made from a saved
// comparison, the annotation set table entry it came from.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/Scene.h"

namespace qzk {

class Scene2D : public Scene {
public:
    ~Scene2D() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Null for a scene not made from a table entry.
    du::SmartPtr<AnnoSetTableEntry> GetAnnoEntry() const;
    // 1 until the kernel knows better (a design with no sheets still shows one empty page).
    unsigned int GetNumPages() const;

    // Kernel side: the loader sets the page count once the design is read; 0 is taken as 1.
    void SetNumPages(unsigned int pages);
    void SetAnnoEntry(du::SmartPtr<AnnoSetTableEntry> const& entry);

protected:
    explicit Scene2D(du::SmartPtr<World> const& world,
                     du::SmartPtr<AnnoSetTableEntry> const& entry = nullptr);

    void _OnDestroy() override;

private:
    mutable std::mutex pagesMutex_;
    unsigned int pages_ = 1;
    du::SmartPtr<AnnoSetTableEntry> entry_;
};

} // namespace qzk
