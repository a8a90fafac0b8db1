// The Gerber reader on arbitrary film text. A film either reads into overlay data or stops with
// an error on one of its lines; any other exception, or a crash, is a finding.
#include "qzk/ecad/EcadPCBData.h"
#include "qzref/GerberOverlay.h"
#include "qzref/GerberReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    try {
        auto const film = qzref::ReadGerberOverlay(text, "fuzz");
        if (!film || !film->IsOverlayData()) {
            std::abort();
        }
    } catch (qzref::GerberReader::Error const& error) {
        auto const lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
        if (error.line < 1 || error.line > lines + 1) {
            std::fprintf(stderr, "error on line %zu of %zu\n", error.line, lines + 1);
            std::abort();
        }
    }
    return 0;
}
