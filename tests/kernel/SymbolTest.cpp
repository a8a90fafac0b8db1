// Interned texts: equal texts are one symbol while any of them lives, and a text nobody holds
// leaves the table, also when many threads make and drop the same texts at once.
#include "du/Symbol.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace {

TEST(Symbol, TextsLeaveTheTableWithTheirLastSymbolAndEqualTextsStayOne) {
    std::size_t const before = du::Symbol::TableSize();
    {
        std::vector<du::Symbol> names;
        for (int i = 0; i < 1000; ++i) {
            names.emplace_back("symbol-test-name-" + std::to_string(i));
        }
        EXPECT_EQ(du::Symbol::TableSize(), before + 1000);

        du::Symbol copy = names[7];
        names.clear();
        EXPECT_EQ(du::Symbol::TableSize(), before + 1);
        EXPECT_EQ(copy, du::Symbol("symbol-test-name-7"));
        EXPECT_EQ(copy.str(), "symbol-test-name-7");

        {
            std::unordered_map<du::Symbol, int> byName{{copy, 1}};
            EXPECT_EQ(byName.count(du::Symbol(std::string("symbol-test-name-7"))), 1u);
        }

        copy = "symbol-test-other";
        copy = copy;
        EXPECT_EQ(copy.str(), "symbol-test-other");
        EXPECT_EQ(du::Symbol::TableSize(), before + 1);
    }
    EXPECT_EQ(du::Symbol::TableSize(), before);

    // A text made again after it has gone is whole and equal to itself.
    du::Symbol again("symbol-test-name-7");
    EXPECT_EQ(again.str(), "symbol-test-name-7");
    EXPECT_EQ(again, du::Symbol("symbol-test-name-7"));
    EXPECT_FALSE(again == du::Symbol::EMPTY);
    EXPECT_TRUE(du::Symbol().empty());
}

TEST(Symbol, ThreadsMakingAndDroppingTheSameTextsLeaveNothingBehind) {
    std::size_t const before = du::Symbol::TableSize();
    du::Symbol const kept("symbol-race-3");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < 20000; ++i) {
                du::Symbol a("symbol-race-" + std::to_string((i + t) % 5));
                du::Symbol b = a;
                b = du::Symbol("symbol-race-" + std::to_string(i % 5));
                if (b.str().rfind("symbol-race-", 0) != 0 || a.str().size() != 13) {
                    ADD_FAILURE() << "a symbol lost its text";
                    return;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // Only the text still held is left.
    EXPECT_EQ(du::Symbol::TableSize(), before + 1);
    EXPECT_EQ(kept, du::Symbol("symbol-race-3"));
}

} // namespace
