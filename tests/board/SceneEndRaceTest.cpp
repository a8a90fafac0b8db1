// A board scene that ends on the host thread while its load completes on the dispatcher thread,
// and the unlocked IsDesignLoaded asked while the completion writes. Run under the sanitizers
// (docs/stress.md); QZ_STRESS_ROUNDS sets the number of rounds.
#include "design/SceneHarness.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

namespace qztest {
namespace {

using qzref::LoaderControl;
using qzref::Messages;

int StressRounds(int fallback) {
    char const* text = std::getenv("QZ_STRESS_ROUNDS");
    int const rounds = text != nullptr ? std::atoi(text) : 0;
    return rounds > 0 ? rounds : fallback;
}

class SceneEndRaceTest : public SceneTest {
protected:
    void TearDown() override {
        Messages::StopDispatcher();
        SceneTest::TearDown();
    }
};

TEST_F(SceneEndRaceTest, LateCompletionsMeetScenesEndingAtRandomMoments) {
    std::uint64_t const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    ASSERT_TRUE(Messages::StartDispatcher());
    LoaderControl::SetHolding(true);
    std::mt19937 random(8);
    std::uniform_int_distribution<int> pause(0, 150);
    int const rounds = StressRounds(300);
    int loadedSeen = 0;
    for (int round = 0; round < rounds; ++round) {
        auto scene = MakeBoard(Example("four-layer-board.json"));
        ASSERT_TRUE(scene);
        ASSERT_EQ(LoaderControl::GetHeldCount(), 1U) << "round " << round;
        // Both ends of a load: a success and a failure.
        int const status = round % 2;
        if (round % 4 < 2) {
            // The host lets go of the scene while the dispatcher delivers its completion.
            ASSERT_TRUE(LoaderControl::CompleteHeld(status, 0, 4, du::Symbol("broken")));
            std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
            End(scene);
        } else {
            // Someone asks whether the design is there while the completion writes it.
            du::SmartPtr<qzkapp::ecad::PCBScene> api(Api(scene));
            std::atomic<bool> stop{false};
            std::thread asker([&] {
                while (!stop.load()) {
                    loadedSeen += api->IsDesignLoaded() ? 1 : 0;
                    (void)api->GetIcmApiEcad();
                }
            });
            ASSERT_TRUE(LoaderControl::CompleteHeld(status, 0, 4, du::Symbol("broken")));
            std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
            End(scene);
            stop.store(true);
            asker.join();
            // A hand-made completion reads nothing, so no design ever arrives.
            EXPECT_FALSE(api->IsDesignLoaded()) << "round " << round;
            EXPECT_EQ(api->GetKernelScene(), nullptr) << "round " << round;
        }
    }
    Messages::StopDispatcher();
    Messages::PumpUntilIdle();
    EXPECT_EQ(loadedSeen, 0);
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    EXPECT_EQ(LoaderControl::GetHeldCount(), 0U);
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

} // namespace
} // namespace qztest
