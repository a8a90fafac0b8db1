// An ECAD kernel scene over two designs. Made from two sources, it knows both designs at once;
// made from an annotation set table entry, it knows them once the entry is complete (then from
// the entry's two sources). Adds the three item colours (what only the first design has, what
// only the second has, what both have), the page list, and which designs the layer has taken
// over.
#pragma once

#include "dg/Color.h"
#include "qzk/ecad/BaseScene.h"

namespace qzref {
class CompareSceneInspector;
}

namespace qzk::ecad {

class PageList;

class CompareScene : public BaseScene {
    friend class qzref::CompareSceneInspector;

public:
    ~CompareScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Either may yield null.
    void GetFirstDesign(du::SmartPtr<qzk::EcadDesign>& out);
    void GetSecondDesign(du::SmartPtr<qzk::EcadDesign>& out);
    void SetFirstItemColor(dg::Color const& color);
    void SetSecondItemColor(dg::Color const& color);
    void SetCommonItemColor(dg::Color const& color);
    // The three colours as last set (or changed by the user); opaque black until then.
    dg::Color GetFirstItemColor() const;
    dg::Color GetSecondItemColor() const;
    dg::Color GetCommonItemColor() const;
    // As many pages as the design with more sheets has (1 for boards and absent designs).
    virtual du::SmartPtr<PageList> GetPageList();
    using BaseScene::FinishDesignLoad;
    void FinishDesignLoad(bool second) override;

protected:
    CompareScene(du::SmartPtr<qzk::World> const& world,
                 du::SmartPtr<AnnoSetTableEntry> const& entry,
                 std::vector<du::Symbol> const& paths);

    unsigned int _CountPages() const;

private:
    dg::Color firstColor_;
    dg::Color secondColor_;
    dg::Color commonColor_;
    bool finished_[2] = {false, false};
};

} // namespace qzk::ecad
