// The board-against-overlay compare scene: the board loads as a compare design, the Gerber design
// becomes the board's overlay when it arrives (after the board, before it, or never), each side
// takes one of the kernel's compare colours, and the overlay can be loaded anew.
#include "compare/PCBOvlCompareScene.h"
#include "compare/CompareHarness.h"
#include "compare/PCBOvlCompareSceneObserver.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzref/AnnoSetTableEntryInspector.h"
#include "qzref/DesignFile.h"
#include "qzref/PreferencesControl.h"

namespace qztest {
namespace {

using qzkapp::ecad::ChangeSourceScene;
using qzref::Journal;
using qzref::LoaderControl;
using qzref::Messages;
using OvlScene = du::SmartPtr<qzk::ecad::PCBOvlCompareScene>;

std::string const kBoard = Example("four-layer-board.json");
std::string const kFilm = Example("top-copper.gbr");

unsigned int const kFirstColor = 0x01112233;
unsigned int const kSecondColor = 0x01445566;

class OverlayObserver : public qzkapp::ecad::PCBOvlCompareSceneObserver {
public:
    ~OverlayObserver() override { DetachFromMessageLoop(); }

    void DetachObserver() override {}
    void OnDrawOrderChanged() override { Add("DrawOrder"); }
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) override {
        Add(std::string("DesignLoaded ") + (second ? "second " : "first ") + std::to_string(error) +
            " \"" + text.str() + "\"");
    }
    void OnSublayerColorVisChanged(unsigned int source) override {
        Add("SublayerCV " + std::to_string(source));
    }
    void OnOverlayChanged(unsigned int source) override {
        Add("Overlay " + std::to_string(source));
    }
    void OnHighlightOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("HighlightOnlyVisible " + std::string(on ? "true " : "false ") +
            std::to_string(source));
    }
    void OnRotationChanged(short degrees) override { Add("Rotation " + std::to_string(degrees)); }

    std::vector<std::string> Take() {
        std::lock_guard lock(mutex_);
        return std::exchange(calls_, {});
    }

private:
    void Add(std::string call) {
        std::lock_guard lock(mutex_);
        calls_.push_back(std::move(call));
    }

    std::mutex mutex_;
    std::vector<std::string> calls_;
};

class PCBOvlCompareSceneTest : public CompareTest {
protected:
    void SetUp() override {
        CompareTest::SetUp();
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_a",
                                                kFirstColor);
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_b",
                                                kSecondColor);
    }
    void TearDown() override {
        for (auto const& scene : scenes_) {
            qzref::Inspect(*scene).DestroyScene();
        }
        scenes_.clear();
        CompareTest::TearDown();
        qzref::PreferencesControl::Clear();
    }

    // Made by the factory as a host makes it: kind 159 with a Gerber source on either side.
    OvlScene Make(std::string const& first, std::string const& second) {
        auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
        du::SmartPtr<qzk::Scene> scene = factory->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(du::Symbol(first)), qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(du::Symbol(second)), 159);
        return Keep(du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(scene));
    }

    static du::SmartPtr<qzk::Operation> NewOp(OvlScene const& scene) {
        return du::MakeCounted<qzk::Operation>("colour", du::SmartPtr<qzk::Scene>(scene), false);
    }

    void EndScene(OvlScene const& scene) {
        qzref::Inspect(*scene).DestroyScene();
        scenes_.erase(std::remove(scenes_.begin(), scenes_.end(), scene), scenes_.end());
    }

    OvlScene Keep(OvlScene scene) {
        if (scene) {
            scenes_.push_back(scene);
        }
        return scene;
    }

    // A new observer that has heard nothing yet.
    du::SmartPtr<OverlayObserver> Listen(OvlScene const& scene) {
        auto observer = du::MakeCounted<OverlayObserver>();
        EXPECT_TRUE(Api(scene)->RegisterObserver(*observer));
        Messages::PumpUntilIdle();
        observer->Take();
        return observer;
    }

    static qzkapp::ecad::PCBOvlCompareScene* Api(OvlScene const& scene) {
        return dynamic_cast<qzkapp::ecad::PCBOvlCompareScene*>(scene->GetApiScene());
    }

    static std::vector<qzk::ecad::AnnoCVInfo> Overlays(OvlScene const& scene) {
        std::vector<qzk::ecad::AnnoCVInfo> out;
        Api(scene)->GetOverlayColorVisInfo(out);
        return out;
    }

    // The colours of the API's sublayer set, each once.
    static std::set<unsigned int> BoardColours(OvlScene const& scene) {
        qzk::ecad::SublayerPCB_CVSet set;
        Api(scene)->GetColorVisInfo(set);
        std::set<unsigned int> colours;
        for (auto const& entry : set) {
            colours.insert(entry.color);
        }
        return colours;
    }

    // Delivers messages one at a time until the scene shows an overlay.
    static void PumpUntilOverlay(OvlScene const& scene) {
        while (Overlays(scene).empty() && Messages::PumpOne()) {
        }
    }

    std::vector<OvlScene> scenes_;
};

TEST_F(PCBOvlCompareSceneTest, BoardFirstOverlayAfterIsToldAsAnOverlayLoadWithoutALoadNotice) {
    LoaderControl::SetHolding(true);
    auto scene = Make(kBoard, kFilm);
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    EXPECT_EQ(api->GetClassType().GetId(), 178u);
    EXPECT_EQ(LoaderControl::GetHeldCount(), 2u);
    EXPECT_TRUE(api->_IsLoadInProgress());
    auto observer = du::MakeCounted<OverlayObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));

    LoaderControl::ReleaseHeld();
    Settle();
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_FALSE(api->_IsLoadInProgress());
    // The board's notice, colours made on its arrival; the overlay's arrival is no load notice.
    EXPECT_EQ(observer->Take(),
              (std::vector<std::string>{"DrawOrder", "SublayerCV 1", "Overlay 1",
                                        "DesignLoaded first 0 \"\"", "Overlay 4"}));
    EXPECT_EQ(api->GetPCBData(), api->GetFirstDesignData());
    ASSERT_TRUE(api->GetSecondDesignData());
    EXPECT_TRUE(api->GetSecondDesignData()->IsOverlayData());
    EXPECT_EQ(api->GetTopLayer(), 5);
    EXPECT_EQ(api->GetBottomLayer(), 2);

    // The board in the first compare colour, the overlay, shown, in the second.
    EXPECT_EQ(BoardColours(scene), (std::set<unsigned int>{kFirstColor}));
    auto const overlays = Overlays(scene);
    ASSERT_EQ(overlays.size(), 1u);
    EXPECT_EQ(overlays[0].color, kSecondColor);
    EXPECT_TRUE(overlays[0].visible);
    EXPECT_NE(overlays[0].id, 0u);
    auto const kernelOverlays = qzref::Inspect(*scene).GetOverlays();
    ASSERT_EQ(kernelOverlays.size(), 1u);
    EXPECT_EQ(qzref::Inspect(*kernelOverlays[0]).GetColorWord(), kSecondColor);
    EXPECT_TRUE(qzref::Inspect(*kernelOverlays[0]).IsVisible());
    // The board's colours were not pushed on load: the kernel keeps its own until a change.
    EXPECT_TRUE(qzref::Inspect(*scene).GetColorVisInfo().empty());

    // A late observer hears the pair replayed.
    auto replayed = du::MakeCounted<OverlayObserver>();
    ASSERT_TRUE(api->RegisterObserver(*replayed));
    Messages::PumpUntilIdle();
    EXPECT_EQ(replayed->Take(),
              (std::vector<std::string>{"DesignLoaded first 0 \"\"", "DrawOrder"}));
}

TEST_F(PCBOvlCompareSceneTest, OverlayFirstBoardSecondSwapsTheColoursAndCountsOnlyTheBoard) {
    LoaderControl::SetHolding(true);
    auto scene = Make(kFilm, kBoard);
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<OverlayObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    LoaderControl::ReleaseHeld();
    LoaderControl::WaitUntilIdle();

    // The overlay comes first: it alone doesn't make the scene loaded.
    PumpUntilOverlay(scene);
    ASSERT_EQ(Overlays(scene).size(), 1u);
    EXPECT_FALSE(api->IsDesignLoaded());
    EXPECT_FALSE(api->GetPCBData());
    EXPECT_EQ(Overlays(scene)[0].color, kFirstColor);

    Messages::PumpUntilIdle();
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_EQ(api->GetPCBData(), api->GetSecondDesignData());
    EXPECT_EQ(observer->Take(),
              (std::vector<std::string>{"Overlay 4", "DrawOrder", "SublayerCV 1", "Overlay 1",
                                        "DesignLoaded second 0 \"\""}));
    // The board on the second side takes the second colour, the overlay the first.
    EXPECT_EQ(BoardColours(scene), (std::set<unsigned int>{kSecondColor}));
    ASSERT_EQ(Overlays(scene).size(), 1u);
    EXPECT_EQ(Overlays(scene)[0].color, kFirstColor);
    EXPECT_TRUE(Overlays(scene)[0].visible);
    EXPECT_EQ(qzref::Inspect(*scene).GetDrawOrder(), (std::vector<short>{1, 2, 3, 4, 5, -2}));
}

TEST_F(PCBOvlCompareSceneTest, AnOverlayThatFailsEndsWithTheLoadersNumberAndTextBoardShown) {
    HoldInMemory(kBoard, kBoard);
    LoaderControl::SetHolding(true);
    auto scene = Make(kBoard, kFilm);
    auto* api = Api(scene);
    EXPECT_TRUE(api->IsDesignLoaded());
    auto observer = Listen(scene);
    ASSERT_EQ(LoaderControl::GetHeldUrl(), kFilm);
    ASSERT_TRUE(LoaderControl::CompleteHeld(1, -6, 6, du::Symbol("bad aperture")));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(),
              (std::vector<std::string>{"DesignLoaded second 6 \"bad aperture\""}));
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_EQ(BoardColours(scene), (std::set<unsigned int>{kFirstColor}));
    EXPECT_FALSE(api->_IsLoadInProgress());
    EXPECT_TRUE(Overlays(scene).empty());
    EXPECT_TRUE(qzref::Inspect(*scene).GetOverlays().empty());
    EXPECT_FALSE(api->GetSecondDesignData());
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

TEST_F(PCBOvlCompareSceneTest, AFilmThatIsNotThereNeverArrivesAndTheBoardStaysShown) {
    LoaderControl::SetHolding(true);
    auto scene = Make(Example("missing-film.gbr"), kBoard);
    ASSERT_TRUE(scene);
    auto observer = Listen(scene);
    LoaderControl::ReleaseHeld();
    Settle();
    std::vector<std::string> const calls = observer->Take();
    ASSERT_EQ(calls.size(), 5u);
    EXPECT_EQ(calls[0].rfind("DesignLoaded first ", 0), 0u) << calls[0];
    EXPECT_EQ(calls[0].find("DesignLoaded first 0 "), std::string::npos) << calls[0];
    EXPECT_EQ(calls[4], "DesignLoaded second 0 \"\"");
    EXPECT_TRUE(Api(scene)->IsDesignLoaded());
    EXPECT_EQ(Api(scene)->GetPCBData(), Api(scene)->GetSecondDesignData());
    EXPECT_EQ(BoardColours(scene), (std::set<unsigned int>{kSecondColor}));
    EXPECT_TRUE(Overlays(scene).empty());
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

TEST_F(PCBOvlCompareSceneTest, LoadingTheOverlayAgainCancelsTheLoadUnderWayAndRemovesTheOld) {
    HoldInMemory(kBoard, kBoard);
    auto scene = Make(kBoard, kFilm);
    Settle();
    auto* api = Api(scene);
    ASSERT_EQ(Overlays(scene).size(), 1u);
    uint64 const oldId = Overlays(scene)[0].id;
    auto observer = Listen(scene);

    LoaderControl::SetHolding(true);
    std::size_t const mark = Journal::Size();
    api->LoadOverlay();
    // The old overlay is gone at once, and told while it was still in the list.
    EXPECT_TRUE(Overlays(scene).empty());
    EXPECT_TRUE(qzref::Inspect(*scene).GetOverlays().empty());
    api->LoadOverlay();
    EXPECT_TRUE(api->_IsLoadInProgress());
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](auto const& l) { return l.find(".RemoveOverlay(") != l.npos; }),
              1);

    LoaderControl::ReleaseHeld();
    Settle();
    // The cancelled load is told as a failed one; only the second brings an overlay.
    std::vector<std::string> const calls = observer->Take();
    EXPECT_EQ(calls.front(), "Overlay 1");
    EXPECT_EQ(calls.back(), "Overlay 4");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Overlay 4"), 1);
    ASSERT_EQ(Overlays(scene).size(), 1u);
    EXPECT_NE(Overlays(scene)[0].id, oldId);
    EXPECT_EQ(qzref::Inspect(*scene).GetOverlays().size(), 1u);
    EXPECT_FALSE(api->_IsLoadInProgress());

    // Given preferences of its own, the overlay goes where the caller says, hidden if asked.
    LoaderControl::SetHolding(false);
    qzk::ecad::GerberPrefs metric;
    metric.metric = true;
    api->LoadOverlay(metric, dg::DMat33::Translation(5, 0), dg::DPoint2D(1, 2), false);
    Settle();
    ASSERT_EQ(Overlays(scene).size(), 1u);
    EXPECT_FALSE(Overlays(scene)[0].visible);
    qzk::ecad::GerberPrefs read;
    api->GetGerberPrefs(read);
    EXPECT_TRUE(read.metric);
    auto const kernelOverlays = qzref::Inspect(*scene).GetOverlays();
    ASSERT_EQ(kernelOverlays.size(), 1u);
    EXPECT_FALSE(qzref::Inspect(*kernelOverlays[0]).IsVisible());
}

TEST_F(PCBOvlCompareSceneTest, ASavedComparisonLoadsItsOverlayOnlyWhenAsked) {
    auto entry = qzk::AnnoSetTableEntry::Create(du::Symbol("saved overlay"));
    auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    auto scene = Keep(du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(
        factory->CreateScene(qzk::World::GetWorld(), entry, 177)));
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    EXPECT_EQ(api->GetClassType().GetId(), 178u);
    auto observer = Listen(scene);
    qzref::Inspect(*entry).SetFirst(qzk::Instance::Create("first"),
                                    qzk::ViewableSource::Create(du::Symbol(kBoard)));
    qzref::Inspect(*entry).SetSecond(qzk::Instance::Create("second"),
                                     qzk::ViewableSource::Create(du::Symbol(kFilm)));
    qzref::Inspect(*entry).Complete();
    Settle();
    Settle();
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_TRUE(Overlays(scene).empty());
    EXPECT_FALSE(api->GetSecondDesignData());
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"DrawOrder", "SublayerCV 1", "Overlay 1",
                                                          "DesignLoaded first 0 \"\""}));

    api->LoadOverlay();
    Settle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Overlay 4"}));
    ASSERT_EQ(Overlays(scene).size(), 1u);
    EXPECT_EQ(Overlays(scene)[0].color, kSecondColor);
}

TEST_F(PCBOvlCompareSceneTest, WithoutAGerberDesignLoadingTheOverlayOnlyTakesTheOldAway) {
    // A saved comparison of two boards: nothing to read an overlay from.
    auto entry = qzk::AnnoSetTableEntry::Create(du::Symbol("two boards"));
    auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    auto scene = Keep(du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(
        factory->CreateScene(qzk::World::GetWorld(), entry, 177)));
    ASSERT_TRUE(scene);
    qzref::Inspect(*entry).SetFirst(qzk::Instance::Create("first"),
                                    qzk::ViewableSource::Create(du::Symbol(kBoard)));
    qzref::Inspect(*entry).SetSecond(qzk::Instance::Create("second"),
                                     qzk::ViewableSource::Create(du::Symbol(kBoard)));
    qzref::Inspect(*entry).Complete();
    Settle();
    Settle();
    auto* api = Api(scene);
    ASSERT_TRUE(api->IsDesignLoaded());
    auto film = du::DynamicCast<qzk::ecad::EcadPCBData>(qzref::ReadDesignFile(kFilm).data);
    ASSERT_TRUE(film);
    api->OverlayCreated(film, dg::Color(0x01FF0000, true), true, qzk::ecad::GerberPrefs(),
                        dg::DPoint2D(), dg::DMat33::IDENTITY);
    ASSERT_EQ(Overlays(scene).size(), 1u);
    auto observer = Listen(scene);

    std::size_t const mark = Journal::Size();
    api->LoadOverlay();
    Settle();
    EXPECT_TRUE(Overlays(scene).empty());
    EXPECT_TRUE(qzref::Inspect(*scene).GetOverlays().empty());
    EXPECT_FALSE(Contains(Journal::Since(mark), "Loader.LoadEcadDesign"));
    EXPECT_FALSE(api->_IsLoadInProgress());
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Overlay 1"}));
    // Nothing left to take away: a second call tells nobody.
    api->LoadOverlay();
    Messages::PumpUntilIdle();
    EXPECT_TRUE(observer->Take().empty());
}

TEST_F(PCBOvlCompareSceneTest, CompareColourChangesStayInTheSceneUntilTheNextPush) {
    HoldInMemory(kBoard, kBoard);
    auto scene = Make(kBoard, kFilm);
    Settle();
    auto* api = Api(scene);
    auto observer = Listen(scene);
    std::size_t const mark = Journal::Size();

    qzref::Inspect(*scene).ChangeItemColors(dg::Color(0x010000DC, true),
                                            dg::Color(0x01DC0000, true), dg::Color(0, true));
    Messages::PumpUntilIdle();
    EXPECT_EQ(BoardColours(scene), (std::set<unsigned int>{0x010000DC}));
    EXPECT_EQ(Overlays(scene)[0].color, 0x01DC0000u);
    // Nothing told, nothing pushed, nothing to undo.
    EXPECT_TRUE(observer->Take().empty());
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_FALSE(Contains(lines, ".SetColorVisInfo("));
    EXPECT_FALSE(Contains(lines, ".OverlayColorVisChanged("));
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);

    // The next change of the set carries them to the kernel.
    qzk::ecad::SublayerPCB_CVSet set;
    api->GetColorVisInfo(set);
    api->SetColorVisInfo(set, nullptr, ChangeSourceScene);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"SublayerCV 1"}));
    auto const told = qzref::Inspect(*scene).GetColorVisInfo();
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.begin()->color, 0x010000DCu);

    // Once the scene has ended a late change reaches nothing.
    EndScene(scene);
    qzref::Inspect(*scene).ChangeItemColors(dg::Color(0, true), dg::Color(0, true),
                                            dg::Color(0, true));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

TEST_F(PCBOvlCompareSceneTest, FullColourSetRecordsOnlyWhatDiffersAndDefaultsRecordBoth) {
    HoldInMemory(kBoard, kBoard);
    auto scene = Make(kBoard, kFilm);
    Settle();
    auto* api = Api(scene);
    auto observer = Listen(scene);
    qzk::ecad::SublayerPCB_CVSet sublayers;
    api->GetColorVisInfo(sublayers);
    std::vector<qzk::ecad::AnnoCVInfo> overlays = Overlays(scene);
    ASSERT_EQ(overlays.size(), 1u);

    // Groups and images aren't this scene's: a change of them alone does nothing.
    qzk::ecad::GroupCVInfoSet groups(false);
    groups.insert(qzk::ecad::GroupCVInfo("net", 0x01ABCDEF, true));
    auto op = NewOp(scene);
    api->SetFullColorVisInfo(groups, sublayers, overlays, {}, op, ChangeSourceScene);
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 0u);
    EXPECT_TRUE(observer->Take().empty());

    // The overlay hidden: one step, one event; undone, it shows again.
    overlays[0].visible = false;
    api->SetFullColorVisInfo(groups, sublayers, overlays, {}, op, ChangeSourceScene);
    qzk::RecordOperation(op);
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Overlay 1"}));
    EXPECT_FALSE(Overlays(scene)[0].visible);
    EXPECT_FALSE(qzref::Inspect(*qzref::Inspect(*scene).GetOverlays()[0]).IsVisible());
    ASSERT_TRUE(qzref::UndoControl::Undo());
    Messages::PumpUntilIdle();
    EXPECT_TRUE(Overlays(scene)[0].visible);
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Overlay 3"}));

    // The defaults record both families, changed or not, and show the overlay.
    overlays[0].visible = false;
    api->UpdateOverlayCVInfo(overlays, ChangeSourceScene);
    auto defaults = NewOp(scene);
    api->LoadColorVisInfo(defaults);
    EXPECT_EQ(qzref::Inspect(*defaults).GetStepCount(), 2u);
    EXPECT_TRUE(Overlays(scene)[0].visible);
    auto again = NewOp(scene);
    api->LoadColorVisInfo(again);
    EXPECT_EQ(qzref::Inspect(*again).GetStepCount(), 2u);
}

TEST_F(PCBOvlCompareSceneTest, OverlayOperationsActOnTheFirstEntryAndTheFamilysIdsHold) {
    HoldInMemory(kBoard, kBoard);
    LoaderControl::SetHolding(true);
    auto scene = Make(kBoard, kFilm);
    auto* api = Api(scene);
    auto observer = Listen(scene);

    // No overlay yet: rotating and flipping it reach nothing, and null data makes nothing.
    std::size_t mark = Journal::Size();
    api->RotateOverlay(90);
    api->FlipHorzOverlay();
    api->OverlayCreated(nullptr, dg::Color(0x01FF0000, true), true, qzk::ecad::GerberPrefs(),
                        dg::DPoint2D(), dg::DMat33::IDENTITY);
    EXPECT_TRUE(Journal::Since(mark).empty());

    LoaderControl::ReleaseHeld();
    Settle();
    ASSERT_EQ(Overlays(scene).size(), 1u);
    uint64 const id = Overlays(scene)[0].id;
    mark = Journal::Size();
    api->RotateOverlay(90);
    api->FlipVertOverlay();
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_TRUE(Contains(lines, ".RotateOverlay(" + std::to_string(id)));
    EXPECT_TRUE(Contains(lines, ".FlipVertOverlay(" + std::to_string(id)));

    api->SetHighlightOnlyVisible(true, ChangeSourceScene);
    api->SetRotation(180, nullptr, true);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{
                                    "Overlay 4", "HighlightOnlyVisible true 1", "Rotation 180"}));
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

TEST_F(PCBOvlCompareSceneTest, ObserverDecodesTheFamilysEventsWithItsOwnTexts) {
    unsigned char const first = qzkapp::ecad::PCBOvlCompareScene::GetBaseEventId();
    auto message = [](auto push) {
        dom::ObserverProxy proxy;
        proxy.Begin();
        push(proxy);
        proxy.End();
        return proxy.TakeMessage();
    };
    OverlayObserver observer;
    auto deliver = [&](unsigned char tag, dom::MessageData const& data) {
        dom::MessageReader reader(data);
        observer.HandleEvent(tag, reader);
    };
    deliver(first + 1, message([](dom::ObserverProxy& p) { p.PushUInt32Value(4); }));
    deliver(first, message([](dom::ObserverProxy& p) {
                p.PushUInt32Value(3);
                p.PushBooleanValue(true);
            }));
    deliver(first + 3, message([](dom::ObserverProxy& p) { p.PushUInt32Value(0x0001FFA6u); }));
    // A tag past the family's last is a later scene's, and passed over.
    deliver(first + 5, message([](dom::ObserverProxy& p) { p.PushUInt32Value(1); }));
    // Below the family: the compare family's sublayer notice.
    deliver(first - 1, message([](dom::ObserverProxy& p) { p.PushUInt32Value(3); }));
    EXPECT_EQ(observer.Take(), (std::vector<std::string>{"Overlay 4", "HighlightOnlyVisible true 3",
                                                         "Rotation -90", "SublayerCV 3"}));

    auto error = [&](unsigned char tag, dom::MessageData const& data) {
        try {
            deliver(tag, data);
        } catch (std::runtime_error const& e) {
            return std::string(e.what());
        }
        return std::string("no error");
    };
    auto const sourceOnly = message([](dom::ObserverProxy& p) { p.PushUInt32Value(5); });
    auto const empty = message([](dom::ObserverProxy&) {});
    EXPECT_EQ(error(first, sourceOnly), "Failed to retrieve the HighlightOnlyVisible value");
    EXPECT_EQ(error(first + 4, sourceOnly), "Failed to retrieve the Only Visible value");
    EXPECT_EQ(error(first + 1, empty), "Failed to retrieve the change source");
    EXPECT_EQ(error(first + 2, empty), "Failed to retrieve orientation");
    EXPECT_TRUE(observer.Take().empty());
}

TEST_F(PCBOvlCompareSceneTest, FactoryMakesTheOverlayCompareForAGerberSourceOnEitherSide) {
    auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    auto world = qzk::World::GetWorld();
    auto source = [](std::string const& path) {
        return qzk::ViewableSource::Create(du::Symbol(path));
    };
    auto instance = qzk::Instance::Create("i");
    for (auto const& [first, second] : std::vector<std::pair<std::string, std::string>>{
             {kFilm, kBoard}, {kBoard, Example("TOP.GTL")}, {"/tmp/noextension", kBoard}}) {
        auto scene = Keep(du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(
            factory->CreateScene(world, instance, source(first), instance, source(second), 159)));
        ASSERT_TRUE(scene) << first << " " << second;
        EXPECT_EQ(Api(scene)->GetClassType().GetId(), 178u);
    }
    // Kind 177 is for a saved comparison only.
    EXPECT_FALSE(
        factory->CreateScene(world, instance, source(kBoard), instance, source(kFilm), 177));
    Settle();
}

} // namespace
} // namespace qztest
