// The undo property over a scene of any kind: a random sequence of what a viewer's user does,
// with undo and redo between the changes; undoing everything must bring the state after the
// load back exactly, redoing everything the final state, and every event heard must decode. A
// failing sequence is shrunk and printed, to be kept as a regression.
//
// A subject is one loaded scene of a kind. It names its changes (Names), runs one (Run), empties
// the selection (ClearSelection: selection is not undoable, so both ends of a comparison are
// taken without it), and writes everything the property compares, a fact a line (Snapshot).
#pragma once

#include "qzref/Messages.h"
#include "qzref/UndoControl.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace qztest::property {

// A subject's change, or an undo or a redo; a and b are the random numbers it draws its
// arguments from, so that a sequence replays the same on a fresh scene.
struct Op {
    static constexpr int kUndo = -1;
    static constexpr int kRedo = -2;
    int kind;
    unsigned int a;
    unsigned int b;
};

inline std::size_t FromEnvironment(char const* name, std::size_t fallback) {
    char const* text = std::getenv(name);
    return text != nullptr && *text != 0 ? std::strtoull(text, nullptr, 10) : fallback;
}

// The first line where two snapshots differ, with both sides; "" when none does.
inline std::string FirstDifference(std::string const& want, std::string const& got) {
    std::istringstream a(want);
    std::istringstream b(got);
    std::string x;
    std::string y;
    for (int line = 1;; ++line) {
        bool const moreA = static_cast<bool>(std::getline(a, x));
        bool const moreB = static_cast<bool>(std::getline(b, y));
        if (!moreA && !moreB) {
            return {};
        }
        if (x != y || moreA != moreB) {
            return "line " + std::to_string(line) + ": wanted '" + (moreA ? x : "<end>") +
                   "', got '" + (moreB ? y : "<end>") + "'";
        }
    }
}

// make: opens a fresh subject (a std::unique_ptr to it).
template <class Subject> class Property {
public:
    using Make = std::function<std::unique_ptr<Subject>()>;

    explicit Property(Make make) : make_(std::move(make)) {}

    // Undo and redo come about as often as three changes each, so that the lists grow, shrink
    // and are cut by new changes.
    static std::vector<Op> Generate(unsigned int seed, std::size_t count) {
        std::mt19937 random(seed);
        auto const kinds = static_cast<unsigned int>(Subject::Names().size());
        std::vector<Op> ops;
        ops.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            unsigned int const pick = random() % (kinds + 6);
            int const kind =
                pick >= kinds ? (pick % 2 == 0 ? Op::kUndo : Op::kRedo) : static_cast<int>(pick);
            ops.push_back(
                {kind, static_cast<unsigned int>(random()), static_cast<unsigned int>(random())});
        }
        return ops;
    }

    static std::string Describe(std::vector<Op> const& ops) {
        std::ostringstream out;
        for (Op const& op : ops) {
            char const* name = op.kind == Op::kUndo   ? "undo"
                               : op.kind == Op::kRedo ? "redo"
                                                      : Subject::Names()[op.kind];
            out << "  {" << name << ", " << op.a << ", " << op.b << "}\n";
        }
        return out.str();
    }

    // Runs ops on a fresh subject and checks the property; the reason it fails, or "".
    std::string Check(std::vector<Op> const& ops) {
        using qzref::Messages;
        using qzref::UndoControl;
        std::unique_ptr<Subject> subject = make_();
        if (!subject || !subject->Loaded()) {
            return "the scene did not load";
        }
        Messages::TakeHandlerErrors();
        std::string const baseline = subject->Snapshot();
        std::size_t const base = UndoControl::GetUndoCount();
        for (Op const& op : ops) {
            if (op.kind == Op::kUndo) {
                UndoControl::Undo();
            } else if (op.kind == Op::kRedo) {
                UndoControl::Redo();
            } else {
                subject->Run(op);
            }
            Messages::PumpUntilIdle();
        }
        // The load's own operation stays; everything done since goes.
        while (UndoControl::GetUndoCount() < base) {
            if (!UndoControl::Redo()) {
                return "the load's operation was undone and cannot be redone";
            }
        }
        subject->ClearSelection();
        std::string const final = subject->Snapshot();
        changed_ = final != baseline;
        std::size_t const done = UndoControl::GetUndoCount() - base;
        for (std::size_t i = 0; i < done; ++i) {
            UndoControl::Undo();
            Messages::PumpUntilIdle();
        }
        if (auto const why = FirstDifference(baseline, subject->Snapshot()); !why.empty()) {
            return "after undoing everything, " + why;
        }
        for (std::size_t i = 0; i < done; ++i) {
            UndoControl::Redo();
            Messages::PumpUntilIdle();
        }
        if (auto const why = FirstDifference(final, subject->Snapshot()); !why.empty()) {
            return "after redoing everything, " + why;
        }
        if (auto const errors = Messages::TakeHandlerErrors(); !errors.empty()) {
            return "an event did not decode: " + errors.front();
        }
        return {};
    }

    // Delta debugging: drops ever smaller chunks while the sequence still fails.
    std::vector<Op> Shrink(std::vector<Op> ops) {
        for (std::size_t chunk = ops.size() / 2; chunk >= 1; chunk /= 2) {
            for (std::size_t at = 0; at + chunk <= ops.size();) {
                std::vector<Op> fewer(ops.begin(), ops.begin() + static_cast<long>(at));
                fewer.insert(fewer.end(), ops.begin() + static_cast<long>(at + chunk), ops.end());
                if (!Check(fewer).empty()) {
                    ops = std::move(fewer);
                } else {
                    at += chunk;
                }
            }
        }
        return ops;
    }

    void Expect(unsigned int seed, std::size_t count) {
        std::vector<Op> const ops = Generate(seed, count);
        std::string const why = Check(ops);
        if (why.empty()) {
            return;
        }
        std::vector<Op> const shrunk = Shrink(ops);
        ADD_FAILURE() << "seed " << seed << ", " << count << " operations: " << why
                      << "\nshrunk to " << shrunk.size() << " (" << Check(shrunk) << "):\n"
                      << Describe(shrunk);
    }

    // Whether the last sequence checked left the scene other than it was loaded: a property
    // over a sequence that changed nothing would prove nothing.
    bool Changed() const { return changed_; }

private:
    Make make_;
    bool changed_ = false;
};

} // namespace qztest::property
