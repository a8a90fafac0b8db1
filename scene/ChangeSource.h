// What caused a colour or visibility change. It travels unchanged from the mutator into the
// event; the scene never branches on it, and a host may pass values of its own.
#pragma once

namespace qzkapp::ecad {

enum ChangeSource {
    ChangeSourceScene = 1,
    ChangeSourceOverlapColor = 2,
    ChangeSourceUndo = 3,
    ChangeSourceOverlayLoad = 4,
};

} // namespace qzkapp::ecad
