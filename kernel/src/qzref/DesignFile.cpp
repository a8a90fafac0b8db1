#include "qzref/DesignFile.h"
#include "qzref/DesignGeometryReader.h"

#include "IcmApiEcad.h"
#include "qz2d/ecad/Design.h"
#include "qzk/EcadDesign.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SchematicData.h"
#include "qzref/DesignImage.h"
#include "qzref/DesignObject.h"
#include "qzref/GerberOverlay.h"
#include "qzref/GerberReader.h"

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <map>
#include <set>

namespace qzref {
namespace {

using json = nlohmann::json;
using qzref::DesignObject;

// The design format version that this kernel writes and reads.
constexpr long kFormatVersion = 1;

// Result numbers; docs/design-format.md lists them.
enum : long {
    kRead = 0,
    kNewerRead = 3,
    kMissing = -1,
    kUnreadable = -2,
    kMalformed = -3,
    kWrongKind = -4,
    kInvalid = -5,
    kStopped = -6,
    kTooLarge = -7,
    kNewerUnreadable = -8,
};

// A design of a million objects takes about 40 MiB and needs some 15 times that in memory while
// it is read; a file past this limit would not fit a desktop's memory as a parsed tree anyway.
constexpr std::size_t kMaxFileBytes = std::size_t{256} << 20;
// Lists and objects inside each other; real designs nest five deep.
constexpr std::size_t kMaxNesting = 256;

// Closes a descriptor when the read ends, however it ends.
class Descriptor {
public:
    explicit Descriptor(int fd) noexcept : fd_(fd) {}
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() { ::close(fd_); }
    int Get() const noexcept { return fd_; }

private:
    int fd_;
};

// The length of the valid UTF-8 sequence at text[i], or 0 when the byte there does not start one
// (overlong forms, surrogates and values past U+10FFFF are not valid).
std::size_t Utf8SequenceAt(std::string const& text, std::size_t i) {
    auto const byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    unsigned char const c = byte(i);
    if (c < 0x80) {
        return 1;
    }
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (c >= 0xC2 && c <= 0xDF) {
        length = 2;
    } else if (c >= 0xE0 && c <= 0xEF) {
        length = 3;
        low = c == 0xE0 ? 0xA0 : 0x80;
        high = c == 0xED ? 0x9F : 0xBF;
    } else if (c >= 0xF0 && c <= 0xF4) {
        length = 4;
        low = c == 0xF0 ? 0x90 : 0x80;
        high = c == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (i + length > text.size() || byte(i + 1) < low || byte(i + 1) > high) {
        return 0;
    }
    for (std::size_t k = 2; k < length; ++k) {
        if (byte(i + k) < 0x80 || byte(i + k) > 0xBF) {
            return 0;
        }
    }
    return length;
}

// Error texts go to a host's log and dialogs, which expect UTF-8: a byte that is not part of a
// valid sequence is written as \xHH.
std::string EscapeInvalidUtf8(std::string const& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const length = Utf8SequenceAt(text, i);
        if (length == 0) {
            char escaped[5];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned char>(text[i]));
            out += escaped;
            ++i;
        } else {
            out.append(text, i, length);
            i += length;
        }
    }
    return out;
}

// Builds the tree like the library's own parser, but keeps where and why a parse failed: the
// library's out-of-range error (a number like 1e400) carries no position of its own.
class TreeBuilder {
public:
    using Dom = nlohmann::detail::json_sax_dom_parser<json>;

    explicit TreeBuilder(json& root) : dom_(root, false) {}

    bool null() { return dom_.null(); }
    bool boolean(bool value) { return dom_.boolean(value); }
    bool number_integer(json::number_integer_t value) { return dom_.number_integer(value); }
    bool number_unsigned(json::number_unsigned_t value) { return dom_.number_unsigned(value); }
    bool number_float(json::number_float_t value, json::string_t const& text) {
        return dom_.number_float(value, text);
    }
    bool string(json::string_t& value) { return dom_.string(value); }
    bool binary(json::binary_t& value) { return dom_.binary(value); }
    bool start_object(std::size_t size) { return dom_.start_object(size); }
    bool key(json::string_t& value) { return dom_.key(value); }
    bool end_object() { return dom_.end_object(); }
    bool start_array(std::size_t size) { return dom_.start_array(size); }
    bool end_array() { return dom_.end_array(); }
    template <class Exception>
    bool parse_error(std::size_t position, std::string const& /*token*/, Exception const& error) {
        failed = true;
        this->position = position;
        detail = error.what();
        return false;
    }

    bool failed = false;
    std::size_t position = 0;
    std::string detail;

private:
    Dom dom_;
};

struct ReadError {
    long result;
    std::string text;
};

// One read of one file. Every check fails by throwing a ReadError with the file, and for content
// errors the JSON pointer of the offending value; ReadDesignFile turns it into the result.
class Reader {
public:
    Reader(std::string path, std::function<void(unsigned char)> const& progress,
           std::string requiredKind)
        : path_(std::move(path)), progress_(progress), requiredKind_(std::move(requiredKind)) {}

    DesignReadResult Read() {
        Progress(0);
        std::string const text = Load();
        Progress(10);
        if (IsGerberFilm(text)) {
            return ReadFilm(text);
        }
        json const root = Parse(text);
        Progress(40);
        if (!root.is_object()) {
            Fail(kWrongKind, "not a design file: the top level is not a JSON object");
        }
        DesignReadResult out;
        out.result = CheckVersion(root);
        std::string const kind = Kind(root);
        if (kind == "board" || kind == "overlay") {
            out.data = ReadBoard(root, kind == "overlay");
        } else if (kind == "schematic") {
            out.data = ReadSchematic(root);
        } else {
            auto data = qzk::ecad::EcadDesignData::Create(Name(root));
            ReadImages(root, *data, true);
            out.data = data;
        }
        Progress(100);
        out.status = 0;
        return out;
    }

    // A file with a Gerber extension is a film unless it is an overlay written as JSON, which
    // older samples are: their first character is a brace.
    bool IsGerberFilm(std::string const& text) const {
        if (!qzk::EcadDesign::HasGerberExtension(path_)) {
            return false;
        }
        std::size_t const first = text.find_first_not_of(" \t\r\n");
        return first == std::string::npos || text[first] != '{';
    }

    DesignReadResult ReadFilm(std::string const& text) {
        if (!requiredKind_.empty() && requiredKind_ != "overlay") {
            Fail(kWrongKind, "a Gerber film where a \"" + requiredKind_ + "\" is wanted");
        }
        DesignReadResult out;
        try {
            std::string const base = path_.substr(path_.find_last_of('/') + 1);
            out.data =
                ReadGerberOverlay(text, base.substr(0, base.rfind('.')),
                                  [this](int percent) { Progress(10 + percent * 90 / 100); });
        } catch (GerberReader::Error const& error) {
            throw ReadError{kMalformed, path_ + ":" + std::to_string(error.line) + ": " +
                                            (error.command.empty() ? "" : error.command + ": ") +
                                            "malformed Gerber: " + error.what()};
        }
        Progress(100);
        out.status = 0;
        out.result = kRead;
        return out;
    }

    [[noreturn]] void Fail(long result, std::string const& message) const {
        throw ReadError{result, path_ + ": " + message};
    }
    [[noreturn]] void Invalid(std::string const& pointer, std::string const& message) const {
        throw ReadError{kInvalid,
                        path_ + ": " + (pointer.empty() ? "/" : pointer) + ": " + message};
    }

private:
    // The share of a reading phase that spans from..to percent, done after i of n items; a large
    // design so shows its progress as it goes, not only at the phases' ends.
    void Progress(std::size_t i, std::size_t n, int from, int to) {
        if (n != 0) {
            Progress(from + static_cast<int>(static_cast<std::size_t>(to - from) * i / n));
        }
    }

    // What the object draws, when the item gives it.
    void Geometry(json const& item, std::string const& where, DesignObject& object) const {
        if (auto const geometry = item.find("geometry"); geometry != item.end()) {
            if (auto const why = qzref::ReadDesignGeometry(*geometry, object.geometry)) {
                Invalid(where + "/geometry" + why->substr(0, why->find(':')),
                        why->substr(why->find(':') + 2));
            }
        }
    }

    // Reports rise only; the first report is 0.
    void Progress(int percent) {
        if (progress_ && (!started_ || percent > lastProgress_)) {
            lastProgress_ = percent;
            progress_(static_cast<unsigned char>(percent));
        }
        started_ = true;
    }

    // Only a regular file is read: opening does not wait for a writer (a named pipe), and a
    // device that never ends (/dev/zero) is refused before a byte is read.
    std::string Load() const {
        int const fd = ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0) {
            int const error = errno;
            if (error == ENOENT || error == ENOTDIR) {
                Fail(kMissing, "cannot open the design file: no such file");
            }
            Fail(kUnreadable, std::string("cannot read the design file: ") + std::strerror(error));
        }
        Descriptor const file(fd);
        struct stat info {};
        if (::fstat(file.Get(), &info) != 0) {
            Fail(kUnreadable, std::string("cannot read the design file: ") + std::strerror(errno));
        }
        if (S_ISDIR(info.st_mode)) {
            Fail(kUnreadable, "cannot read the design file: it is a directory");
        }
        if (!S_ISREG(info.st_mode)) {
            Fail(kUnreadable,
                 std::string("cannot read the design file: it is not a regular file (") +
                     (S_ISFIFO(info.st_mode)   ? "a named pipe"
                      : S_ISSOCK(info.st_mode) ? "a socket"
                                               : "a device") +
                     ")");
        }
        std::string const tooLarge =
            "the design file is larger than " + std::to_string(kMaxFileBytes >> 20) + " MiB";
        if (static_cast<std::uint64_t>(info.st_size) > kMaxFileBytes) {
            Fail(kTooLarge, tooLarge);
        }
        // The size is a hint only: the file may grow or shrink while it is read.
        std::string content(static_cast<std::size_t>(info.st_size), '\0');
        std::size_t used = 0;
        for (;;) {
            if (used == content.size()) {
                if (content.size() > kMaxFileBytes) {
                    Fail(kTooLarge, tooLarge);
                }
                content.resize(std::max<std::size_t>(4096, content.size() + content.size() / 2));
            }
            ssize_t const got = ::read(file.Get(), content.data() + used, content.size() - used);
            if (got < 0) {
                if (errno == EINTR) {
                    continue;
                }
                Fail(kUnreadable,
                     std::string("cannot read the design file: ") + std::strerror(errno));
            }
            if (got == 0) {
                break;
            }
            used += static_cast<std::size_t>(got);
        }
        if (used > kMaxFileBytes) {
            Fail(kTooLarge, tooLarge);
        }
        content.resize(used);
        return content;
    }

    // Line and column, both from 1, of the byte at offset; the column counts characters.
    std::string Position(std::string const& text, std::size_t offset) const {
        offset = std::min(offset, text.size());
        std::size_t line = 1;
        std::size_t column = 1;
        for (std::size_t i = 0; i < offset; ++i) {
            auto const c = static_cast<unsigned char>(text[i]);
            if (c == '\n') {
                ++line;
                column = 1;
            } else if ((c & 0xC0) != 0x80) {
                ++column;
            }
        }
        return path_ + ":" + std::to_string(line) + ":" + std::to_string(column);
    }

    // Refuses lists and objects nested deeper than kMaxNesting, at the bracket that goes too
    // deep; the strings' contents are skipped.
    void CheckNesting(std::string const& text) const {
        std::size_t depth = 0;
        bool inString = false;
        for (std::size_t i = 0; i < text.size(); ++i) {
            char const c = text[i];
            if (inString) {
                if (c == '\\') {
                    ++i;
                } else if (c == '"') {
                    inString = false;
                }
            } else if (c == '"') {
                inString = true;
            } else if (c == '[' || c == '{') {
                if (++depth > kMaxNesting) {
                    throw ReadError{kMalformed, Position(text, i) + ": malformed JSON: nested " +
                                                    "deeper than " + std::to_string(kMaxNesting) +
                                                    " lists and objects"};
                }
            } else if ((c == ']' || c == '}') && depth > 0) {
                --depth;
            }
        }
    }

    json Parse(std::string const& text) const {
        CheckNesting(text);
        json root;
        TreeBuilder builder(root);
        json::sax_parse(text, &builder, json::input_format_t::json, true, false);
        if (builder.failed) {
            // The position counts the bytes read, the offending one included.
            std::string detail = builder.detail;
            std::size_t const cut = detail.find("] ");
            if (cut != std::string::npos) {
                detail = detail.substr(cut + 2);
            }
            if (detail.rfind("parse error", 0) == 0) {
                std::size_t const colon = detail.find(": ");
                detail = colon == std::string::npos ? detail : detail.substr(colon + 2);
            }
            throw ReadError{kMalformed,
                            Position(text, builder.position == 0 ? 0 : builder.position - 1) +
                                ": malformed JSON: " + detail};
        }
        return root;
    }

    long CheckVersion(json const& root) const {
        long const version = Integer(root, "formatVersion", "", 1, std::numeric_limits<int>::max());
        if (version <= kFormatVersion) {
            return kRead;
        }
        long const compatible =
            root.contains("compatibleVersion")
                ? Integer(root, "compatibleVersion", "", 1, std::numeric_limits<int>::max())
                : version;
        if (compatible > kFormatVersion) {
            Fail(kNewerUnreadable, "written in design format version " + std::to_string(version) +
                                       ", which this kernel (version " +
                                       std::to_string(kFormatVersion) + ") cannot read");
        }
        return kNewerRead;
    }

    std::string Kind(json const& root) const {
        auto found = root.find("kind");
        if (found == root.end() || !found->is_string()) {
            Fail(kWrongKind, "not a design file: no \"kind\" text");
        }
        std::string kind = found->get<std::string>();
        if (kind != "board" && kind != "schematic" && kind != "overlay" && kind != "images") {
            Fail(kWrongKind,
                 "not a design file of a known kind: \"" + kind +
                     "\"; expected \"board\", \"schematic\", \"overlay\" or \"images\"");
        }
        bool const gerberName = qzk::EcadDesign::HasGerberExtension(path_);
        if (gerberName != (kind == "overlay")) {
            Fail(kWrongKind, gerberName
                                 ? "a Gerber file must hold an \"overlay\", not a \"" + kind + "\""
                                 : "an \"overlay\" must be in a file with a Gerber extension");
        }
        if (!requiredKind_.empty() && kind != requiredKind_) {
            throw ReadError{kWrongKind, path_ + ": /kind: a \"" + kind + "\" where a \"" +
                                            requiredKind_ + "\" is wanted"};
        }
        return kind;
    }

    // Field access. pointer is the JSON pointer of the object that holds the field.
    json const& Field(json const& object, char const* key, std::string const& pointer) const {
        auto found = object.find(key);
        if (found == object.end()) {
            Invalid(pointer, std::string("missing \"") + key + "\"");
        }
        return *found;
    }

    long Integer(json const& object, char const* key, std::string const& pointer, long min,
                 long max) const {
        json const& value = Field(object, key, pointer);
        std::string const where = pointer + "/" + key;
        if (!value.is_number_integer()) {
            Invalid(where, "expected an integer");
        }
        // A number without a sign is stored unsigned, so both ends are checked in either form.
        bool const inRange =
            value.is_number_unsigned()
                ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(max) &&
                      (min <= 0 || value.get<std::uint64_t>() >= static_cast<std::uint64_t>(min))
                : value.get<std::int64_t>() >= min && value.get<std::int64_t>() <= max;
        if (!inRange) {
            Invalid(where, "expected an integer from " + std::to_string(min) + " to " +
                               std::to_string(max));
        }
        return static_cast<long>(value.get<std::int64_t>());
    }

    short Handle(json const& object, char const* key, std::string const& pointer) const {
        return static_cast<short>(Integer(object, key, pointer, std::numeric_limits<short>::min(),
                                          std::numeric_limits<short>::max()));
    }

    std::string Text(json const& object, char const* key, std::string const& pointer,
                     bool required = true, std::string fallback = {}) const {
        if (!required && !object.contains(key)) {
            return fallback;
        }
        json const& value = Field(object, key, pointer);
        if (!value.is_string()) {
            Invalid(pointer + "/" + key, "expected a text");
        }
        std::string text = value.get<std::string>();
        if (required && text.empty()) {
            Invalid(pointer + "/" + key, "must not be empty");
        }
        return text;
    }

    bool Flag(json const& object, char const* key, std::string const& pointer,
              bool fallback) const {
        if (!object.contains(key)) {
            return fallback;
        }
        json const& value = object.at(key);
        if (!value.is_boolean()) {
            Invalid(pointer + "/" + key, "expected true or false");
        }
        return value.get<bool>();
    }

    // An unsigned number, or a text "0x" followed by hex digits.
    std::uint64_t Word(json const& value, std::string const& where, std::uint64_t max) const {
        std::uint64_t word = 0;
        if (value.is_number_unsigned() ||
            (value.is_number_integer() && value.get<std::int64_t>() >= 0)) {
            word = value.get<std::uint64_t>();
        } else if (value.is_string()) {
            std::string const text = value.get<std::string>();
            bool ok = text.size() > 2 && text.size() <= 18 && text[0] == '0' &&
                      (text[1] == 'x' || text[1] == 'X');
            for (std::size_t i = 2; ok && i < text.size(); ++i) {
                ok = std::isxdigit(static_cast<unsigned char>(text[i])) != 0;
            }
            if (!ok) {
                Invalid(where, "expected \"0x\" and hex digits, not \"" + text + "\"");
            }
            word = std::stoull(text.substr(2), nullptr, 16);
        } else {
            Invalid(where, "expected an unsigned number or a \"0x\" hex text");
        }
        if (word > max) {
            Invalid(where, "the number is too large");
        }
        return word;
    }

    unsigned int Color(json const& object, std::string const& pointer,
                       unsigned int fallback) const {
        if (!object.contains("color")) {
            return fallback;
        }
        return static_cast<unsigned int>(Word(object.at("color"), pointer + "/color", 0xFFFFFFFFu));
    }

    json const& Array(json const& object, char const* key, std::string const& pointer,
                      bool required) const {
        static json const empty = json::array();
        if (!required && !object.contains(key)) {
            return empty;
        }
        json const& value = Field(object, key, pointer);
        if (!value.is_array()) {
            Invalid(pointer + "/" + key, "expected a list");
        }
        return value;
    }

    json const& Object(json const& value, std::string const& pointer) const {
        if (!value.is_object()) {
            Invalid(pointer, "expected an object");
        }
        return value;
    }

    du::Symbol Name(json const& root) const { return du::Symbol(Text(root, "name", "", false)); }

    static std::string At(std::string const& pointer, char const* key, std::size_t index) {
        return pointer + "/" + key + "/" + std::to_string(index);
    }

    // FNV-1a: a stable word for a sublayer whose file gives no identity of its own.
    static std::uint64_t IdentityOf(std::string const& name) {
        std::uint64_t hash = 14695981039346656037ull;
        for (unsigned char c : name) {
            hash = (hash ^ c) * 1099511628211ull;
        }
        return hash;
    }

    void Unique(std::set<std::string>& names, std::string const& name, std::string const& where,
                char const* what) const {
        if (!names.insert(name).second) {
            Invalid(where, std::string("a second ") + what + " called \"" + name + "\"");
        }
    }

    du::SmartPtr<qzk::EcadDesignData> ReadBoard(json const& root, bool overlay) {
        auto board = qzk::ecad::EcadPCBData::Create(Name(root), overlay);
        if (root.contains("extent")) {
            json const& extent = root.at("extent");
            if (!extent.is_array() || extent.size() != 4 ||
                !std::all_of(extent.begin(), extent.end(),
                             [](json const& v) { return v.is_number(); })) {
                Invalid("/extent", "expected four numbers: min x, min y, max x, max y");
            }
            board->minX = extent[0].get<double>();
            board->minY = extent[1].get<double>();
            board->maxX = extent[2].get<double>();
            board->maxY = extent[3].get<double>();
        }
        json const& layers = Array(root, "layers", "", true);
        if (layers.empty()) {
            Invalid("/layers", "a board needs at least one layer");
        }
        std::set<std::string> layerNames;
        for (std::size_t i = 0; i < layers.size(); ++i) {
            std::string const at = At("", "layers", i);
            json const& layer = Object(layers[i], at);
            short const handle = Handle(layer, "handle", at);
            std::string const name = Text(layer, "name", at);
            if (handle == 0 || handle == -1) {
                Invalid(at + "/handle", "layer handles 0 and -1 are reserved");
            }
            if (!board->AddLayer(handle, name)) {
                Invalid(at + "/handle", "a second layer with handle " + std::to_string(handle));
            }
            Unique(layerNames, name, at + "/name", "layer");
            json const& sublayers = Array(layer, "sublayers", at, true);
            std::set<std::string> sublayerNames;
            for (std::size_t k = 0; k < sublayers.size(); ++k) {
                std::string const sat = At(at, "sublayers", k);
                json const& sublayer = Object(sublayers[k], sat);
                short const sub = Handle(sublayer, "handle", sat);
                std::string const subName = Text(sublayer, "name", sat);
                Unique(sublayerNames, subName, sat + "/name", "sublayer");
                std::uint64_t const identity =
                    sublayer.contains("identity") ? Word(sublayer.at("identity"), sat + "/identity",
                                                         std::numeric_limits<std::uint64_t>::max())
                                                  : IdentityOf(subName);
                auto object = std::make_unique<qzk::ecad::SublayerPCB>(
                    handle, sub, Text(sublayer, "label", sat, false, subName),
                    Color(sublayer, sat, 0x01FFFFFF), Flag(sublayer, "visible", sat, true),
                    identity);
                if (sub < 0) {
                    Invalid(sat + "/handle", "sublayer handles are not negative");
                }
                if (!board->AddSublayer(std::move(object), subName)) {
                    Invalid(sat + "/handle",
                            "a second sublayer with handle " + std::to_string(sub));
                }
            }
        }
        Progress(55);
        short const top = Handle(root, "top", "");
        short const bottom = Handle(root, "bottom", "");
        if (board->GetLayers().count(top) == 0) {
            Invalid("/top", "no layer has handle " + std::to_string(top));
        }
        if (board->GetLayers().count(bottom) == 0) {
            Invalid("/bottom", "no layer has handle " + std::to_string(bottom));
        }
        board->SetTopBottom(top, bottom);

        auto placed = [&](json const& item, std::string const& where, DesignObject& object) {
            object.layer = Handle(item, "layer", where);
            object.sublayer = Handle(item, "sublayer", where);
            if (board->FindSublayer(object.layer, object.sublayer) == nullptr) {
                Invalid(where, "no sublayer (" + std::to_string(object.layer) + ", " +
                                   std::to_string(object.sublayer) + ") on this board");
            }
            Geometry(item, where, object);
        };
        std::map<std::string, DesignObject*> pins;
        json const& components = Array(root, "components", "", false);
        std::set<std::string> componentNames;
        for (std::size_t i = 0; i < components.size(); ++i) {
            Progress(i, components.size(), 55, 75);
            std::string const at = At("", "components", i);
            json const& item = Object(components[i], at);
            std::string const name = Text(item, "name", at);
            Unique(componentNames, name, at + "/name", "component");
            auto component = std::make_unique<DesignObject>(IcmApiEcad::COMPONENT, name);
            component->layer = Handle(item, "layer", at);
            if (component->layer != 0 && board->GetLayers().count(component->layer) == 0) {
                Invalid(at + "/layer", "no layer has handle " + std::to_string(component->layer));
            }
            DesignObject* comp = board->AddComponent(std::move(component));
            DesignObject* footprint = board->Add(
                std::make_unique<DesignObject>(IcmApiEcad::FOOTPRINT, name + " footprint"));
            footprint->layer = comp->layer;
            footprint->owner = comp;
            comp->children.push_back(footprint);
            ReadParts(item, at, "shapes", IcmApiEcad::SHAPE, *board, footprint, name, placed);
            ReadPins(item, at, *board, comp, pins,
                     [&](json const& pin, std::string const& pat, DesignObject& object) {
                         placed(pin, pat, object);
                     });
        }
        Progress(75);
        ReadNets(root, *board, pins, "tracks", placed);
        Progress(90);
        ReadImages(root, *board, false);
        return board;
    }

    template <class Data, class Place>
    void ReadPins(json const& item, std::string const& at, Data& data, DesignObject* component,
                  std::map<std::string, DesignObject*>& pins, Place place) {
        json const& list = Array(item, "pins", at, false);
        for (std::size_t k = 0; k < list.size(); ++k) {
            std::string const pat = At(at, "pins", k);
            json const& pinItem = Object(list[k], pat);
            std::string const name = component->name + "." + Text(pinItem, "name", pat);
            if (pins.count(name) != 0) {
                Invalid(pat + "/name", "a second pin called \"" + name + "\"");
            }
            DesignObject* pin = data.Add(std::make_unique<DesignObject>(IcmApiEcad::PIN, name));
            place(pinItem, pat, *pin);
            pin->owner = component;
            component->children.push_back(pin);
            pins.emplace(name, pin);
        }
    }

    // The objects listed under key, each owned by owner and named "<owner name>:<n>" (n from 1)
    // unless it has a name of its own.
    template <class Data, class Place>
    void ReadParts(json const& item, std::string const& at, char const* key, int type, Data& data,
                   DesignObject* owner, std::string const& ownerName, Place const& place) {
        json const& parts = Array(item, key, at, false);
        for (std::size_t k = 0; k < parts.size(); ++k) {
            std::string const pat = At(at, key, k);
            json const& partItem = Object(parts[k], pat);
            DesignObject* part = data.Add(std::make_unique<DesignObject>(
                type, Text(partItem, "name", pat, false, ownerName + ":" + std::to_string(k + 1))));
            place(partItem, pat, *part);
            part->owner = owner;
            owner->children.push_back(part);
        }
    }

    // The nets of a board or schematic, their pins and their wires (listed under wireKey).
    template <class Data, class Place>
    void ReadNets(json const& root, Data& data, std::map<std::string, DesignObject*> const& pins,
                  char const* wireKey, Place const& place) {
        json const& nets = Array(root, "nets", "", false);
        std::set<std::string> netNames;
        std::set<std::string> connected;
        for (std::size_t i = 0; i < nets.size(); ++i) {
            Progress(i, nets.size(), 75, 90);
            std::string const at = At("", "nets", i);
            json const& item = Object(nets[i], at);
            std::string const name = Text(item, "name", at);
            Unique(netNames, name, at + "/name", "net");
            DesignObject* net = data.AddNet(std::make_unique<DesignObject>(IcmApiEcad::NET, name));
            ConnectPins(item, at, net, pins, connected);
            ReadParts(item, at, wireKey, IcmApiEcad::WIRE, data, net, name, place);
        }
    }

    void ConnectPins(json const& item, std::string const& at, DesignObject* net,
                     std::map<std::string, DesignObject*> const& pins,
                     std::set<std::string>& connected) const {
        json const& list = Array(item, "pins", at, false);
        for (std::size_t k = 0; k < list.size(); ++k) {
            std::string const pat = at + "/pins/" + std::to_string(k);
            if (!list[k].is_string()) {
                Invalid(pat, "expected a pin name \"<component>.<pin>\"");
            }
            std::string const name = list[k].get<std::string>();
            auto found = pins.find(name);
            if (found == pins.end()) {
                Invalid(pat, "no pin called \"" + name + "\"");
            }
            if (!connected.insert(name).second) {
                Invalid(pat, "pin \"" + name + "\" is in a net already");
            }
            net->children.push_back(found->second);
        }
    }

    du::SmartPtr<qzk::EcadDesignData> ReadSchematic(json const& root) {
        auto schematic = qzk::ecad::SchematicData::Create(Name(root));
        json const& layers = Array(root, "layers", "", true);
        for (std::size_t i = 0; i < layers.size(); ++i) {
            std::string const at = At("", "layers", i);
            json const& layer = Object(layers[i], at);
            short const handle = Handle(layer, "handle", at);
            std::string const name = Text(layer, "name", at);
            if (!schematic->layerNames.emplace(handle, WideOf(name)).second) {
                Invalid(at + "/handle", "a second layer with handle " + std::to_string(handle));
            }
        }
        json const& sheets = Array(root, "sheets", "", true);
        if (sheets.empty()) {
            Invalid("/sheets", "a schematic needs at least one sheet");
        }
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            std::string const at = At("", "sheets", i);
            schematic->AddSheet(Text(Object(sheets[i], at), "name", at));
        }
        Progress(55);
        auto onLayer = [&](json const& item, std::string const& where, DesignObject& object) {
            object.layer = 0;
            object.sublayer = Handle(item, "layer", where);
            if (schematic->layerNames.count(object.sublayer) == 0) {
                Invalid(where + "/layer", "no layer has handle " + std::to_string(object.sublayer));
            }
            Geometry(item, where, object);
        };
        auto onSheet = [&](json const& item, std::string const& where, DesignObject& object) {
            object.sheet = static_cast<unsigned int>(
                Integer(item, "sheet", where, 0, static_cast<long>(schematic->GetNumSheets()) - 1));
        };
        std::map<std::string, DesignObject*> pins;
        json const& components = Array(root, "components", "", false);
        std::set<std::string> componentNames;
        for (std::size_t i = 0; i < components.size(); ++i) {
            Progress(i, components.size(), 55, 75);
            std::string const at = At("", "components", i);
            json const& item = Object(components[i], at);
            std::string const name = Text(item, "name", at);
            Unique(componentNames, name, at + "/name", "component");
            DesignObject* comp = schematic->AddComponent(
                std::make_unique<DesignObject>(IcmApiEcad::COMPONENT, name));
            onLayer(item, at, *comp);
            onSheet(item, at, *comp);
            ReadPins(item, at, *schematic, comp, pins,
                     [&](json const& pin, std::string const& pat, DesignObject& object) {
                         onLayer(pin, pat, object);
                         object.sheet = comp->sheet;
                     });
        }
        Progress(75);
        ReadNets(root, *schematic, pins, "wires",
                 [&](json const& wire, std::string const& wat, DesignObject& object) {
                     onLayer(wire, wat, object);
                     onSheet(wire, wat, object);
                 });
        Progress(90);
        ReadImages(root, *schematic, false);
        return schematic;
    }

    void ReadImages(json const& root, qzk::ecad::EcadDesignData& data, bool required) {
        json const& images = Array(root, "images", "", required);
        std::set<std::string> names;
        for (std::size_t i = 0; i < images.size(); ++i) {
            std::string const at = At("", "images", i);
            json const& item = Object(images[i], at);
            std::string const name = Text(item, "name", at);
            Unique(names, name, at + "/name", "image");
            auto image = std::make_unique<DesignImage>(name);
            image->id = item.contains("id") ? Word(item.at("id"), at + "/id",
                                                   std::numeric_limits<std::uint64_t>::max())
                                            : 0;
            image->kind = static_cast<int>(Integer(item, "kind", at, 0, 2));
            image->color = Color(item, at, 0x01FFFFFF);
            image->visible = Flag(item, "visible", at, true);
            image->parameter = item.contains("parameter")
                                   ? static_cast<unsigned int>(
                                         Word(item.at("parameter"), at + "/parameter", 0xFFFFFFFFu))
                                   : 0;
            image->overlayName = Text(item, "overlayName", at, false, name);
            if (item.contains("picture") && !item.at("picture").is_null()) {
                std::string const pat = at + "/picture";
                json const& picture = Object(item.at("picture"), pat);
                auto const width =
                    static_cast<unsigned int>(Integer(picture, "width", pat, 1, 65535));
                auto const height =
                    static_cast<unsigned int>(Integer(picture, "height", pat, 1, 65535));
                std::vector<unsigned int> pixels;
                json const& list = Array(picture, "pixels", pat, false);
                for (std::size_t k = 0; k < list.size(); ++k) {
                    pixels.push_back(static_cast<unsigned int>(
                        Word(list[k], pat + "/pixels/" + std::to_string(k), 0xFFFFFFFFu)));
                }
                image->picture = qz2d::ecad::Design::Create(name, width, height, std::move(pixels),
                                                            Color(picture, pat, image->color));
                if (!image->picture) {
                    Invalid(pat + "/pixels", "expected none or width * height colour words");
                }
            }
            data.AddImage(std::move(image));
        }
    }

    static std::wstring WideOf(std::string const& utf8) {
        std::wstring out;
        for (std::size_t i = 0; i < utf8.size();) {
            auto const c = static_cast<unsigned char>(utf8[i]);
            int const extra = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
            char32_t code = extra == 0 ? c : c & (0x3F >> extra);
            for (int k = 1; k <= extra && i + k < utf8.size(); ++k) {
                code = (code << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
            }
            out += static_cast<wchar_t>(code);
            i += 1 + extra;
        }
        return out;
    }

    std::string path_;
    std::function<void(unsigned char)> const& progress_;
    std::string requiredKind_;
    int lastProgress_ = 0;
    bool started_ = false;
};

} // namespace

DesignReadResult ReadDesignFile(std::string const& path,
                                std::function<void(unsigned char)> const& progress,
                                std::string const& requiredKind) {
    DesignReadResult out;
    try {
        return Reader(path, progress, requiredKind).Read();
    } catch (ReadError const& error) {
        out.result = error.result;
        out.errorText = EscapeInvalidUtf8(error.text);
    } catch (std::exception const& e) {
        out.result = kStopped;
        out.errorText = EscapeInvalidUtf8(path + ": reading stopped: " + e.what());
    } catch (...) {
        out.result = kStopped;
        out.errorText = EscapeInvalidUtf8(path + ": reading stopped");
    }
    out.status = 1;
    out.data = nullptr;
    return out;
}

} // namespace qzref
