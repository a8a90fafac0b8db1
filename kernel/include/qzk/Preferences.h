// The user's preferences, read by key. Colours are stored as colour words (dg::Color's layout);
// flags as bool. A key holds one kind: reading a colour key as a flag, or a flag key as a colour,
// is like reading an unknown key.
//
// Reads never touch the caller's value for an unknown key. The optional bool * of each read, when
// given, is set to true when the key is unknown and the caller's value stands, false when the
// stored value was read. Changes are made through qzref::PreferencesControl, which also tells
// the world's observers.
#pragma once

#include "du/Symbol.h"
#include "qzk/Object.h"

#include <map>
#include <mutex>
#include <variant>

namespace dg {
class Color;
}

namespace qzref {
class PreferencesControl;
}

namespace qzk {

class Preferences : public Object {
public:
    Preferences();
    ~Preferences() override;

    ClassType const& GetClassType() const override;

    bool GetIntUIAsColor(du::Symbol const& key, dg::Color& color, bool* usedDefault);
    bool GetBool(du::Symbol const& key, bool& value, bool* usedDefault);

protected:
    void _OnDestroy() override;

private:
    friend class qzref::PreferencesControl;
    using Value = std::variant<unsigned int, bool>;
    void Set(du::Symbol const& key, Value value);
    bool Remove(du::Symbol const& key);
    void Clear();

    mutable std::mutex mutex_;
    std::map<du::Symbol, Value> values_;
};

} // namespace qzk
