// Looks messages up in a message catalogue, a data file of the kernel.
//
// A catalogue name has the form "<package>:<name>"; its file is <package>/<name>.json in the
// kernel's data directory, a JSON object from key to UTF-8 text in which %1..%9 stand for
// arguments. The data directory is the first of these that holds the file: $QZK_DATA_DIR (a
// control for hosts and tests), <library dir>/../share/qzkernel, the install directory, and the
// build tree's kernel/data. A catalogue is read once per process and kept; a catalogue that
// cannot be found or read is an empty one, so every look-up in it fails.
#pragma once

#include "du/AssembleArgs.h"

#include <memory>
#include <string>

namespace du {

class Localizer {
public:
    enum ActionOnFailure {
        // The key itself is returned, so a missing text is visible but never blank.
        eReturnKey = 0,
        eReturnEmpty = 1,
        // std::runtime_error naming the catalogue and the key.
        eThrow = 2,
    };

    explicit Localizer(char const* catalogue);
    ~Localizer();
    Localizer(Localizer const&);
    Localizer& operator=(Localizer const&);

    std::string LocalizeMessage(char const* key, ActionOnFailure onFailure) const;
    std::string LocalizeMessage(char const* key, AssembleArgs const& args,
                                ActionOnFailure onFailure) const;

    bool HasMessage(char const* key) const;
    // Where the catalogue was read from; empty when it was not found.
    std::string GetCataloguePath() const;

    // Forgets every catalogue read so far (for tests that change $QZK_DATA_DIR).
    static void ResetCache();

    // The texts of one catalogue, shared by every Localizer of that name.
    struct Catalogue;

private:
    std::string name_;
    std::shared_ptr<Catalogue const> catalogue_;
};

} // namespace du
