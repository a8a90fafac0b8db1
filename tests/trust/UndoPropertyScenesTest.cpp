// The undo property on the other scene kinds: a schematic (its layer colours and visibility,
// sheets changed between the changes), a board compare (its rows by colour, visibility and show
// mode, the colour schemes, isolation and rotation), a schematic compare (its records, between
// sheet changes), a board against a schematic in both orders (each side's colours and draw
// order) and a board against a Gerber film (the board's sublayers, the film's row), each with the
// highlights, groups, draw order and selection every scene has. The long form takes the same
// variables as the board's:
//     QZ_PROPERTY_OPS=100000 QZ_PROPERTY_SEED=7 build/tests/trust_tests --gtest_filter='*Scenes*'
#include "compare/PCBCompareScene.h"
#include "compare/PCBCompareSceneObserver.h"
#include "compare/PCBOvlCompareScene.h"
#include "compare/PCBOvlCompareSceneObserver.h"
#include "compare/PCBSchCompareScene.h"
#include "compare/PCBSchCompareSceneObserver.h"
#include "compare/SchematicCompareScene.h"
#include "compare/SchematicCompareSceneObserver.h"
#include "component/EntryPoints.h"
#include "qzk/Instance.h"
#include "qzk/Operation.h"
#include "qzk/SelectionManager.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicView.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCBCompare.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/DesignObjects.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"
#include "scene/BaseScene.h"
#include "schematic/SchematicScene.h"
#include "schematic/SchematicSceneObserver.h"
#include "trust/UndoProperty.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace {

using qzref::Messages;
using qztest::property::FromEnvironment;
using qztest::property::Op;
using qztest::property::Property;

// What every scene does alike, on the scene's objects and layers: the first kCommonKinds kinds
// of every subject.
enum class Common {
    Highlight,
    AddHighlight,
    Dehighlight,
    ClearHighlights,
    GroupColour,
    GroupVisible,
    InvertLayers,
    ApplyDrawOrder,
    MoveLayer,
    ResetDrawOrder,
    Select,
    Count
};
constexpr int kCommonKinds = static_cast<int>(Common::Count);
char const* const kCommonNames[] = {
    "highlight",    "add-highlight",    "dehighlight",   "clear-highlights",
    "group-colour", "group-visible",    "invert-layers", "apply-draw-order",
    "move-layer",   "reset-draw-order", "select"};
static_assert(std::size(kCommonNames) == kCommonKinds);

// The shared half of a subject: a scene of the layer (Api over Kernel), the objects its changes
// draw from, two groups told before the baseline, and the default draw order.
template <class Api, class Kernel> class SubjectBase {
public:
    SubjectBase(SubjectBase const&) = delete;
    SubjectBase& operator=(SubjectBase const&) = delete;

    bool Loaded() const { return api_ != nullptr && api_->IsDesignLoaded() && !objects_.empty(); }

    void ClearSelection() {
        du::SmartPtr<qzk::SelectionManager> manager;
        scene_->GetSelectionManager(manager);
        manager->ApplyItems(0, {}, qzk::SelectionManager::clear);
        manager->ApplyItems(1, {}, qzk::SelectionManager::clear);
        Messages::PumpUntilIdle();
    }

protected:
    SubjectBase() = default;
    ~SubjectBase() {
        qzref::UndoControl::Clear();
        if (scene_) {
            qzref::Inspect(*scene_).DestroyScene();
        }
        Messages::PumpUntilIdle();
    }

    // After the load: names the objects and tells the groups.
    void Start(du::SmartPtr<qzk::ecad::EcadDesignData> const& data,
               std::vector<char const*> const& names) {
        data_ = data;
        for (char const* name : names) {
            if (auto* object = data_->FindObject(name)) {
                objects_.push_back(object);
            }
        }
        if (objects_.size() < 3) {
            objects_.clear();
            return;
        }
        api_->UpdateGroups({qzkapp::ecad::GroupInfo("power", false, dg::Color(0x010000FFu, true)),
                            qzkapp::ecad::GroupInfo("analog", true, dg::Color(0x0100FF00u, true))});
        api_->OnGroupContentAdded("power", {Item(0), Item(1)});
        api_->OnGroupContentAdded("analog", {Item(2)});
        api_->GetDefaultDrawOrder(defaultOrder_);
        Messages::PumpUntilIdle();
    }

    du::SmartPtr<qzk::SelectionItem> Item(unsigned int n) const {
        return du::MakeCounted<qzk::ecad::SelectionItem>(data_, objects_[n % objects_.size()],
                                                         nullptr, nullptr, dg::DPoint3D(), 0, 0);
    }
    std::vector<du::SmartPtr<qzk::SelectionItem>> Items(unsigned int n) const {
        std::vector<du::SmartPtr<qzk::SelectionItem>> items{Item(n)};
        if (n % 3 == 0) {
            items.push_back(Item(n / 3 + 1));
        }
        return items;
    }

    du::SmartPtr<qzk::Operation> NewOperation() const {
        return du::MakeCounted<qzk::Operation>("property", du::SmartPtr<qzk::Scene>(scene_), false);
    }
    template <class Change> void Recorded(Change&& change) {
        auto const operation = NewOperation();
        change(operation);
        qzk::RecordOperation(operation);
    }

    void RunCommon(Op const& op) {
        Api& api = *api_;
        // The draw order of the scene itself, which a scene with a list per side overloads.
        qzkapp::ecad::BaseScene& base = api;
        switch (static_cast<Common>(op.kind)) {
        case Common::Highlight:
            api.Highlight(Items(op.a), NewOperation());
            break;
        case Common::AddHighlight:
            api.AddToHighlights(Items(op.a), NewOperation());
            break;
        case Common::Dehighlight:
            api.Dehighlight(Items(op.a), NewOperation());
            break;
        case Common::ClearHighlights:
            api.ClearHighlights(NewOperation());
            break;
        case Common::GroupColour:
        case Common::GroupVisible: {
            qzk::ecad::GroupCVInfoSet set(false);
            api.GetGroupColorVisInfo(set);
            auto it = set.begin();
            std::advance(it, op.a % set.size());
            auto entry = *it;
            if (static_cast<Common>(op.kind) == Common::GroupColour) {
                entry.color = 0x01000000u | (op.b & 0xFFFFFFu);
            } else {
                entry.visible = !entry.visible;
            }
            set.erase(it);
            set.insert(entry);
            Recorded([&](auto const& o) {
                api.SetGroupColorVisInfo(set, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case Common::InvertLayers:
            Recorded([&](auto const& o) { base.DrawOrderInvertLayers(o); });
            break;
        case Common::ApplyDrawOrder: {
            std::vector<short> order = defaultOrder_;
            std::mt19937 shuffle(op.a);
            std::shuffle(order.begin(), order.end(), shuffle);
            Recorded([&](auto const& o) { base.ApplyDrawOrder(order, op.b % 2 == 0, o); });
            break;
        }
        case Common::MoveLayer:
            if (!defaultOrder_.empty()) {
                base.DrawOrderMoveLayer(defaultOrder_[op.a % defaultOrder_.size()],
                                        op.b % (defaultOrder_.size() + 1), true);
            }
            break;
        case Common::ResetDrawOrder:
            base.ResetDrawOrder(true);
            break;
        case Common::Select: {
            du::SmartPtr<qzk::SelectionManager> manager;
            scene_->GetSelectionManager(manager);
            manager->ApplyItems(op.b % 2, {Item(op.a)}, qzk::SelectionManager::replace);
            break;
        }
        case Common::Count:
            break;
        }
    }

    // The facts every scene shares: the kernel's selection and highlight looks and draw order,
    // the scene's groups, draw order and highlights. The group layer is the viewer's to refill.
    void CommonSnapshot(std::ostream& out) const {
        auto const inspect = qzref::Inspect(*scene_);
        for (int layer = 0; layer < 2; ++layer) {
            std::map<std::string, unsigned int> looks;
            for (auto const& [item, look] : inspect.GetLooks(layer)) {
                looks[qzref::DesignObjects::NameOf(item.object)] = look.color;
            }
            for (auto const& [name, colour] : looks) {
                out << "kernel look " << layer << " " << name << " " << std::hex << colour
                    << std::dec << "\n";
            }
        }
        out << "kernel draw order";
        for (short layer : inspect.GetDrawOrder()) {
            out << " " << layer;
        }
        out << "\n";
        qzk::ecad::GroupCVInfoSet groups(false);
        api_->GetGroupColorVisInfo(groups);
        for (auto const& group : groups) {
            out << "scene group " << group.name.str() << " " << std::hex << group.color << std::dec
                << " " << group.visible << "\n";
        }
        std::vector<short> order;
        api_->GetDrawOrder(order);
        out << "scene draw order";
        for (short layer : order) {
            out << " " << layer;
        }
        out << "\n";
        qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
        api_->GetHighlights(highlights);
        std::set<std::string> names;
        for (auto const& item : highlights) {
            names.insert(qzref::DesignObjects::NameOf(item.object));
        }
        for (auto const& name : names) {
            out << "scene highlight " << name << "\n";
        }
    }

    du::SmartPtr<Kernel> scene_;
    Api* api_ = nullptr;
    du::SmartPtr<qzk::ecad::EcadDesignData> data_;
    std::vector<void*> objects_;
    std::vector<short> defaultOrder_;
};

template <std::size_t N> std::vector<char const*> WithCommon(char const* const (&own)[N]) {
    std::vector<char const*> names(std::begin(kCommonNames), std::end(kCommonNames));
    names.insert(names.end(), std::begin(own), std::end(own));
    return names;
}

class SchematicListener : public qzkapp::ecad::SchematicSceneObserver {
public:
    ~SchematicListener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

// The sample schematic with a view of its three sheets.
class Schematic : public SubjectBase<qzkapp::ecad::SchematicScene, qzk::ecad::SchematicScene> {
public:
    enum Own { LayerColour = kCommonKinds, LayerVisible, FullColour, Sheet, Preview };
    static std::vector<char const*> Names() {
        static char const* const own[] = {"layer-colour", "layer-visible", "full-colour", "sheet",
                                          "preview"};
        return WithCommon(own);
    }

    explicit Schematic(qzkapp::SceneApiFactory& factory) {
        bool flag = false;
        scene_ = du::DynamicCast<qzk::ecad::SchematicScene>(
            factory.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("property"),
                                qzk::ViewableSource::Create(du::Symbol(
                                    QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json")),
                                73, flag));
        if (!scene_) {
            return;
        }
        api_ = static_cast<qzkapp::ecad::SchematicScene*>(scene_->GetApiScene());
        api_->RegisterObserver(*listener_);
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        view_ = qzk::ecad::SchematicView::Create(*scene_, 3);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(view_));
        Start(api_->GetDesignData(), {"U1", "C1", "U2", "Q1", "M1", "GND", "5V", "PWM", "U1.1"});
    }
    ~Schematic() {
        if (api_ != nullptr) {
            api_->UnregisterObserver(*listener_);
        }
        if (view_) {
            scene_->RemoveView(du::SmartPtr<qzk::View>(view_.Get()));
        }
    }

    void Run(Op const& op) {
        if (op.kind < kCommonKinds) {
            RunCommon(op);
            return;
        }
        auto& api = *api_;
        auto const base = du::SmartPtr<qzk::ecad::BaseView>(view_);
        switch (static_cast<Own>(op.kind)) {
        case LayerColour:
        case LayerVisible:
        case FullColour: {
            qzkapp::ecad::SchematicScene::SublayerMap layers;
            api.GetSublayerColorVisInfo(layers);
            auto it = layers.begin();
            std::advance(it, op.a % layers.size());
            if (op.kind == LayerVisible) {
                it->second.visible = !it->second.visible;
            } else {
                it->second.color = 0x01000000u | (op.b & 0xFFFFFFu);
            }
            if (op.kind == FullColour) {
                qzk::ecad::GroupCVInfoSet groups(false);
                api.GetGroupColorVisInfo(groups);
                std::vector<qzk::ecad::AnnoCVInfo> images;
                api.GetImageColorVisInfo(images);
                Recorded([&](auto const& o) {
                    api.SetFullColorVisInfo(groups, images, layers, o,
                                            qzkapp::ecad::ChangeSourceScene);
                });
            } else {
                Recorded([&](auto const& o) {
                    api.SetSublayerColorVisInfo(layers, o, qzkapp::ecad::ChangeSourceScene);
                });
            }
            break;
        }
        // Sheets are where the user looks, not something undone; they change between changes.
        case Sheet:
            api.PageNav(static_cast<short>(op.a % 3), base);
            break;
        case Preview:
            api.PreviewPageNav(static_cast<short>(op.a % 3), base);
            break;
        }
    }

    std::string Snapshot() const {
        std::ostringstream out;
        CommonSnapshot(out);
        for (auto const& [layer, info] : qzref::Inspect(*scene_).GetSublayerColorVisInfo()) {
            out << "kernel layer " << layer << " " << std::hex << info.color << std::dec << " "
                << info.visible << "\n";
        }
        qzkapp::ecad::SchematicScene::SublayerMap layers;
        api_->GetSublayerColorVisInfo(layers);
        for (auto const& [layer, info] : layers) {
            out << "scene layer " << layer << " " << std::hex << info.color << std::dec << " "
                << info.visible << "\n";
        }
        return out.str();
    }

private:
    du::SmartPtr<SchematicListener> listener_ = du::MakeCounted<SchematicListener>();
    du::SmartPtr<qzk::ecad::SchematicView> view_;
};

class CompareListener : public qzkapp::ecad::PCBCompareSceneObserver {
public:
    ~CompareListener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

std::string RowLine(qzk::ecad::CompareColorVis const* row) {
    std::ostringstream out;
    if (row == nullptr) {
        return "null";
    }
    if (auto const* pair = dynamic_cast<qzk::ecad::SublayerPCBCompare const*>(row)) {
        out << pair->firstSublayer.layer << "," << pair->firstSublayer.sublayer << "|"
            << pair->secondSublayer.layer << "," << pair->secondSublayer.sublayer << " ";
    }
    out << std::hex << row->firstColor << " " << row->secondColor << " " << row->commonColor
        << std::dec << " " << row->showMode << " " << row->flag << " " << row->visible;
    return out.str();
}

// The four-layer board against the six-layer board.
class BoardCompare : public SubjectBase<qzkapp::ecad::PCBCompareScene, qzk::ecad::PCBCompareScene> {
public:
    enum Own {
        RowColour = kCommonKinds,
        RowVisible,
        RowMode,
        Scheme,
        Isolate,
        ClearIsolated,
        Rotate
    };
    static std::vector<char const*> Names() {
        static char const* const own[] = {"row-colour", "row-visible",    "row-mode", "scheme",
                                          "isolate",    "clear-isolated", "rotate"};
        return WithCommon(own);
    }

    explicit BoardCompare(qzkapp::SceneApiFactory& factory) {
        scene_ = du::DynamicCast<qzk::ecad::PCBCompareScene>(
            factory.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("first"),
                                qzk::ViewableSource::Create(
                                    du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json")),
                                qzk::Instance::Create("second"),
                                qzk::ViewableSource::Create(
                                    du::Symbol(QZ_EXAMPLES_DIR "/designs/six-layer-board.json")),
                                159));
        if (!scene_) {
            return;
        }
        api_ = static_cast<qzkapp::ecad::PCBCompareScene*>(scene_->GetApiScene());
        api_->RegisterObserver(*listener_);
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        Start(api_->GetFirstDesignData(), {"U1", "R1", "C1", "MH1", "VCC", "GND", "U1.1"});
    }
    ~BoardCompare() {
        if (api_ != nullptr) {
            api_->UnregisterObserver(*listener_);
        }
    }

    void Run(Op const& op) {
        if (op.kind < kCommonKinds) {
            RunCommon(op);
            return;
        }
        auto& api = *api_;
        switch (static_cast<Own>(op.kind)) {
        case RowColour:
        case RowVisible:
        case RowMode: {
            qzk::ecad::CompareColorVisPtrVec rows;
            api.GetColorVisInfo(rows);
            auto& row = *rows[op.a % rows.size()];
            if (op.kind == RowVisible) {
                row.visible = !row.visible;
            } else if (op.kind == RowMode) {
                row.showMode = static_cast<qzk::ecad::CompareColorVis::ShowMode>(op.b % 7);
            } else {
                unsigned int const word = 0x01000000u | (op.b & 0xFFFFFFu);
                (op.b % 3 == 0 ? row.firstColor
                               : (op.b % 3 == 1 ? row.secondColor : row.commonColor)) = word;
            }
            qzk::ecad::GroupCVInfoSet groups(false);
            api.GetGroupColorVisInfo(groups);
            Recorded([&](auto const& o) {
                api.SetColorVisInfo(groups, rows, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case Scheme:
            Recorded([&](auto const& o) {
                if (op.a % 2 == 0) {
                    api.UseRedBlueDimDefault(o, qzkapp::ecad::ChangeSourceScene);
                } else {
                    api.UseRedBlueGreenDefault(o, qzkapp::ecad::ChangeSourceScene);
                }
            });
            break;
        case Isolate:
            api.Isolate(Items(op.a), NewOperation());
            break;
        case ClearIsolated:
            api.ClearAllIsolated(NewOperation());
            break;
        case Rotate:
            Recorded([&](auto const& o) {
                api.AddRotation(static_cast<short>(static_cast<int>(op.a % 721) - 360), o);
            });
            break;
        }
    }

    std::string Snapshot() const {
        std::ostringstream out;
        CommonSnapshot(out);
        auto const inspect = qzref::Inspect(*scene_);
        for (auto const& row : inspect.GetColorVisInfo()) {
            out << "kernel row " << RowLine(row.Get()) << "\n";
        }
        std::set<std::string> isolated;
        for (auto const& item : inspect.GetIsolated()) {
            isolated.insert(qzref::DesignObjects::NameOf(item.object));
        }
        for (auto const& name : isolated) {
            out << "kernel isolated " << name << "\n";
        }
        out << "kernel isolating " << inspect.IsIsolating() << "\n";
        qzk::ecad::CompareColorVisPtrVec rows;
        api_->GetColorVisInfo(rows);
        for (auto const& row : rows) {
            out << "scene row " << RowLine(row.Get()) << "\n";
        }
        out << "scene rotation " << api_->GetRotation() << "\n";
        return out.str();
    }

private:
    du::SmartPtr<CompareListener> listener_ = du::MakeCounted<CompareListener>();
};

class SchematicCompareListener : public qzkapp::ecad::SchematicCompareSceneObserver {
public:
    ~SchematicCompareListener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

// The sample schematic against its revision B, through one view of the longer one's sheets.
class SchematicCompare
    : public SubjectBase<qzkapp::ecad::SchematicCompareScene, qzk::ecad::SchematicCompareScene> {
public:
    enum Own { RecordColour = kCommonKinds, RecordVisible, RecordMode, Sheet };
    static std::vector<char const*> Names() {
        static char const* const own[] = {"record-colour", "record-visible", "record-mode",
                                          "sheet"};
        return WithCommon(own);
    }

    explicit SchematicCompare(qzkapp::SceneApiFactory& factory) {
        scene_ = du::DynamicCast<qzk::ecad::SchematicCompareScene>(factory.CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(
                du::Symbol(QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json")),
            qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(
                du::Symbol(QZ_EXAMPLES_DIR "/designs/three-sheet-schematic-rev-b.json")),
            161));
        if (!scene_) {
            return;
        }
        api_ = static_cast<qzkapp::ecad::SchematicCompareScene*>(scene_->GetApiScene());
        api_->RegisterObserver(*listener_);
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        view_ = qzk::ecad::SchematicCompareView::Create(*scene_, api_->GetNumSheets());
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(view_));
        Start(api_->GetFirstDesignData(), {"U1", "C1", "U2", "Q1", "M1", "GND", "5V", "PWM"});
    }
    ~SchematicCompare() {
        if (api_ != nullptr) {
            api_->UnregisterObserver(*listener_);
        }
        if (view_) {
            scene_->RemoveView(du::SmartPtr<qzk::View>(view_.Get()));
        }
    }

    void Run(Op const& op) {
        if (op.kind < kCommonKinds) {
            RunCommon(op);
            return;
        }
        auto& api = *api_;
        if (op.kind == Sheet) {
            api.PageNav(static_cast<short>(op.a % std::max(1U, api.GetNumSheets())),
                        du::SmartPtr<qzk::ecad::BaseView>(view_));
            return;
        }
        // The scene shares its records: a change goes to a copy, as a colour panel's does.
        qzkapp::ecad::SchematicCompareScene::CompareMap records;
        api.GetSublayerColorVisInfo(records);
        auto it = records.begin();
        std::advance(it, op.a % records.size());
        du::SmartPtr<qzk::ecad::CompareColorVis> const changed = it->second->Clone();
        if (op.kind == RecordVisible) {
            changed->visible = !changed->visible;
        } else if (op.kind == RecordMode) {
            changed->showMode = static_cast<qzk::ecad::CompareColorVis::ShowMode>(op.b % 7);
        } else {
            unsigned int const word = 0x01000000u | (op.b & 0xFFFFFFu);
            (op.b % 3 == 0 ? changed->firstColor
                           : (op.b % 3 == 1 ? changed->secondColor : changed->commonColor)) = word;
        }
        it->second = changed;
        Recorded([&](auto const& o) {
            api.SetSublayerColorVisInfo(records, o, qzkapp::ecad::ChangeSourceScene);
        });
    }

    std::string Snapshot() const {
        std::ostringstream out;
        CommonSnapshot(out);
        for (auto const& [layer, record] : qzref::Inspect(*scene_).GetSublayerColorVisInfo()) {
            out << "kernel record " << layer << " " << RowLine(record.Get()) << "\n";
        }
        qzkapp::ecad::SchematicCompareScene::CompareMap records;
        api_->GetSublayerColorVisInfo(records);
        for (auto const& [layer, record] : records) {
            out << "scene record " << layer << " " << RowLine(record.Get()) << "\n";
        }
        return out.str();
    }

private:
    du::SmartPtr<SchematicCompareListener> listener_ = du::MakeCounted<SchematicCompareListener>();
    du::SmartPtr<qzk::ecad::SchematicCompareView> view_;
};

class BoardSchematicListener : public qzkapp::ecad::PCBSchCompareSceneObserver {
public:
    ~BoardSchematicListener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

// The four-layer board against the sample schematic, in the order the template says, through a
// board view and a view of the sheets. Its draw order moves go to the list of the side op.b
// picks; its reset is left out (below).
template <bool kBoardFirst>
class BoardSchematic
    : public SubjectBase<qzkapp::ecad::PCBSchCompareScene, qzk::ecad::PCBSchCompareScene> {
public:
    enum Own { BoardColour = kCommonKinds, BoardVisible, LayerColour, Isolate, Rotate, Sheet };
    static std::vector<char const*> Names() {
        static char const* const own[] = {"board-colour", "board-visible", "layer-colour",
                                          "isolate",      "rotate",        "sheet"};
        return WithCommon(own);
    }

    explicit BoardSchematic(qzkapp::SceneApiFactory& factory) {
        auto board = qzk::ViewableSource::Create(
            du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json"));
        auto schematic = qzk::ViewableSource::Create(
            du::Symbol(QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json"));
        scene_ = du::DynamicCast<qzk::ecad::PCBSchCompareScene>(factory.CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"), kBoardFirst ? board : schematic,
            qzk::Instance::Create("second"), kBoardFirst ? schematic : board, 171));
        if (!scene_) {
            return;
        }
        api_ = static_cast<qzkapp::ecad::PCBSchCompareScene*>(scene_->GetApiScene());
        api_->RegisterObserver(*listener_);
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        boardView_ = qzk::ecad::PCBView::Create(*scene_, 1);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(boardView_));
        sheetView_ = qzk::ecad::SchematicView::Create(*scene_, 3);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(sheetView_));
        api_->GetPCBDefaultDrawOrder(boardOrder_);
        api_->GetSchDefaultDrawOrder(sheetOrder_);
        Start(api_->GetPCBData(), {"U1", "R1", "C1", "MH1", "VCC", "GND", "U1.1"});
    }
    ~BoardSchematic() {
        if (api_ != nullptr) {
            api_->UnregisterObserver(*listener_);
        }
        for (auto const& view : {du::SmartPtr<qzk::View>(boardView_.Get()),
                                 du::SmartPtr<qzk::View>(sheetView_.Get())}) {
            if (view) {
                scene_->RemoveView(view);
            }
        }
    }

    void Run(Op const& op) {
        auto& api = *api_;
        bool const pcb = op.b % 2 == 0;
        std::vector<short> const& defaults = pcb ? boardOrder_ : sheetOrder_;
        switch (op.kind) {
        // The draw order ops go to one side's list.
        case static_cast<int>(Common::InvertLayers):
            Recorded([&](auto const& o) { api.PCBSchDrawOrderInvertLayers(o); });
            return;
        case static_cast<int>(Common::ApplyDrawOrder): {
            std::vector<short> order = defaults;
            std::mt19937 shuffle(op.a);
            std::shuffle(order.begin(), order.end(), shuffle);
            Recorded([&](auto const& o) { api.ApplyDrawOrder(pcb, order, op.b % 4 < 2, o); });
            return;
        }
        case static_cast<int>(Common::MoveLayer):
            if (!defaults.empty()) {
                api.DrawOrderMoveLayer(pcb, defaults[op.a % defaults.size()],
                                       op.a / 7 % (defaults.size() + 1), true);
            }
            return;
        // Left out on purpose: a redo of this scene's reset records a fresh operation, which
        // cuts what was still to redo. PCBSchDrawOrderTest states that.
        case static_cast<int>(Common::ResetDrawOrder):
            return;
        default:
            break;
        }
        if (op.kind < kCommonKinds) {
            RunCommon(op);
            return;
        }
        switch (static_cast<Own>(op.kind)) {
        case BoardColour:
        case BoardVisible: {
            qzk::ecad::SublayerPCB_CVSet set;
            api.GetColorVisInfo(set);
            auto it = set.begin();
            std::advance(it, op.a % set.size());
            auto entry = *it;
            if (op.kind == BoardColour) {
                entry.color = 0x01000000u | (op.b & 0xFFFFFFu);
            } else {
                entry.visible = !entry.visible;
            }
            set.erase(it);
            set.insert(entry);
            Recorded([&](auto const& o) {
                api.SetColorVisInfo(set, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case LayerColour: {
            qzkapp::ecad::PCBSchCompareScene::SublayerMap layers;
            api.GetSublayerColorVisInfo(layers);
            auto it = layers.begin();
            std::advance(it, op.a % layers.size());
            if (op.b % 2 == 0) {
                it->second.visible = !it->second.visible;
            } else {
                it->second.color = 0x01000000u | (op.b & 0xFFFFFFu);
            }
            Recorded([&](auto const& o) {
                api.SetSublayerColorVisInfo(layers, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case Isolate:
            if (op.b % 3 == 0) {
                api.ClearAllIsolated(NewOperation());
            } else {
                api.Isolate(Items(op.a), NewOperation());
            }
            break;
        case Rotate:
            Recorded([&](auto const& o) {
                api.AddRotation(static_cast<short>(static_cast<int>(op.a % 721) - 360), o);
            });
            break;
        case Sheet:
            api.PageNav(static_cast<short>(op.a % 3),
                        du::SmartPtr<qzk::ecad::BaseView>(sheetView_));
            break;
        }
    }

    std::string Snapshot() const {
        std::ostringstream out;
        CommonSnapshot(out);
        auto const inspect = qzref::Inspect(*scene_);
        out << "kernel board order";
        for (short layer : inspect.GetPCBDrawOrder()) {
            out << " " << layer;
        }
        out << "\nkernel sheet order";
        for (short layer : inspect.GetSchDrawOrder()) {
            out << " " << layer;
        }
        out << "\n";
        for (auto const& entry : inspect.GetColorVisInfo()) {
            out << "kernel sublayer " << entry.layer << "/" << entry.sublayer << " " << std::hex
                << entry.color << std::dec << " " << entry.visible << "\n";
        }
        for (auto const& [layer, info] : inspect.GetSublayerColorVisInfo()) {
            out << "kernel layer " << layer << " " << std::hex << info.color << std::dec << " "
                << info.visible << "\n";
        }
        std::set<std::string> isolated;
        for (auto const& item : inspect.GetIsolated()) {
            isolated.insert(qzref::DesignObjects::NameOf(item.object));
        }
        for (auto const& name : isolated) {
            out << "kernel isolated " << name << "\n";
        }
        std::vector<short> order;
        api_->GetPCBDrawOrder(order);
        out << "scene board order";
        for (short layer : order) {
            out << " " << layer;
        }
        api_->GetSchDrawOrder(order);
        out << "\nscene sheet order";
        for (short layer : order) {
            out << " " << layer;
        }
        out << "\nscene rotation " << api_->GetRotation() << "\n";
        return out.str();
    }

private:
    du::SmartPtr<BoardSchematicListener> listener_ = du::MakeCounted<BoardSchematicListener>();
    du::SmartPtr<qzk::ecad::PCBView> boardView_;
    du::SmartPtr<qzk::ecad::SchematicView> sheetView_;
    std::vector<short> boardOrder_;
    std::vector<short> sheetOrder_;
};

class OverlayListener : public qzkapp::ecad::PCBOvlCompareSceneObserver {
public:
    ~OverlayListener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

// The four-layer board against the top copper film, with the board's sublayers told to the
// kernel once after the load, as a viewer's colour panel does when it opens.
class BoardOverlay
    : public SubjectBase<qzkapp::ecad::PCBOvlCompareScene, qzk::ecad::PCBOvlCompareScene> {
public:
    enum Own {
        SublayerColour = kCommonKinds,
        SublayerVisible,
        OverlayColour,
        OverlayVisible,
        Isolate,
        ClearIsolated,
        Rotate
    };
    static std::vector<char const*> Names() {
        static char const* const own[] = {"sublayer-colour", "sublayer-visible", "overlay-colour",
                                          "overlay-visible", "isolate",          "clear-isolated",
                                          "rotate"};
        return WithCommon(own);
    }

    explicit BoardOverlay(qzkapp::SceneApiFactory& factory) {
        scene_ = du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(factory.CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("board"),
            qzk::ViewableSource::Create(
                du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json")),
            qzk::Instance::Create("film"),
            qzk::ViewableSource::Create(du::Symbol(QZ_EXAMPLES_DIR "/designs/top-copper.gbr")),
            159));
        if (!scene_) {
            return;
        }
        api_ = static_cast<qzkapp::ecad::PCBOvlCompareScene*>(scene_->GetApiScene());
        api_->RegisterObserver(*listener_);
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        std::vector<qzk::ecad::AnnoCVInfo> overlays;
        api_->GetOverlayColorVisInfo(overlays);
        if (overlays.empty()) {
            return;
        }
        qzk::ecad::SublayerPCB_CVSet set;
        api_->GetColorVisInfo(set);
        api_->SetColorVisInfo(set, nullptr, qzkapp::ecad::ChangeSourceScene);
        Start(api_->GetPCBData(), {"U1", "R1", "C1", "MH1", "VCC", "GND", "U1.1"});
    }
    ~BoardOverlay() {
        if (api_ != nullptr) {
            api_->UnregisterObserver(*listener_);
        }
    }

    void Run(Op const& op) {
        if (op.kind < kCommonKinds) {
            RunCommon(op);
            return;
        }
        auto& api = *api_;
        switch (static_cast<Own>(op.kind)) {
        case SublayerColour:
        case SublayerVisible: {
            qzk::ecad::SublayerPCB_CVSet set;
            api.GetColorVisInfo(set);
            auto it = set.begin();
            std::advance(it, op.a % set.size());
            auto entry = *it;
            if (op.kind == SublayerVisible) {
                entry.visible = !entry.visible;
            } else {
                entry.color = 0x01000000u | (op.b & 0xFFFFFFu);
            }
            set.erase(it);
            set.insert(entry);
            Recorded([&](auto const& o) {
                api.SetColorVisInfo(set, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case OverlayColour:
        case OverlayVisible: {
            std::vector<qzk::ecad::AnnoCVInfo> overlays;
            api.GetOverlayColorVisInfo(overlays);
            if (op.kind == OverlayVisible) {
                overlays.front().visible = !overlays.front().visible;
            } else {
                overlays.front().color = 0x01000000u | (op.b & 0xFFFFFFu);
            }
            qzk::ecad::SublayerPCB_CVSet set;
            api.GetColorVisInfo(set);
            Recorded([&](auto const& o) {
                api.SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet(false), set, overlays, {}, o,
                                        qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case Isolate:
            api.Isolate(Items(op.a), NewOperation());
            break;
        case ClearIsolated:
            api.ClearAllIsolated(NewOperation());
            break;
        case Rotate:
            Recorded([&](auto const& o) {
                api.AddRotation(static_cast<short>(static_cast<int>(op.a % 721) - 360), o);
            });
            break;
        }
    }

    std::string Snapshot() const {
        std::ostringstream out;
        CommonSnapshot(out);
        auto const inspect = qzref::Inspect(*scene_);
        for (auto const& entry : inspect.GetColorVisInfo()) {
            out << "kernel sublayer " << entry.layer << "," << entry.sublayer << " " << std::hex
                << entry.color << std::dec << " " << entry.visible << "\n";
        }
        for (auto const& overlay : inspect.GetOverlays()) {
            auto const film = qzref::Inspect(*overlay);
            out << "kernel overlay " << std::hex << film.GetColorWord() << std::dec << " "
                << film.IsVisible() << "\n";
        }
        std::set<std::string> isolated;
        for (auto const& item : inspect.GetIsolated()) {
            isolated.insert(qzref::DesignObjects::NameOf(item.object));
        }
        for (auto const& name : isolated) {
            out << "kernel isolated " << name << "\n";
        }
        qzk::ecad::SublayerPCB_CVSet set;
        api_->GetColorVisInfo(set);
        for (auto const& entry : set) {
            out << "scene sublayer " << entry.layer << "," << entry.sublayer << " " << std::hex
                << entry.color << std::dec << " " << entry.visible << "\n";
        }
        std::vector<qzk::ecad::AnnoCVInfo> overlays;
        api_->GetOverlayColorVisInfo(overlays);
        for (auto const& row : overlays) {
            out << "scene overlay " << std::hex << row.color << std::dec << " " << row.visible
                << "\n";
        }
        out << "scene rotation " << api_->GetRotation() << "\n";
        return out.str();
    }

private:
    du::SmartPtr<OverlayListener> listener_ = du::MakeCounted<OverlayListener>();
};

class UndoPropertyScenes : public ::testing::Test {
protected:
    void SetUp() override {
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        factory_ = du::DynamicCast<qzkapp::SceneApiFactory>(component);
        ASSERT_TRUE(factory_);
    }
    void TearDown() override {
        factory_ = nullptr;
        qzref::Platform::Stop();
    }

    template <class Subject> void ExpectOn() {
        Property<Subject> property([this] { return std::make_unique<Subject>(*factory_); });
        std::size_t const count = FromEnvironment("QZ_PROPERTY_OPS", 1000);
        auto const seed = static_cast<unsigned int>(FromEnvironment("QZ_PROPERTY_SEED", 20261124));
        property.Expect(seed, count);
        EXPECT_TRUE(property.Changed());
        for (unsigned int shortSeed = 1; shortSeed <= 10; ++shortSeed) {
            property.Expect(shortSeed, 25);
        }
    }

    du::SmartPtr<qzkapp::SceneApiFactory> factory_;
};

TEST_F(UndoPropertyScenes, SchematicLayersGroupsHighlightsAndDrawOrderBetweenSheetChanges) {
    ExpectOn<Schematic>();
}

TEST_F(UndoPropertyScenes, BoardCompareRowsSchemesIsolationAndRotation) {
    ExpectOn<BoardCompare>();
}

TEST_F(UndoPropertyScenes, SchematicCompareRecordsBetweenSheetChanges) {
    ExpectOn<SchematicCompare>();
}

TEST_F(UndoPropertyScenes, BoardAgainstSchematicEachSideInEitherOrder) {
    ExpectOn<BoardSchematic<true>>();
    ExpectOn<BoardSchematic<false>>();
}

TEST_F(UndoPropertyScenes, BoardOverlaySublayersFilmRowIsolationAndRotation) {
    ExpectOn<BoardOverlay>();
}

} // namespace
