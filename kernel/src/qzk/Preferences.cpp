#include "qzk/Preferences.h"

#include "dg/Color.h"
#include "qzref/Journal.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::Preferences, {classid::Object});
}

Preferences::Preferences() = default;

Preferences::~Preferences() = default;

ClassType const& Preferences::GetClassType() const {
    static ClassType const type(classid::Preferences);
    return type;
}

bool Preferences::GetIntUIAsColor(du::Symbol const& key, dg::Color& color, bool* usedDefault) {
    // Read per sublayer at every board load: no formatting while nobody records.
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record("Preferences", "GetIntUIAsColor", {qzref::Fmt(key.str())});
    }
    std::lock_guard lock(mutex_);
    auto found = values_.find(key);
    unsigned int const* word =
        found == values_.end() ? nullptr : std::get_if<unsigned int>(&found->second);
    if (usedDefault != nullptr) {
        *usedDefault = word == nullptr;
    }
    if (word == nullptr) {
        return false;
    }
    color = dg::Color(*word, true);
    return true;
}

bool Preferences::GetBool(du::Symbol const& key, bool& value, bool* usedDefault) {
    // Read per sublayer at every board load: no formatting while nobody records.
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record("Preferences", "GetBool", {qzref::Fmt(key.str())});
    }
    std::lock_guard lock(mutex_);
    auto found = values_.find(key);
    bool const* flag = found == values_.end() ? nullptr : std::get_if<bool>(&found->second);
    if (usedDefault != nullptr) {
        *usedDefault = flag == nullptr;
    }
    if (flag == nullptr) {
        return false;
    }
    value = *flag;
    return true;
}

void Preferences::Set(du::Symbol const& key, Value value) {
    std::lock_guard lock(mutex_);
    values_[key] = value;
}

bool Preferences::Remove(du::Symbol const& key) {
    std::lock_guard lock(mutex_);
    return values_.erase(key) != 0;
}

void Preferences::Clear() {
    std::lock_guard lock(mutex_);
    values_.clear();
}

void Preferences::_OnDestroy() {}

} // namespace qzk
