// How Gerber files are read: the number format that a file without its own format statement
// is taken to have. Init reads the boolean preferences "Ecad/Gerber/metric" (millimetres with
// 3.3 digits; otherwise inches with 2.4) and "Ecad/Gerber/leading_zeros_omitted" (default
// true). Without a world Init leaves the start values.
#pragma once

namespace qzk::ecad {

class GerberPrefs {
public:
    GerberPrefs() = default;
    GerberPrefs(GerberPrefs const&) = default;
    GerberPrefs& operator=(GerberPrefs const&) = default;
    ~GerberPrefs() = default;

    void Init();
    bool operator==(GerberPrefs const& other) const noexcept;

    bool metric = false;
    int integerDigits = 2;
    int decimalDigits = 4;
    bool leadingZerosOmitted = true;
};

} // namespace qzk::ecad
