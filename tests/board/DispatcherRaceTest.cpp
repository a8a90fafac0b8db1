// The dispatcher delivers a board scene's events while the host thread keeps changing the scene,
// and the handlers read the scene back as a viewer's do. Run under the sanitizers
// (docs/stress.md); QZ_STRESS_ROUNDS sets the number of rounds.
#include "design/SceneHarness.h"

#include "qzk/Operation.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <atomic>
#include <cstdlib>

namespace qztest {
namespace {

using qzref::Messages;

int StressRounds(int fallback) {
    char const* text = std::getenv("QZ_STRESS_ROUNDS");
    int const rounds = text != nullptr ? std::atoi(text) : 0;
    return rounds > 0 ? rounds : fallback;
}

// Reads the scene inside its handlers, under the scene's read lock, while the host writes it.
class ReadingObserver : public qzkapp::ecad::PCBSceneObserver {
public:
    explicit ReadingObserver(qzkapp::ecad::PCBScene* scene) : scene_(scene) {}
    ~ReadingObserver() override { DetachFromMessageLoop(); }

    void DetachObserver() override {}
    void OnSublayerColorVisChanged(unsigned int /*source*/) override {
        qzk::ecad::SublayerPCB_CVSet set;
        scene_->GetColorVisInfo(set);
        if (!set.empty()) {
            lastColour.store(set.begin()->color);
        }
        colourEvents.fetch_add(1);
    }
    void OnHighlightChanged(unsigned int /*count*/) override {
        qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
        scene_->GetHighlights(highlights);
        highlightEvents.fetch_add(1);
    }

    std::atomic<unsigned int> lastColour{0};
    std::atomic<int> colourEvents{0};
    std::atomic<int> highlightEvents{0};

private:
    qzkapp::ecad::PCBScene* scene_;
};

class DispatcherRaceTest : public SceneTest {
protected:
    void TearDown() override {
        Messages::StopDispatcher();
        SceneTest::TearDown();
    }
};

TEST_F(DispatcherRaceTest, HandlersReadTheSceneWhileTheHostChangesAndUndoesIt) {
    auto scene = MakeBoard(Example("four-layer-board.json"));
    ASSERT_TRUE(scene);
    Settle();
    auto* api = Api(scene);
    ASSERT_TRUE(api->IsDesignLoaded());
    auto observer = du::MakeCounted<ReadingObserver>(api);
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    int const colourEventsBefore = observer->colourEvents.load();
    int const highlightEventsBefore = observer->highlightEvents.load();

    auto item = [&](char const* name) -> du::SmartPtr<qzk::SelectionItem> {
        return du::MakeCounted<qzk::ecad::SelectionItem>(api->GetDesignData(),
                                                         api->GetDesignData()->FindObject(name),
                                                         nullptr, nullptr, dg::DPoint3D(), 0, 0);
    };
    auto operation = [&] {
        return du::MakeCounted<qzk::Operation>("race", du::SmartPtr<qzk::Scene>(scene), false);
    };

    ASSERT_TRUE(Messages::StartDispatcher());
    int const rounds = StressRounds(300);
    unsigned int colour = 0;
    for (int round = 0; round < rounds; ++round) {
        qzk::ecad::SublayerPCB_CVSet set;
        api->GetColorVisInfo(set);
        auto entry = *set.begin();
        colour = 0x01000000u | static_cast<unsigned int>(round + 1);
        entry.color = colour;
        set.erase(set.begin());
        set.insert(entry);
        auto const change = operation();
        api->SetColorVisInfo(set, change, qzkapp::ecad::ChangeSourceScene);
        qzk::RecordOperation(change);
        api->Highlight({item(round % 2 == 0 ? "U1" : "R1")}, operation());
        // The highlight goes again; the colour stays.
        ASSERT_TRUE(qzref::UndoControl::Undo());
    }
    ASSERT_TRUE(Messages::StopDispatcher());
    Messages::PumpUntilIdle();

    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    EXPECT_EQ(observer->colourEvents.load() - colourEventsBefore, rounds);
    // Every highlight and every undo of one is told.
    EXPECT_EQ(observer->highlightEvents.load() - highlightEventsBefore, 2 * rounds);
    EXPECT_EQ(observer->lastColour.load(), colour);
    EXPECT_TRUE(api->UnregisterObserver(*observer));
}

} // namespace
} // namespace qztest
