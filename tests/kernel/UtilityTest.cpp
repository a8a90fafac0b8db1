// File names, string conversion, the environment and the message catalogue.
#include "dp/Environment.h"
#include "du/FileSpec.h"
#include "du/Localizer.h"
#include "du/StringConversion.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

std::string Extension(std::string const& path, bool* has = nullptr) {
    std::string out = "untouched";
    bool const found = du::FileSpec(path).GetFileExtension(&out);
    if (has != nullptr) {
        *has = found;
    }
    return out;
}

TEST(FileSpec, ExtensionIsTheLastDotOfTheFileNameOnly) {
    bool has = false;
    EXPECT_EQ(Extension("/data/board.GBR", &has), "GBR");
    EXPECT_TRUE(has);
    EXPECT_EQ(Extension("archive.tar.gz"), "gz");
    EXPECT_EQ(Extension("/dir.with.dots/README", &has), "");
    EXPECT_FALSE(has);
    EXPECT_EQ(Extension("C:\\designs.v2\\top.art"), "art");
    EXPECT_EQ(Extension("C:\\designs.v2\\top", &has), "");
    EXPECT_FALSE(has);
    EXPECT_EQ(Extension("/home/u/.profile", &has), "");
    EXPECT_FALSE(has);
    EXPECT_EQ(Extension("name.", &has), "");
    EXPECT_FALSE(has);
    EXPECT_EQ(Extension("dir/", &has), "");
    EXPECT_FALSE(has);
    EXPECT_TRUE(du::FileSpec("x.y").GetFileExtension(nullptr));
    EXPECT_EQ(du::FileSpec("/a.b/c.d").GetFileName(), "c.d");
    EXPECT_EQ(du::FileSpec("/a.b/c.d").GetDirectory(), "/a.b/");
}

TEST(StringConversion, RoundTripsEveryEncodedLength) {
    std::string const utf8 = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"; // A é € 😀 z
    std::wstring const wide = du::Utf8ToWideStr(utf8);
    if constexpr (sizeof(wchar_t) >= 4) {
        EXPECT_EQ(wide,
                  (std::wstring{L'A', wchar_t(0xE9), wchar_t(0x20AC), wchar_t(0x1F600), L'z'}));
    }
    EXPECT_EQ(du::WideStrToUtf8(wide), utf8);
    EXPECT_EQ(du::WideStrToUtf8(du::Utf8ToWideStr(std::string())), "");
    EXPECT_EQ(du::Utf8ToWideStr(static_cast<char const*>(nullptr)), L"");
    EXPECT_EQ(du::WideStrToUtf8(static_cast<wchar_t const*>(nullptr)), "");
}

TEST(StringConversion, MalformedInputBecomesReplacementCharacters) {
    std::wstring const replacement(1, wchar_t(0xFFFD));
    // A lone continuation byte, a truncated sequence, an overlong '/' and an encoded surrogate.
    EXPECT_EQ(du::Utf8ToWideStr("a\x80"
                                "b"),
              L"a" + replacement + L"b");
    EXPECT_EQ(du::Utf8ToWideStr("\xE2\x82"), replacement + replacement);
    EXPECT_EQ(du::Utf8ToWideStr("\xC0\xAF"), replacement + replacement);
    EXPECT_EQ(du::Utf8ToWideStr("\xED\xA0\x80").front(), wchar_t(0xFFFD));
    EXPECT_EQ(du::WideStrToUtf8(std::wstring(1, wchar_t(0xD800))), "\xEF\xBF\xBD");
}

TEST(StringConversion, BufferedResultLivesUntilTheNextCallOnTheThread) {
    wchar_t const* first = du::Utf8ToWideBuffered("Layer overlay");
    EXPECT_EQ(std::wstring(first), L"Layer overlay");
    wchar_t const* second = du::Utf8ToWideBuffered(std::string("x\0y", 3));
    EXPECT_EQ(std::wstring(second, 3), std::wstring(L"x\0y", 3));
}

TEST(Environment, ReadsWhatTheProcessEnvironmentHolds) {
    char const* name = "QZK_TEST_ENVIRONMENT_VARIABLE";
    dp::Environment::Unset(name);
    EXPECT_EQ(dp::Environment::Get(name), "");
    EXPECT_FALSE(dp::Environment::Has(name));
    dp::Environment::Set(name, "");
    EXPECT_TRUE(dp::Environment::Has(name));
    dp::Environment::Set(name, " 2");
    EXPECT_EQ(dp::Environment::Get(name), " 2");
    EXPECT_STREQ(std::getenv(name), " 2");
    dp::Environment::Unset(name);
    EXPECT_FALSE(dp::Environment::Has(name));
}

TEST(Localizer, CatalogueOfTheKernelHasTheLayersKeys) {
    du::Localizer const localizer("qzecad:qzecadStrings");
    EXPECT_FALSE(localizer.GetCataloguePath().empty());
    for (char const* key :
         {"DisplayPriorityUndo", "DisplayPriorityResetUndo", "ColorVisAreas", "LayerOverlay"}) {
        EXPECT_TRUE(localizer.HasMessage(key)) << key;
        EXPECT_NE(localizer.LocalizeMessage(key, du::Localizer::eThrow), key);
    }
    EXPECT_EQ(localizer.LocalizeMessage("DisplayPriorityUndo", du::AssembleArgs("%s", "Top"),
                                        du::Localizer::eReturnKey),
              "Display priority of Top");
    // Without arguments a placeholder stays visible rather than vanishing.
    EXPECT_EQ(localizer.LocalizeMessage("DisplayPriorityUndo", du::Localizer::eReturnKey),
              "Display priority of %1");
}

TEST(Localizer, MissingKeyOrCatalogueFollowsTheActionOnFailure) {
    du::Localizer const localizer("qzecad:qzecadStrings");
    EXPECT_EQ(localizer.LocalizeMessage("NoSuchKey", du::Localizer::eReturnKey), "NoSuchKey");
    EXPECT_EQ(static_cast<int>(du::Localizer::eReturnKey), 0);
    EXPECT_EQ(localizer.LocalizeMessage("NoSuchKey", du::Localizer::eReturnEmpty), "");
    EXPECT_THROW(localizer.LocalizeMessage("NoSuchKey", du::Localizer::eThrow), std::runtime_error);

    du::Localizer const missing("qzecad:noSuchCatalogue");
    EXPECT_TRUE(missing.GetCataloguePath().empty());
    EXPECT_EQ(missing.LocalizeMessage("LayerOverlay", du::Localizer::eReturnKey), "LayerOverlay");
}

TEST(AssembleArgs, FormatsEachArgumentByItsConversion) {
    du::AssembleArgs const args("%s %d %x %u", "pad", -3, 255, 7u);
    EXPECT_EQ(args.GetArgs(), (std::vector<std::string>{"pad", "-3", "ff", "7"}));
    EXPECT_EQ(args.Substitute("%4-%3-%2-%1 %5 100%"), "7-ff--3-pad %5 100%");
}

} // namespace
