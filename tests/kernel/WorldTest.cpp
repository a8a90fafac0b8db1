// The world, its preferences and its notices; starting and stopping the platform.
#include "qzk/World.h"
#include "dg/Color.h"
#include "qzk/Kernel.h"
#include "qzk/Preferences.h"
#include "qzk/WorldObserver.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/PreferencesControl.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using qzref::Messages;
using qzref::PreferencesControl;

class Recorder : public qzk::WorldObserver {
public:
    ~Recorder() override { DetachFromMessageLoop(); }
    void OnPreferencesChanged() override { notices.push_back("preferences"); }
    void OnWorldDestroyed() override { notices.push_back("destroyed"); }
    std::vector<std::string> notices;
};

TEST(Preferences, UnknownOrOtherKindKeysLeaveTheCallersValue) {
    qzref::ScopedPlatform platform;
    du::SmartPtr<qzk::Preferences> preferences = qzk::World::GetWorld()->GetPreferences();
    du::Symbol const colorKey("General/Navigation/highlight_color");
    du::Symbol const flagKey("General/Navigation/enable_preselection_highlighting");
    dg::Color color(0.5f, 0.25f, 0.0f, 1.0f);
    bool flag = true;
    bool usedDefault = false;

    EXPECT_FALSE(preferences->GetIntUIAsColor(colorKey, color, &usedDefault));
    EXPECT_TRUE(usedDefault);
    EXPECT_EQ(color, dg::Color(0.5f, 0.25f, 0.0f, 1.0f));

    PreferencesControl::SetColorWord(colorKey, 0x010000FFu);
    PreferencesControl::SetBool(flagKey, false);
    EXPECT_TRUE(preferences->GetIntUIAsColor(colorKey, color, &usedDefault));
    EXPECT_FALSE(usedDefault);
    EXPECT_EQ(color.GetAsHexUI(), 0x010000FFu);
    EXPECT_FALSE(preferences->GetBool(colorKey, flag, nullptr));
    EXPECT_TRUE(flag);
    std::size_t const mark = qzref::Journal::Size();
    EXPECT_TRUE(preferences->GetBool(flagKey, flag, nullptr));
    EXPECT_FALSE(flag);
    EXPECT_EQ(qzref::Journal::Since(mark),
              (std::vector<std::string>{
                  "Preferences.GetBool(\"General/Navigation/enable_preselection_highlighting\")"}));

    EXPECT_TRUE(PreferencesControl::Remove(colorKey));
    EXPECT_FALSE(PreferencesControl::Remove(colorKey));
    EXPECT_FALSE(preferences->GetIntUIAsColor(colorKey, color, nullptr));
    EXPECT_EQ(color.GetAsHexUI(), 0x010000FFu);
}

TEST(World, ChangesAndTheWorldsEndArriveAsMessages) {
    Messages::DiscardPending();
    du::SmartPtr<Recorder> kept(new Recorder());
    du::SmartPtr<Recorder> plain(new Recorder());
    qzref::Platform::Start();
    du::SmartPtr<qzk::World> world = qzk::World::GetWorld();
    EXPECT_TRUE(world->RegisterObserver(kept, true));
    EXPECT_FALSE(world->RegisterObserver(kept, true));
    EXPECT_TRUE(world->RegisterObserver(plain, false));
    EXPECT_EQ(kept->GetReferenceCount(), 2);
    EXPECT_EQ(plain->GetReferenceCount(), 1);

    PreferencesControl::NotifyChanged();
    EXPECT_TRUE(kept->notices.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(kept->notices, (std::vector<std::string>{"preferences"}));

    EXPECT_TRUE(world->DeregisterObserver(plain));
    EXPECT_FALSE(world->DeregisterObserver(plain));
    world = nullptr;
    qzref::Platform::Stop();
    EXPECT_EQ(kept->notices, (std::vector<std::string>{"preferences", "destroyed"}));
    EXPECT_EQ(plain->notices, (std::vector<std::string>{"preferences"}));
    EXPECT_FALSE(qzk::World::GetWorld());
    EXPECT_FALSE(qzk::Kernel::GetKernel());
    // The world held the kept observer until its end.
    EXPECT_EQ(kept->GetReferenceCount(), 1);
}

TEST(Platform, StartsOnceAndStopsOnce) {
    EXPECT_TRUE(qzref::Platform::Start());
    EXPECT_FALSE(qzref::Platform::Start());
    EXPECT_TRUE(qzk::Kernel::GetKernel());
    EXPECT_TRUE(qzref::Platform::Stop());
    EXPECT_FALSE(qzref::Platform::Stop());
}

} // namespace
