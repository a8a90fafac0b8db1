// The kernel scene's appearance bracket as a scope: opened by the constructor, closed when the
// scope ends, whichever way it ends. A refused bracket is not closed, except for the one caller
// that goes on regardless and closes what it asked for.
#pragma once

#include "qzk/ecad/BaseScene.h"

namespace qzkapp::ecad {

class AppearanceUpdate {
public:
    enum class Refused { Skip, CloseAnyway };

    explicit AppearanceUpdate(qzk::ecad::BaseScene& scene, Refused refused = Refused::Skip)
        : scene_(scene), open_(scene.BeginAppearanceUpdate()),
          close_(open_ || refused == Refused::CloseAnyway) {}
    ~AppearanceUpdate() {
        if (close_) {
            scene_.EndAppearanceUpdate();
        }
    }
    AppearanceUpdate(AppearanceUpdate const&) = delete;
    AppearanceUpdate& operator=(AppearanceUpdate const&) = delete;

    // Whether the kernel opened the bracket.
    explicit operator bool() const { return open_; }

private:
    qzk::ecad::BaseScene& scene_;
    bool open_;
    bool close_;
};

} // namespace qzkapp::ecad
