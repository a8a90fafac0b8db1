// The selection manager: its notices, their order and payload, and the end of the manager.
#include "qzk/SelectionManager.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionObserver.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using qzref::Messages;
using Items = std::vector<du::SmartPtr<qzk::SelectionItem>>;

class NamedItem : public qzk::SelectionItem {
public:
    explicit NamedItem(std::string name) : name_(std::move(name)) {}
    du::SmartPtr<qzk::SelectionItem> Clone() const override {
        return du::SmartPtr<qzk::SelectionItem>(new NamedItem(name_));
    }
    du::Symbol GetContentType() const override { return du::Symbol("test"); }
    using qzk::SelectionItem::GetName;
    std::string GetName() const override { return name_; }

private:
    std::string name_;
};

std::string Names(Items const& items) {
    std::string out;
    for (auto const& item : items) {
        out += item ? item->GetName() : std::string("?");
    }
    return out;
}

// Writes each notice as "<channel> <cleared> -<removed> +<added>".
class Recorder : public qzk::SelectionObserver {
public:
    ~Recorder() override { DetachFromMessageLoop(); }
    void OnSelectionChanged(unsigned int channel, bool cleared, Items const& removed,
                            Items const& added) override {
        notices.push_back(std::to_string(channel) + (cleared ? " cleared" : " kept") + " -" +
                          Names(removed) + " +" + Names(added));
    }
    void OnSelectionManagerDestroyed() override { ++destroyed; }
    std::vector<std::string> notices;
    int destroyed = 0;
};

class SelectionManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        Messages::DiscardPending();
        manager_->RegisterObserver(recorder_);
    }
    void TearDown() override { Messages::DiscardPending(); }

    static du::SmartPtr<qzk::SelectionItem> Item(char const* name) {
        return du::SmartPtr<qzk::SelectionItem>(new NamedItem(name));
    }

    du::SmartPtr<qzk::SelectionManager> manager_{new qzk::SelectionManager()};
    Recorder recorder_;
    du::SmartPtr<qzk::SelectionItem> a_ = Item("a");
    du::SmartPtr<qzk::SelectionItem> b_ = Item("b");
    du::SmartPtr<qzk::SelectionItem> c_ = Item("c");
};

TEST_F(SelectionManagerTest, NoticesCarryTheRemovedItemsThirdAndTheAddedFourth) {
    EXPECT_EQ(manager_->ApplyItems(0, {a_, b_}, qzk::SelectionManager::add), 2u);
    EXPECT_EQ(manager_->ApplyItems(0, {b_, c_}, qzk::SelectionManager::toggle), 2u);
    EXPECT_EQ(manager_->ApplyItems(0, {a_, b_}, qzk::SelectionManager::remove), 1u);
    // Adding what is there already changes nothing and tells no one.
    EXPECT_EQ(manager_->ApplyItems(0, {c_}, qzk::SelectionManager::add), 0u);
    EXPECT_TRUE(recorder_.notices.empty());

    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder_.notices,
              (std::vector<std::string>{"0 kept - +ab", "0 kept -b +c", "0 kept -a +"}));
    EXPECT_EQ(Names(manager_->GetItems(0)), "c");
}

TEST_F(SelectionManagerTest, ReplaceAndClearAreToldAsCleared) {
    manager_->ApplyItems(1, {a_, b_}, qzk::SelectionManager::add);
    EXPECT_EQ(manager_->ApplyItems(1, {c_, c_}, qzk::SelectionManager::replace), 3u);
    EXPECT_EQ(manager_->ApplyItems(1, {}, qzk::SelectionManager::clear), 1u);
    EXPECT_EQ(manager_->ApplyItems(1, {}, qzk::SelectionManager::clear), 0u);
    // Only channels 0, 1 and 4 hold items.
    EXPECT_EQ(manager_->ApplyItems(3, {a_}, qzk::SelectionManager::add), 0u);
    EXPECT_EQ(manager_->ApplyItems(4, {a_}, qzk::SelectionManager::add), 1u);

    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder_.notices, (std::vector<std::string>{"1 kept - +ab", "1 cleared - +c",
                                                           "1 cleared - +", "4 kept - +a"}));
    EXPECT_TRUE(manager_->GetItems(3).empty());
}

TEST_F(SelectionManagerTest, ApplyItemsIsJournalledWithItsItems) {
    std::size_t const mark = qzref::Journal::Size();
    manager_->ApplyItems(0, {a_, b_}, qzk::SelectionManager::replace);
    EXPECT_EQ(qzref::Journal::Since(mark),
              (std::vector<std::string>{manager_->GetObjectName().str() +
                                        ".ApplyItems(0, [\"test a\" \"test b\"], replace)"}));
}

TEST_F(SelectionManagerTest, UnregisteredObserverHearsNothingAndTheEndIsToldOnce) {
    Recorder other;
    manager_->RegisterObserver(other);
    EXPECT_FALSE(manager_->RegisterObserver(other));
    EXPECT_TRUE(manager_->UnregisterObserver(other));
    EXPECT_FALSE(manager_->UnregisterObserver(other));
    manager_->ApplyItems(0, {a_}, qzk::SelectionManager::add);
    manager_->NotifyDestroyed();
    manager_ = nullptr;
    Messages::PumpUntilIdle();

    EXPECT_TRUE(other.notices.empty());
    EXPECT_EQ(other.destroyed, 0);
    EXPECT_EQ(recorder_.notices.size(), 1u);
    EXPECT_EQ(recorder_.destroyed, 1);
}

} // namespace
