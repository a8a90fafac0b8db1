// Design files that are wrong in every way a user's disk or editor can make them: each is refused
// with its documented number and a text that says where, and nothing crashes or waits for ever.
#include "qzk/EcadDesign.h"
#include "qzref/DesignFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using json = nlohmann::json;

std::string Sample(char const* name) {
    return std::string(QZ_EXAMPLES_DIR) + "/designs/" + name;
}

// A directory of its own for each test, removed with everything in it.
class Scratch {
public:
    Scratch()
        : dir_(fs::temp_directory_path() /
               ("qz-bad-design-" + std::to_string(::getpid()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name())) {
        fs::create_directories(dir_);
    }
    ~Scratch() {
        std::error_code ec;
        fs::permissions(dir_, fs::perms::owner_all, fs::perm_options::add, ec);
        for (auto const& entry : fs::directory_iterator(dir_, ec)) {
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
        fs::remove_all(dir_, ec);
    }
    std::string Write(std::string const& name, std::string const& content) const {
        std::string const path = (dir_ / name).string();
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    fs::path const& Dir() const { return dir_; }

private:
    fs::path dir_;
};

json SampleBoard() {
    std::ifstream in(Sample("four-layer-board.json"));
    return json::parse(in);
}

bool ValidUtf8(std::string const& text) {
    for (std::size_t i = 0; i < text.size();) {
        auto const c = static_cast<unsigned char>(text[i]);
        std::size_t const length = c < 0x80                ? 1
                                   : c >= 0xC2 && c < 0xE0 ? 2
                                   : c >= 0xE0 && c < 0xF0 ? 3
                                   : c >= 0xF0 && c < 0xF5 ? 4
                                                           : 0;
        if (length == 0 || i + length > text.size()) {
            return false;
        }
        for (std::size_t k = 1; k < length; ++k) {
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) {
                return false;
            }
        }
        i += length;
    }
    return true;
}

TEST(BadDesignFile, ZeroIsBelowTheMinimumOfVersionsAndPictureSizes) {
    Scratch scratch;
    struct Case {
        char const* pointer;
        json value;
    };
    json board = SampleBoard();
    board["images"] =
        json::array({{{"name", "logo"}, {"kind", 0}, {"picture", {{"width", 2}, {"height", 1}}}}});
    {
        auto read = qzref::ReadDesignFile(scratch.Write("ok.json", board.dump()));
        ASSERT_EQ(read.result, 0) << read.errorText;
    }
    for (Case const& c : {Case{"/formatVersion", 0}, Case{"/images/0/picture/width", 0},
                          Case{"/images/0/picture/height", 0}}) {
        json bad = board;
        bad[json::json_pointer(c.pointer)] = c.value;
        auto read = qzref::ReadDesignFile(scratch.Write("bad.json", bad.dump()));
        EXPECT_EQ(read.result, -5) << c.pointer;
        EXPECT_NE(
            read.errorText.find(std::string(": ") + c.pointer + ": expected an integer from 1"),
            std::string::npos)
            << read.errorText;
    }
    json newer = board;
    newer["formatVersion"] = 2;
    newer["compatibleVersion"] = 0;
    auto read = qzref::ReadDesignFile(scratch.Write("newer.json", newer.dump()));
    EXPECT_EQ(read.result, -5);
    EXPECT_NE(read.errorText.find("/compatibleVersion"), std::string::npos) << read.errorText;
}

TEST(BadDesignFile, SyntaxErrorsCountCharactersAndEscapeBytesThatAreNotUtf8) {
    Scratch scratch;
    std::string const overflow = scratch.Write("overflow.json", "{\n  \"formatVersion\": 1e400\n}");
    auto big = qzref::ReadDesignFile(overflow);
    EXPECT_EQ(big.result, -3);
    EXPECT_EQ(big.errorText.rfind(overflow + ":2:", 0), 0u) << big.errorText;
    EXPECT_NE(big.errorText.find("1e400"), std::string::npos) << big.errorText;

    // Two characters of two bytes each before the error: the column is 15, not 17.
    std::string const accented =
        scratch.Write("accented.json", "{\"name\": \"\xC3\xA9\xC3\xA9\" x}");
    auto after = qzref::ReadDesignFile(accented);
    EXPECT_EQ(after.result, -3);
    EXPECT_EQ(after.errorText.rfind(accented + ":1:15: ", 0), 0u) << after.errorText;

    for (std::string const& bytes :
         {std::string("{\"kind\": \"\xFF\xFE\"}"), std::string("{\"kind\": \xC3}"),
          std::string("{\"name\": \"\xED\xA0\x80\"}"), std::string("\xC0\xAF")}) {
        auto read = qzref::ReadDesignFile(scratch.Write("invalid.json", bytes));
        EXPECT_EQ(read.result, -3);
        EXPECT_TRUE(ValidUtf8(read.errorText)) << read.errorText;
    }
    auto bad = qzref::ReadDesignFile(scratch.Write("ff.json", "{\"kind\": \"\xFF\"}"));
    EXPECT_NE(bad.errorText.find("\\xFF"), std::string::npos) << bad.errorText;

    // A path that is not UTF-8 is escaped too; the bytes before and after it stay.
    std::string const oddName = scratch.Write("odd-\xFF.json", "[");
    auto odd = qzref::ReadDesignFile(oddName);
    EXPECT_EQ(odd.result, -3);
    EXPECT_TRUE(ValidUtf8(odd.errorText));
    EXPECT_NE(odd.errorText.find("odd-\\xFF.json:1:2: "), std::string::npos) << odd.errorText;
}

TEST(BadDesignFile, FilesThatAreNotThereOrCannotBeReadHaveTheirOwnNumbers) {
    Scratch scratch;
    std::string const dir = scratch.Dir().string();
    fs::create_symlink(dir + "/loop-a", dir + "/loop-b");
    fs::create_symlink(dir + "/loop-b", dir + "/loop-a");
    auto loop = qzref::ReadDesignFile(dir + "/loop-a");
    EXPECT_EQ(loop.result, -2) << loop.errorText;

    auto longName = qzref::ReadDesignFile(dir + "/" + std::string(300, 'n') + ".json");
    EXPECT_EQ(longName.result, -2) << longName.errorText;

    auto missing = qzref::ReadDesignFile(dir + "/nothing.json");
    EXPECT_EQ(missing.result, -1);
    auto underAFile = qzref::ReadDesignFile(scratch.Write("plain", "{}") + "/board.json");
    EXPECT_EQ(underAFile.result, -1);

    auto device = qzref::ReadDesignFile("/dev/zero");
    EXPECT_EQ(device.result, -2);
    EXPECT_NE(device.errorText.find("not a regular file"), std::string::npos) << device.errorText;

    // A named pipe nobody writes to: the read is refused at once instead of waiting for a writer.
    std::string const pipe = dir + "/pipe.json";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    auto pending = std::async(std::launch::async, [&] { return qzref::ReadDesignFile(pipe); });
    if (pending.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
        // Let the stuck read finish so that the test fails instead of hanging.
        std::ofstream(pipe) << "x";
        FAIL() << "reading a named pipe waited for a writer";
    }
    auto named = pending.get();
    EXPECT_EQ(named.result, -2);
    EXPECT_NE(named.errorText.find("a named pipe"), std::string::npos) << named.errorText;

    // Larger than the limit: refused from its size, without reading (the file is sparse).
    std::string const huge = scratch.Write("huge.json", "");
    fs::resize_file(huge, (std::uintmax_t{256} << 20) + 1);
    auto tooLarge = qzref::ReadDesignFile(huge);
    EXPECT_EQ(tooLarge.result, -7) << tooLarge.errorText;
    EXPECT_EQ(tooLarge.errorText, huge + ": the design file is larger than 256 MiB");

    if (::geteuid() != 0) {
        std::string const closed = dir + "/closed";
        fs::create_directory(closed);
        std::string const inside = scratch.Write("closed/board.json", "{}");
        fs::permissions(closed, fs::perms::owner_read);
        auto unsearchable = qzref::ReadDesignFile(inside);
        EXPECT_EQ(unsearchable.result, -2) << unsearchable.errorText;
    }
}

TEST(BadDesignFile, DeepNestingIsRefusedWhereItGoesTooDeepAndModestNestingIsRead) {
    Scratch scratch;
    std::string const deep = scratch.Write("deep.json", std::string(1000000, '['));
    auto read = qzref::ReadDesignFile(deep);
    EXPECT_EQ(read.result, -3);
    EXPECT_EQ(read.errorText.rfind(deep + ":1:257: malformed JSON: nested deeper than 256", 0), 0u)
        << read.errorText;

    // Brackets inside texts are not nesting, and an unknown field may nest as deep as allowed.
    json board = SampleBoard();
    board["name"] = std::string(1000, '[');
    std::string nested = std::string(250, '[') + std::string(250, ']');
    std::string text = board.dump();
    text.insert(1, "\"extra\": " + nested + ", ");
    auto modest = qzref::ReadDesignFile(scratch.Write("modest.json", text));
    EXPECT_EQ(modest.result, 0) << modest.errorText;
}

// Every value of a valid board replaced by one of another type: the read succeeds (the field was
// optional or unknown) or is refused as not a design or as invalid, naming the value or the
// object that holds it.
TEST(BadDesignFile, AWrongTypeAnywhereIsRefusedAtItsPointer) {
    Scratch scratch;
    json const board = SampleBoard();
    json const flat = board.flatten();
    std::size_t refused = 0;
    for (auto const& [pointer, value] : flat.items()) {
        // Nothing, and a value of the most different kind.
        json const opposite = value.is_string() ? json(-7) : json("text");
        for (json const& other : {json(), opposite}) {
            json bad = board;
            bad[json::json_pointer(pointer)] = other;
            auto read = qzref::ReadDesignFile(scratch.Write("typed.json", bad.dump()));
            SCOPED_TRACE(pointer + " = " + other.dump());
            ASSERT_TRUE(read.result == 0 || read.result == -4 || read.result == -5)
                << read.result << " " << read.errorText;
            if (read.result == -5) {
                ++refused;
                std::string const parent = pointer.substr(0, pointer.rfind('/'));
                bool const named = read.errorText.find(": " + pointer + ":") != std::string::npos ||
                                   read.errorText.find(": " + (parent.empty() ? "/" : parent) +
                                                       ":") != std::string::npos;
                EXPECT_TRUE(named) << read.errorText;
            }
        }
    }
    EXPECT_GT(refused, flat.size());
}

} // namespace

namespace {

// A board of about `objects` objects: each component brings a footprint, a shape and two pins,
// and a net with one track joins its pins, seven objects in all.
std::string GeneratedBoard(std::size_t objects) {
    std::string text = R"({"formatVersion": 1, "kind": "board", "top": 1, "bottom": 1,
        "layers": [{"handle": 1, "name": "Top", "sublayers": [{"handle": 10, "name": "Pads"}]}],
        "components": [)";
    std::size_t const count = std::max<std::size_t>(1, objects / 7);
    std::string const at = R"("layer": 1, "sublayer": 10)";
    for (std::size_t i = 0; i < count; ++i) {
        std::string const n = std::to_string(i);
        text += (i == 0 ? "" : ",");
        text += R"({"name": "U)" + n + R"(", "layer": 1, "shapes": [{)" + at + R"(}], "pins": [)" +
                R"({"name": "1", )" + at + R"(}, {"name": "2", )" + at + "}]}";
    }
    text += R"(], "nets": [)";
    for (std::size_t i = 0; i < count; ++i) {
        std::string const n = std::to_string(i);
        text += (i == 0 ? "" : ",");
        text += R"({"name": "N)" + n + R"(", "pins": ["U)" + n + R"(.1", "U)" + n +
                R"(.2"], "tracks": [{)" + at + "}]}";
    }
    return text + "]}";
}

// The long form: QZ_LONG=1 reads boards of 1e5 and 1e6 objects and prints the time and the
// growth of the peak resident size; both must grow in proportion to the objects (within 3x of
// a straight line, which leaves room for a noisy machine).
TEST(BadDesignFile, LargeValidBoardsReadInTimeAndMemoryProportionalToTheirSize) {
    if (std::getenv("QZ_LONG") == nullptr) {
        GTEST_SKIP() << "long form: set QZ_LONG=1";
    }
    Scratch scratch;
    struct Figure {
        double seconds;
        double megabytes;
    };
    auto measure = [&](std::size_t objects) {
        std::string const path = scratch.Write("large.json", GeneratedBoard(objects));
        rusage before{};
        ::getrusage(RUSAGE_SELF, &before);
        auto const start = std::chrono::steady_clock::now();
        auto read = qzref::ReadDesignFile(path);
        std::chrono::duration<double> const took = std::chrono::steady_clock::now() - start;
        rusage after{};
        ::getrusage(RUSAGE_SELF, &after);
        EXPECT_EQ(read.result, 0) << read.errorText;
        Figure const figure{took.count(), (after.ru_maxrss - before.ru_maxrss) / 1024.0};
        std::printf("%zu objects, %.1f MiB of text: %.2f s, peak resident size +%.0f MiB\n",
                    objects, static_cast<double>(fs::file_size(path)) / (1 << 20), figure.seconds,
                    figure.megabytes);
        return figure;
    };
    // The small board first: the large one's growth of the peak is then its own need less the
    // small one's, nine tenths of it when the need is proportional.
    Figure const small = measure(100000);
    Figure const large = measure(1000000);
    EXPECT_LT(large.seconds, small.seconds * 30);
    EXPECT_LT(large.megabytes, small.megabytes * 30);
}

} // namespace

namespace {

// Fault guarded: a board's objects were read with no report between 40 and 100 percent, so a
// large design sat at 40% for as long as it took to read it.
TEST(DesignFileProgress, ALargeBoardReportsItsProgressAsItReadsItsObjects) {
    Scratch scratch;
    std::string const path = scratch.Write("progress.json", GeneratedBoard(7000));
    std::vector<int> reports;
    auto const read =
        qzref::ReadDesignFile(path, [&](unsigned char percent) { reports.push_back(percent); });
    ASSERT_EQ(read.result, 0) << read.errorText;
    ASSERT_FALSE(reports.empty());
    EXPECT_EQ(reports.front(), 0);
    EXPECT_EQ(reports.back(), 100);
    EXPECT_TRUE(std::is_sorted(reports.begin(), reports.end()) &&
                std::adjacent_find(reports.begin(), reports.end()) == reports.end())
        << "reports rise strictly";
    auto const within = [&](int low, int high) {
        return std::count_if(reports.begin(), reports.end(),
                             [&](int p) { return p > low && p < high; });
    };
    // A thousand components and as many nets: every percent of both phases is told.
    EXPECT_EQ(within(55, 75), 19);
    EXPECT_EQ(within(75, 90), 14);
}

} // namespace
