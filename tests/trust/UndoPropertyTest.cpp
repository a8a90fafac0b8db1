// The undo property on a loaded board: random sequences of what a viewer's user does (sublayer
// colours and visibility, group colours, overlay colours, draw order, highlights, isolation,
// flip and rotation, selection), with undo and redo between them. Undoing everything brings the
// kernel's and the scene's state back to the state right after the load, exactly; redoing
// everything brings the final state back, exactly; every event heard decodes.
//
// A short seeded run is part of the suite. The long form is
//     QZ_PROPERTY_OPS=100000 QZ_PROPERTY_SEED=7 build/tests/trust_tests
// A failing sequence is shrunk to a short one and printed as a list of operations to keep as a
// regression.
//
// Two things a user does are left out because their undo is not meant to restore: the overlap
// colour switch records nothing, and undoing a flip turns the view back but inverts the layer
// order a second time (its operation holds both the flip's step, which toggles the flip and so
// inverts, and the inversion's own step). OrientationTest and GroupColorTest state those. The
// overlays' and the sublayers' rows are also changed through the one call that sets all colour
// families at once.
#include "trust/UndoProperty.h"
#include "board/PCBScene.h"
#include "board/PCBSceneObserver.h"
#include "component/EntryPoints.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "du/StringConversion.h"
#include "qzk/Instance.h"
#include "qzk/Operation.h"
#include "qzk/SelectionManager.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/GerberPrefs.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/DesignFile.h"
#include "qzref/DesignObjects.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/OverlayInspector.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using qzref::Messages;
using qzref::UndoControl;
using qztest::property::FromEnvironment;
using qztest::property::Op;
using qztest::property::Property;

enum class Kind {
    SublayerColour,
    SublayerVisible,
    GroupColour,
    GroupVisible,
    Highlight,
    AddHighlight,
    Dehighlight,
    ClearHighlights,
    Isolate,
    Deisolate,
    ClearIsolated,
    Rotate,
    InvertLayers,
    ApplyDrawOrder,
    MoveLayer,
    ResetDrawOrder,
    FillShapes,
    Select,
    OverlayColour,
    OverlayVisible,
    FullColour,
    Count
};

char const* const kKindNames[] = {"sublayer-colour",  "sublayer-visible", "group-colour",
                                  "group-visible",    "highlight",        "add-highlight",
                                  "dehighlight",      "clear-highlights", "isolate",
                                  "deisolate",        "clear-isolated",   "rotate",
                                  "invert-layers",    "apply-draw-order", "move-layer",
                                  "reset-draw-order", "fill-shapes",      "select",
                                  "overlay-colour",   "overlay-visible",  "full-colour"};
static_assert(std::size(kKindNames) == static_cast<std::size_t>(Kind::Count));

// Hears every event; a payload that does not decode reaches the loop's handler errors.
class Listener : public qzkapp::ecad::PCBSceneObserver {
public:
    ~Listener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
};

// One board scene, opened as a viewer opens it, with two groups told before the baseline.
class Board {
public:
    explicit Board(qzkapp::SceneApiFactory& factory) {
        bool flag = false;
        auto const created =
            factory.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("property"),
                                qzk::ViewableSource::Create(
                                    du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json")),
                                74, flag);
        scene_ = du::DynamicCast<qzk::ecad::PCBScene>(created);
        api_ = static_cast<qzkapp::ecad::PCBScene*>(scene_->GetApiScene());
        api_->RegisterObserver(*listener_);
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        for (char const* name : {"U1", "R1", "C1", "MH1", "VCC", "GND", "SENSE trace", "U1.1"}) {
            if (auto* object = api_->GetDesignData()->FindObject(name)) {
                objects_.push_back(object);
            }
        }
        api_->UpdateGroups({qzkapp::ecad::GroupInfo("power", false, dg::Color(0x010000FFu, true)),
                            qzkapp::ecad::GroupInfo("analog", true, dg::Color(0x0100FF00u, true))});
        api_->OnGroupContentAdded("power", {Item(0), Item(1)});
        api_->OnGroupContentAdded("analog", {Item(2)});
        api_->GetDefaultDrawOrder(defaultOrder_);
        // Two overlays of one film, the second current: their rows change colour and
        // visibility, which changes which one is current.
        auto const film = du::DynamicCast<qzk::ecad::EcadPCBData>(
            qzref::ReadDesignFile(QZ_EXAMPLES_DIR "/designs/top-copper.gbr").data);
        for (wchar_t const* name : {L"film A", L"film B"}) {
            api_->OverlayCreated(film, name, 0x010000FFu, true, qzk::ecad::GerberPrefs(),
                                 dg::DPoint2D(), dg::DMat33::IDENTITY, du::Symbol("gerber"), false);
        }
        Messages::PumpUntilIdle();
    }
    ~Board() {
        api_->UnregisterObserver(*listener_);
        UndoControl::Clear();
        qzref::Inspect(*scene_).DestroyScene();
        Messages::PumpUntilIdle();
    }

    static std::vector<char const*> Names() {
        return {std::begin(kKindNames), std::end(kKindNames)};
    }

    bool Loaded() const { return api_->IsDesignLoaded() && !objects_.empty(); }

    du::SmartPtr<qzk::SelectionItem> Item(unsigned int n) const {
        return du::MakeCounted<qzk::ecad::SelectionItem>(api_->GetDesignData(),
                                                         objects_[n % objects_.size()], nullptr,
                                                         nullptr, dg::DPoint3D(), 0, 0);
    }
    // One or two items drawn from n.
    std::vector<du::SmartPtr<qzk::SelectionItem>> Items(unsigned int n) const {
        std::vector<du::SmartPtr<qzk::SelectionItem>> items{Item(n)};
        if (n % 3 == 0) {
            items.push_back(Item(n / 3 + 1));
        }
        return items;
    }

    // The op.a-th entry of a colour set takes a colour drawn from op.b, or shows what it hid and
    // hides what it showed.
    template <class Set> static void Change(Set& set, Op const& op, bool colour) {
        auto it = set.begin();
        std::advance(it, op.a % set.size());
        auto entry = *it;
        if (colour) {
            entry.color = 0x01000000u | (op.b & 0xFFFFFFu);
        } else {
            entry.visible = !entry.visible;
        }
        set.erase(it);
        set.insert(entry);
    }

    du::SmartPtr<qzk::Operation> NewOperation() const {
        return du::MakeCounted<qzk::Operation>("property", du::SmartPtr<qzk::Scene>(scene_), false);
    }

    void Run(Op const& op) {
        auto& api = *api_;
        auto recorded = [&](auto&& change) {
            auto const operation = NewOperation();
            change(operation);
            qzk::RecordOperation(operation);
        };
        switch (static_cast<Kind>(op.kind)) {
        case Kind::SublayerColour:
        case Kind::SublayerVisible: {
            qzk::ecad::SublayerPCB_CVSet set;
            api.GetColorVisInfo(set);
            Change(set, op, static_cast<Kind>(op.kind) == Kind::SublayerColour);
            recorded([&](auto const& o) {
                api.SetColorVisInfo(set, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case Kind::GroupColour:
        case Kind::GroupVisible: {
            qzk::ecad::GroupCVInfoSet set(false);
            api.GetGroupColorVisInfo(set);
            Change(set, op, static_cast<Kind>(op.kind) == Kind::GroupColour);
            recorded([&](auto const& o) {
                api.SetGroupColorVisInfo(set, o, qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        case Kind::OverlayColour:
        case Kind::OverlayVisible:
        case Kind::FullColour: {
            // Through the one call that sets every family, which records only what differs.
            qzk::ecad::GroupCVInfoSet groups(false);
            api.GetGroupColorVisInfo(groups);
            qzk::ecad::SublayerPCB_CVSet sublayers;
            api.GetColorVisInfo(sublayers);
            std::vector<qzk::ecad::AnnoCVInfo> overlays;
            api.GetOverlayColorVisInfo(overlays);
            std::vector<qzk::ecad::AnnoCVInfo> images;
            api.GetImageColorVisInfo(images);
            auto& row = overlays[op.a % overlays.size()];
            if (static_cast<Kind>(op.kind) == Kind::OverlayVisible) {
                row.visible = !row.visible;
            } else {
                row.color = 0x01000000u | (op.b & 0xFFFFFFu);
            }
            if (static_cast<Kind>(op.kind) == Kind::FullColour) {
                Change(sublayers, op, true);
            }
            recorded([&](auto const& o) {
                api.SetFullColorVisInfo(groups, sublayers, overlays, images, o,
                                        qzkapp::ecad::ChangeSourceScene);
            });
            break;
        }
        // Highlights and isolation hand their operation to the undo list themselves.
        case Kind::Highlight:
            api.Highlight(Items(op.a), NewOperation());
            break;
        case Kind::AddHighlight:
            api.AddToHighlights(Items(op.a), NewOperation());
            break;
        case Kind::Dehighlight:
            api.Dehighlight(Items(op.a), NewOperation());
            break;
        case Kind::ClearHighlights:
            api.ClearHighlights(NewOperation());
            break;
        case Kind::Isolate:
            api.Isolate(Items(op.a), NewOperation());
            break;
        case Kind::Deisolate:
            api.Deisolate(Items(op.a), NewOperation());
            break;
        case Kind::ClearIsolated:
            api.ClearAllIsolated(NewOperation());
            break;
        case Kind::Rotate:
            recorded([&](auto const& o) {
                api.AddRotation(static_cast<short>(static_cast<int>(op.a % 721) - 360), o);
            });
            break;
        case Kind::InvertLayers:
            recorded([&](auto const& o) { api.DrawOrderInvertLayers(o); });
            break;
        case Kind::ApplyDrawOrder: {
            std::vector<short> order = defaultOrder_;
            std::mt19937 shuffle(op.a);
            std::shuffle(order.begin(), order.end(), shuffle);
            recorded([&](auto const& o) { api.ApplyDrawOrder(order, op.b % 2 == 0, o); });
            break;
        }
        case Kind::MoveLayer:
            if (!defaultOrder_.empty()) {
                api.DrawOrderMoveLayer(defaultOrder_[op.a % defaultOrder_.size()],
                                       op.b % (defaultOrder_.size() + 1), true);
            }
            break;
        case Kind::ResetDrawOrder:
            api.ResetDrawOrder(true);
            break;
        case Kind::FillShapes:
            recorded([&](auto const& o) { api.SetFillShapes(op.a % 2 == 0, o); });
            break;
        case Kind::Select: {
            du::SmartPtr<qzk::SelectionManager> manager;
            scene_->GetSelectionManager(manager);
            manager->ApplyItems(op.b % 2, {Item(op.a)}, qzk::SelectionManager::replace);
            break;
        }
        case Kind::Count:
            break;
        }
    }

    // Selection is not undoable: the property is about everything else, so both ends of a
    // comparison are taken with the selection channels empty.
    void ClearSelection() {
        du::SmartPtr<qzk::SelectionManager> manager;
        scene_->GetSelectionManager(manager);
        manager->ApplyItems(0, {}, qzk::SelectionManager::clear);
        manager->ApplyItems(1, {}, qzk::SelectionManager::clear);
        Messages::PumpUntilIdle();
    }

    // Everything the property compares, one line per fact, so that a difference reads plainly.
    std::string Snapshot() const {
        std::ostringstream out;
        auto const inspect = qzref::Inspect(*scene_);
        // The selection and highlight layers. The group layer is the viewer's to refill: a new
        // set of group colours clears it, undone or not, and the viewer tells the members again.
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
        // Not the draw order flag: it is how the last call asked the kernel to treat the
        // inversion, not something the scene holds.
        out << "\n";
        for (auto const& entry : inspect.GetColorVisInfo()) {
            out << "kernel sublayer " << entry.layer << "/" << entry.sublayer << " " << std::hex
                << entry.color << std::dec << " " << entry.visible << "\n";
        }
        std::set<std::string> isolated;
        for (auto const& item : inspect.GetIsolated()) {
            isolated.insert(qzref::DesignObjects::NameOf(item.object));
        }
        for (auto const& name : isolated) {
            out << "kernel isolated " << name << "\n";
        }
        out << "kernel isolating " << inspect.IsIsolating() << "\n";
        out << "kernel fill " << inspect.GetFillShapes() << "\n";

        qzk::ecad::SublayerPCB_CVSet sublayers;
        api_->GetColorVisInfo(sublayers);
        for (auto const& entry : sublayers) {
            out << "scene sublayer " << entry.layer << "/" << entry.sublayer << " " << std::hex
                << entry.color << std::dec << " " << entry.visible << "\n";
        }
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
        // Not the inversion flag: it is the kernel's, and a layer move tells the kernel the order
        // without inversion, undone or not. The order itself is compared above.
        out << "\nscene flip " << api_->GetFlip() << " rotation " << api_->GetRotation() << " fill "
            << api_->GetFillShapes() << "\n";
        qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
        api_->GetHighlights(highlights);
        std::set<std::string> names;
        for (auto const& item : highlights) {
            names.insert(qzref::DesignObjects::NameOf(item.object));
        }
        for (auto const& name : names) {
            out << "scene highlight " << name << "\n";
        }
        std::vector<qzk::ecad::AnnoCVInfo> overlays;
        api_->GetOverlayColorVisInfo(overlays);
        for (auto const& row : overlays) {
            out << "scene overlay " << du::WideStrToUtf8(row.name) << " " << std::hex << row.color
                << std::dec << " " << row.visible << "\n";
        }
        out << "scene current overlay " << du::WideStrToUtf8(api_->GetCurOverlayName()) << "\n";
        for (auto const& overlay : inspect.GetOverlays()) {
            auto const film = qzref::Inspect(*overlay);
            out << "kernel overlay " << film.GetName() << " " << std::hex << film.GetColorWord()
                << std::dec << " " << film.IsVisible() << "\n";
        }
        return out.str();
    }

private:
    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    du::SmartPtr<Listener> listener_ = du::MakeCounted<Listener>();
    std::vector<void*> objects_;
    std::vector<short> defaultOrder_;
};

class UndoProperty : public ::testing::Test {
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

    du::SmartPtr<qzkapp::SceneApiFactory> factory_;
    Property<Board> property_{[this] { return std::make_unique<Board>(*factory_); }};
};

TEST_F(UndoProperty, UndoingEverythingRestoresTheLoadedBoardAndRedoingRestoresTheEnd) {
    std::size_t const count = FromEnvironment("QZ_PROPERTY_OPS", 1000);
    auto const seed = static_cast<unsigned int>(FromEnvironment("QZ_PROPERTY_SEED", 20261123));
    property_.Expect(seed, count);
    EXPECT_TRUE(property_.Changed());
}

// Short sequences from many seeds find what one long sequence hides behind its own undos.
TEST_F(UndoProperty, ManyShortSequencesHoldTheProperty) {
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        property_.Expect(seed, 25);
    }
}

} // namespace
