// What every scripted session shares, whatever its scene: reading the script line by line,
// reporting a line that cannot be run as "<file>:<line>:<column>: <why>", and the commands that
// do not depend on the kind of scene (undo, redo, print, expect, render).
//
// A kind of scene gets its commands by deriving from it: one table of commands, one member
// function each, looked up in RunSceneCommand, and the queries its print and expect lines read.
// Session drives a board scene, SchematicSession a schematic scene.
//
// A new kind of session is a new source (e.g. host/SessionOverlays.cpp) deriving from it, plus
// one line in host/SessionFamilies.cpp naming the scene it drives and its table's command names,
// so that its commands used on another kind of scene say "not available on a <kind> scene"
// instead of being taken for typos.
#pragma once

#include "ScriptLine.h"

#include <cstdio>
#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class SublayerPCB_CVSet;
}

namespace qzhost {

// A colour word as a session prints it: 0x and eight hexadecimal digits.
std::string Hex(unsigned int word);

// text as an integer in [least, most] (decimal, or hexadecimal with 0x); false otherwise.
bool ToInt(std::string const& text, long long least, long long most, long long& out);

// The kind of scene ("board", "schematic", ...) whose session has command; empty when none has.
std::string SceneNeededBy(std::string const& command);
// The kind of scene whose sessions answer the query, when a session of scene does not; empty
// when scene answers it itself or no kind does.
std::string SceneNeededByQuery(std::string const& query, std::string const& scene);

class ScriptRunner {
public:
    virtual ~ScriptRunner();

    // Runs every line of in; stops at the first line that cannot be run or whose expectation
    // fails, and sets error to "<file>:<line>:<column>: <why>".
    bool Run(std::istream& in, std::string const& file, std::string& error);

    // Runs one line; on failure sets why and the column it refers to.
    bool RunLine(ScriptLine const& line, std::string& why, int& column);

    // Called after every line that ran, e.g. to print what the kernel was asked meanwhile.
    void SetAfterLine(std::function<void()> afterLine) { afterLine_ = std::move(afterLine); }

    // Draws the scene as it stands to a PNG or SVG file; false with why.
    virtual bool RenderTo(std::string const& path, std::string& why) const;

    // One script line as a command sees it; shared command helpers (SheetCommands.h,
    // ImageDiffCommands.h) take it too.
    struct Call {
        std::vector<ScriptWord> const& words; // words[0] is the command
        std::string& why;
        int& column;
        bool Fail(std::size_t word, std::string text) const;
        bool Count(std::size_t least, std::size_t most, char const* usage) const;
    };

    // A kind of scene's table of commands.
    template <class SessionT> struct Entry {
        char const* name;
        bool (SessionT::*command)(Call const&);
    };
    template <class SessionT, std::size_t N>
    static std::vector<std::string> NamesOf(Entry<SessionT> const (&table)[N]) {
        std::vector<std::string> names;
        names.reserve(N);
        for (auto const& entry : table) {
            names.emplace_back(entry.name);
        }
        return names;
    }

protected:
    template <class SessionT, std::size_t N>
    bool Dispatch(SessionT& session, Entry<SessionT> const (&table)[N], Call const& call,
                  bool& found) {
        for (auto const& entry : table) {
            if (call.words[0].text == entry.name) {
                found = true;
                return (session.*entry.command)(call);
            }
        }
        return false;
    }

    explicit ScriptRunner(std::FILE* out) : out_(out) {}

    // Runs the line when its command is one of the scene's own; found tells whether it was.
    virtual bool RunSceneCommand(Call const& call, bool& found) = 0;
    // The value of a query (its words after the query's name); nothing when the query is unknown
    // or its arguments are wrong, with why in error.
    // The message for a query that another kind of scene answers; nullopt otherwise.
    std::optional<std::string> QueryElsewhere(std::vector<std::string> const& query) const;
    virtual std::optional<std::string> Query(std::vector<std::string> const& words,
                                             std::string& error) const = 0;
    // The scene's table of sublayers, one row each.
    virtual std::string Rows() const = 0;
    // The kind of scene the session drives, as SceneNeededBy names it.
    virtual char const* SceneName() const = 0;

    // A board's "LAYER SUBLAYER color WORD" or "LAYER SUBLAYER visible yes|no" (the call's words
    // after the command) applied to set; false with why when the words are wrong or name no
    // sublayer of set.
    static bool EditBoardSublayer(Call const& call, qzk::ecad::SublayerPCB_CVSet& set);

    std::FILE* out_;

private:
    bool Undo(Call const& call);
    bool Redo(Call const& call);
    bool Print(Call const& call);
    bool Expect(Call const& call);
    bool Render(Call const& call);

    std::function<void()> afterLine_;
};

} // namespace qzhost
