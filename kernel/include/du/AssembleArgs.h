// The arguments of a catalogue message, formatted once by a printf-like format.
//
// The format lists one conversion per argument: %s (text), %d or %i (signed), %u (unsigned),
// %x (hex) and %f (double); the k-th formatted argument replaces "%k" (k = 1..9) in the
// catalogue text. Text between conversions is ignored. An argument whose conversion is
// missing or of another kind is formatted in its natural way. "%%" in the format is skipped.
//     du::AssembleArgs args("%s", layerName);   // "Display priority of %1" -> "... of Top"
#pragma once

#include <string>
#include <type_traits>
#include <vector>

namespace du {

class AssembleArgs {
public:
    explicit AssembleArgs(char const* format);
    template <class... Args>
    AssembleArgs(char const* format, Args const&... args) : AssembleArgs(format) {
        (Add(args), ...);
    }

    AssembleArgs& Add(std::string const& text);
    AssembleArgs& Add(char const* text);
    AssembleArgs& Add(long long value);
    AssembleArgs& Add(unsigned long long value);
    AssembleArgs& Add(double value);
    template <class T, class = std::enable_if_t<std::is_integral_v<T>>> AssembleArgs& Add(T value) {
        if constexpr (std::is_same_v<T, bool>) {
            return Add(std::string(value ? "true" : "false"));
        } else if constexpr (std::is_signed_v<T>) {
            return Add(static_cast<long long>(value));
        } else {
            return Add(static_cast<unsigned long long>(value));
        }
    }

    std::vector<std::string> const& GetArgs() const noexcept { return args_; }
    // Replaces %1..%9 in text by the arguments; a placeholder without an argument stays.
    std::string Substitute(std::string const& text) const;

private:
    char NextConversion();

    std::string format_;
    std::size_t cursor_ = 0;
    std::vector<std::string> args_;
};

} // namespace du
