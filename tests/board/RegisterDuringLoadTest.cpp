// An observer that registers while the load completes on other threads (the loader reads on its
// own thread, the dispatcher delivers the completion) hears the load's end exactly once: either
// from the event or from the replay at registration, never both and never neither.
#include "design/SceneHarness.h"

#include <chrono>
#include <thread>

namespace qztest {
namespace {

class RegisterDuringLoadTest : public SceneTest {
protected:
    void TearDown() override {
        qzref::Messages::StopDispatcher();
        SceneTest::TearDown();
    }
};

TEST_F(RegisterDuringLoadTest, ObserverHearsTheNoticeOnceWhicheverSideWins) {
    ASSERT_TRUE(qzref::Messages::StartDispatcher());
    for (int round = 0; round < 20; ++round) {
        auto scene =
            MakeBoard(Example(round % 2 == 0 ? "four-layer-board.json" : "six-layer-board.json"));
        ASSERT_TRUE(scene);
        du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
        if (round % 3 == 1) {
            std::this_thread::sleep_for(std::chrono::microseconds(200 * round));
        }
        ASSERT_TRUE(Api(scene)->RegisterObserver(*observer));
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();

        std::vector<std::string> const calls = observer->Calls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "DesignLoaded 0 \"\""), 1)
            << "round " << round;
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "DrawOrder"), 1) << "round " << round;
        EXPECT_EQ(calls.front(), "DesignLoaded 0 \"\"") << "round " << round;
        End(scene);
        qzref::Messages::PumpUntilIdle();
    }
    EXPECT_TRUE(qzref::Messages::TakeHandlerErrors().empty());
}

} // namespace
} // namespace qztest
