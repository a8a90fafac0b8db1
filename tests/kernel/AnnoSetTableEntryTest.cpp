// qzk::AnnoSetTableEntry and qzk::AnnoSetTable: load requirement tickets and the completion of an
// entry that a waiting compare scene depends on.
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/AnnoSetTable.h"
#include "qzk/AsyncEvent.h"
#include "qzk/Kernel.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <vector>

namespace {

using qzref::Messages;

class CountingEvent : public qzk::AsyncEvent {
public:
    CountingEvent() : qzk::AsyncEvent(false) {}
    ~CountingEvent() override { DetachFromMessageLoop(); }
    int completions = 0;

protected:
    void OnCompleted(int) override { ++completions; }
};

class AnnoSetTableEntryTest : public ::testing::Test {
protected:
    void TearDown() override { Messages::PumpUntilIdle(); }

    du::SmartPtr<CountingEvent> NewEvent() {
        du::SmartPtr<CountingEvent> event(new CountingEvent());
        qzk::Kernel::GetKernel()->ManageObject(du::SmartPtr<dom::ManagedObject>(event.Get()));
        return event;
    }

    qzref::ScopedPlatform platform;
    du::SmartPtr<qzk::AnnoSetTableEntry> entry = qzk::AnnoSetTableEntry::Create("saved");
};

TEST_F(AnnoSetTableEntryTest, TicketsAreDistinctAndComeBackOnce) {
    auto first = NewEvent();
    auto second = NewEvent();
    unsigned int const t1 = entry->AddLoadRequirement(first.Get());
    unsigned int const t2 = entry->AddLoadRequirement(second.Get());
    EXPECT_NE(t1, 0u);
    EXPECT_NE(t1, t2);
    EXPECT_EQ(entry->AddLoadRequirement(nullptr), 0u);
    EXPECT_EQ(qzref::Inspect(*entry).GetOpenRequirements(), (std::vector<unsigned int>{t1, t2}));

    EXPECT_TRUE(entry->CompleteLoadRequirement(t2));
    EXPECT_FALSE(entry->CompleteLoadRequirement(t2));
    EXPECT_FALSE(entry->CompleteLoadRequirement(0));
    EXPECT_FALSE(entry->CompleteLoadRequirement(t2 + 100));
    EXPECT_EQ(qzref::Inspect(*entry).GetOpenRequirements(), (std::vector<unsigned int>{t1}));
    EXPECT_EQ(qzref::Inspect(*entry).GetCompletedRequirements(), (std::vector<unsigned int>{t2}));
    EXPECT_FALSE(first->IsComplete()) << "giving a ticket back does not complete other events";
}

TEST_F(AnnoSetTableEntryTest, CompletingTheEntryCompletesOpenEventsOnceAndKeepsTicketsOpen) {
    auto waiting = NewEvent();
    auto returned = NewEvent();
    unsigned int const open = entry->AddLoadRequirement(waiting.Get());
    unsigned int const done = entry->AddLoadRequirement(returned.Get());
    entry->CompleteLoadRequirement(done);
    EXPECT_FALSE(entry->complete);

    qzref::Inspect(*entry).Complete();
    qzref::Inspect(*entry).Complete();
    Messages::PumpUntilIdle();
    EXPECT_TRUE(entry->IsComplete());
    EXPECT_EQ(waiting->completions, 1);
    EXPECT_EQ(returned->completions, 0) << "a requirement given back is no longer waited for";
    EXPECT_EQ(qzref::Inspect(*entry).GetOpenRequirements(), (std::vector<unsigned int>{open}));
}

TEST_F(AnnoSetTableEntryTest, ARequirementOnACompleteEntryIsMetAtOnce) {
    qzref::Inspect(*entry).Complete();
    auto late = NewEvent();
    unsigned int const ticket = entry->AddLoadRequirement(late.Get());
    EXPECT_TRUE(late->IsComplete());
    Messages::PumpUntilIdle();
    EXPECT_EQ(late->completions, 1);
    EXPECT_TRUE(entry->CompleteLoadRequirement(ticket));
}

TEST_F(AnnoSetTableEntryTest, LoadRequirementCallsAreJournalled) {
    entry->SetObjectName(du::Symbol("entry"));
    auto event = NewEvent();
    std::size_t const mark = qzref::Journal::Size();
    unsigned int const ticket = entry->AddLoadRequirement(event.Get());
    entry->CompleteLoadRequirement(ticket);
    EXPECT_EQ(qzref::Journal::Since(mark),
              (std::vector<std::string>{"entry.AddLoadRequirement(event)",
                                        "entry.CompleteLoadRequirement(" + std::to_string(ticket) +
                                            ")"}));
}

TEST(AnnoSetTable, EntriesKeepTheirOrderAndAreFoundByName) {
    auto table = qzk::AnnoSetTable::Create();
    auto a = qzref::Inspect(*table).AddEntry("a");
    auto b = qzref::Inspect(*table).AddEntry("b");
    EXPECT_EQ(table->GetEntry(1).Get(), b.Get());
    EXPECT_EQ(table->GetEntry(2), nullptr);
    EXPECT_EQ(table->FindEntry("a").Get(), a.Get());
    EXPECT_EQ(table->FindEntry("c"), nullptr);
    EXPECT_TRUE(qzref::Inspect(*table).RemoveEntry(a));
    EXPECT_EQ(table->GetEntry(0).Get(), b.Get());
    EXPECT_NE(b->GetAnnoSet(), nullptr);
    EXPECT_NE(a->GetAnnoSet().Get(), b->GetAnnoSet().Get());
}

} // namespace
