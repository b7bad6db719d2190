#include "EngineTest.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

constexpr wchar_t const* strings = L"<stringMap>"
                                   L"<context name='menu'>"
                                   L"<string nonTranslatableString='open' locString='\u00d6ffnen'/>"
                                   L"<string nonTranslatableString='close' locString='Zu'/>"
                                   L"<string nonTranslatableString='open' locString='second'/>"
                                   L"<string nonTranslatableString='none'/>"
                                   L"<string nonTranslatableString='empty' locString=''/>"
                                   L"<string nonTranslatableString='a:b' locString='colon'/>"
                                   L"<!--note--><other nonTranslatableString='x' locString='y'/>"
                                   L"</context>"
                                   L"<context name='dialog'>"
                                   L"<string nonTranslatableString='open' locString='Auf'/>"
                                   L"<string nonTranslatableString='shut' locString='Zu'/>"
                                   L"</context>"
                                   L"<context name='menu'>"
                                   L"<string nonTranslatableString='open' locString='third'/>"
                                   L"<string nonTranslatableString='end' locString='Zu'/>"
                                   L"</context>"
                                   L"<context name='a:b'>"
                                   L"<string nonTranslatableString='k' locString='deep'/>"
                                   L"</context>"
                                   L"</stringMap>";

std::string locOf(WXmlStringMap const& map, wchar_t const* context, wchar_t const* key) {
    CString found = L"untouched";
    bool const isFound = map.GetLocStringFromNTString(context, key, found);
    EXPECT_TRUE(isFound || found == L"untouched");
    return isFound ? utf8(found) : "(none)";
}

std::string keyOf(WXmlStringMap const& map, wchar_t const* context, wchar_t const* text) {
    CString found = L"untouched";
    bool const isFound = map.GetNTStringFromLocString(context, text, found);
    EXPECT_TRUE(isFound || found == L"untouched");
    return isFound ? utf8(found) : "(none)";
}

class StringMap : public testing::Test {
protected:
    StringMap() { EXPECT_TRUE(map.LoadFromString(strings)); }

    WXmlStringMap map;
};

TEST_F(StringMap, FindsLocalisedForms) {
    struct Row {
        wchar_t const* context;
        wchar_t const* key;
        std::string expected;
    };

    Row const rows[] = {
        {L"menu", L"open", "\u00d6ffnen"}, // the first of three
        {L"menu", L"close", "Zu"},
        {L"menu", L"end", "Zu"}, // in another element of the same context
        {L"menu", L"empty", ""},
        {L"menu", L"a:b", "colon"},
        {L"dialog", L"open", "Auf"},
        {L"a:b", L"k", "deep"},
        {L"menu", L"none", "(none)"}, // no localised form
        {L"menu", L"x", "(none)"},    // not a string element
        {L"menu", L"shut", "(none)"},
        {L"menu", L"Open", "(none)"},
        {L"Menu", L"open", "(none)"},
        {L"", L"open", "(none)"},
        {L"menu", L"", "(none)"},
    };
    for (int round = 0; round < 2; ++round) {
        for (Row const& row : rows)
            EXPECT_EQ(locOf(map, row.context, row.key), row.expected)
                << utf8(row.context) << ' ' << utf8(row.key);
    }
}

TEST_F(StringMap, ApostrophesFindNothing) {
    for (wchar_t const* text : {L"'", L"it's", L"''", L"x' or 'a'='a", L"open'][@x='"}) {
        EXPECT_EQ(locOf(map, L"menu", text), "(none)") << utf8(text);
        EXPECT_EQ(locOf(map, text, L"open"), "(none)") << utf8(text);
    }
}

TEST_F(StringMap, QuotesAndBracketsAreText) {
    ASSERT_TRUE(map.LoadFromString(L"<s><context name='a[\"]'>"
                                   L"<string nonTranslatableString='%s/]&amp;' locString='x'/>"
                                   L"</context></s>"));
    EXPECT_EQ(locOf(map, L"a[\"]", L"%s/]&"), "x");
}

TEST_F(StringMap, KeysAreKnownOnceTheirFormWasLookedUp) {
    EXPECT_EQ(keyOf(map, L"menu", L"\u00d6ffnen"), "(none)");
    EXPECT_EQ(locOf(map, L"menu", L"open"), "\u00d6ffnen");
    EXPECT_EQ(keyOf(map, L"menu", L"\u00d6ffnen"), "open");
    EXPECT_EQ(keyOf(map, L"dialog", L"\u00d6ffnen"), "(none)");
    EXPECT_EQ(keyOf(map, L"men", L"\u00d6ffnen"), "(none)");
    EXPECT_EQ(keyOf(map, L"", L"\u00d6ffnen"), "(none)");
    EXPECT_EQ(keyOf(map, L"menu", L"\u00f6ffnen"), "(none)");
    EXPECT_EQ(keyOf(map, L"menu", L"second"), "(none)");
}

TEST_F(StringMap, TheSmallestOfSeveralKeysCounts) {
    locOf(map, L"menu", L"end");
    EXPECT_EQ(keyOf(map, L"menu", L"Zu"), "end");
    locOf(map, L"menu", L"close");
    EXPECT_EQ(keyOf(map, L"menu", L"Zu"), "close");
    locOf(map, L"dialog", L"shut");
    EXPECT_EQ(keyOf(map, L"menu", L"Zu"), "close");
    EXPECT_EQ(keyOf(map, L"dialog", L"Zu"), "shut");
}

TEST_F(StringMap, KeysMayHoldColonsAndContextsMayNot) {
    EXPECT_EQ(locOf(map, L"menu", L"a:b"), "colon");
    EXPECT_EQ(keyOf(map, L"menu", L"colon"), "a:b");
    EXPECT_EQ(locOf(map, L"a:b", L"k"), "deep");
    EXPECT_EQ(keyOf(map, L"a:b", L"deep"), "(none)");
    EXPECT_EQ(keyOf(map, L"a", L"deep"), "b:k");
}

TEST_F(StringMap, MissesAreNotRemembered) {
    EXPECT_EQ(locOf(map, L"menu", L"none"), "(none)");
    EXPECT_EQ(keyOf(map, L"menu", L""), "(none)");
    EXPECT_EQ(keyOf(map, L"menu", L"untouched"), "(none)");
}

TEST_F(StringMap, EmptyFormsAreFormsLikeOthers) {
    EXPECT_EQ(locOf(map, L"menu", L"empty"), "");
    EXPECT_EQ(keyOf(map, L"menu", L""), "empty");
}

TEST_F(StringMap, EveryLoadForgets) {
    locOf(map, L"menu", L"open");
    EXPECT_TRUE(map.LoadFromString(L"<s/>"));
    EXPECT_EQ(keyOf(map, L"menu", L"\u00d6ffnen"), "(none)");
    EXPECT_EQ(locOf(map, L"menu", L"open"), "(none)");
}

TEST_F(StringMap, AFailedLoadForgetsToo) {
    locOf(map, L"menu", L"open");
    for (wchar_t const* text : {L"", L"<s>", L"no xml", L"<!DOCTYPE s><s/>"}) {
        EXPECT_FALSE(map.LoadFromString(text));
        EXPECT_EQ(keyOf(map, L"menu", L"\u00d6ffnen"), "(none)");
        EXPECT_EQ(locOf(map, L"menu", L"open"), "(none)");
    }
    EXPECT_TRUE(map.LoadFromString(strings));
    EXPECT_EQ(locOf(map, L"menu", L"open"), "\u00d6ffnen");
}

TEST_F(StringMap, CopiesShareTheDocumentAndRememberForThemselves) {
    locOf(map, L"menu", L"open");
    WXmlStringMap copy{map};
    EXPECT_EQ(keyOf(copy, L"menu", L"\u00d6ffnen"), "open");
    locOf(copy, L"dialog", L"open");
    EXPECT_EQ(keyOf(copy, L"dialog", L"Auf"), "open");
    EXPECT_EQ(keyOf(map, L"dialog", L"Auf"), "(none)");

    EXPECT_TRUE(copy.LoadFromString(L"<s><context name='menu'>"
                                    L"<string nonTranslatableString='new' locString='Neu'/>"
                                    L"</context></s>"));
    EXPECT_EQ(locOf(map, L"menu", L"new"), "Neu");
    EXPECT_EQ(locOf(map, L"menu", L"open"), "\u00d6ffnen") << "remembered";
    EXPECT_EQ(locOf(map, L"menu", L"close"), "(none)");
}

TEST_F(StringMap, ADocumentLivesAsLongAsTheLastOfItsMaps) {
    auto first = std::make_unique<WXmlStringMap>(map);
    auto second = std::make_unique<WXmlStringMap>(*first);
    map = WXmlStringMap{};
    first.reset();
    EXPECT_EQ(locOf(*second, L"menu", L"open"), "\u00d6ffnen");
}

TEST_F(StringMap, AssignmentTakesDocumentAndMemory) {
    WXmlStringMap other;
    ASSERT_TRUE(other.LoadFromString(L"<s><context name='c'>"
                                     L"<string nonTranslatableString='k' locString='v'/>"
                                     L"</context></s>"));
    locOf(other, L"c", L"k");
    locOf(map, L"menu", L"open");
    map = other;
    EXPECT_EQ(keyOf(map, L"menu", L"\u00d6ffnen"), "(none)");
    EXPECT_EQ(locOf(map, L"menu", L"open"), "(none)");
    EXPECT_EQ(keyOf(map, L"c", L"v"), "k");
    auto const& self = map;
    map = self;
    EXPECT_EQ(keyOf(map, L"c", L"v"), "k");
    EXPECT_EQ(locOf(map, L"c", L"k"), "v");
}

TEST(StringMapWithoutDocument, ThrowsTheIntegerOne) {
    WXmlStringMap const map;
    CString text;
    EXPECT_EQ(intOf([&] { map.GetLocStringFromNTString(L"c", L"k", text); }), 1);
    EXPECT_EQ(intOf([&] { map.GetLocStringFromNTString(L"c", L"'", text); }), 1);
    EXPECT_EQ(keyOf(map, L"c", L"v"), "(none)");
    WXmlStringMap const copy{map};
    EXPECT_EQ(intOf([&] { copy.GetLocStringFromNTString(L"c", L"k", text); }), 1);
}

TEST(StringMapWithoutDocument, TheDestructorIsVirtual) {
    struct Derived : WXmlStringMap {
        explicit Derived(bool& flag) : isGone{flag} {}

        ~Derived() override { isGone = true; }

        bool& isGone;
    };

    bool isGone = false;
    WXmlStringMap* const map = new Derived{isGone};
    delete map;
    EXPECT_TRUE(isGone);
}

class StringMapFile : public testing::Test {
protected:
    CString path(char const* name) const { return CString((folder_ / name).wstring().c_str()); }

    void write(char const* name, std::string const& text) {
        std::ofstream{folder_ / name, std::ios::binary} << text;
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

private:
    static std::filesystem::path newFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "stringsXXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error{"no temporary folder"};
        return name;
    }

    std::filesystem::path folder_ = newFolder();
};

TEST_F(StringMapFile, IsLoaded) {
    write("s.xml", "<s><context name='c'><string nonTranslatableString='k' locString='\u00fc'/>"
                   "</context></s>");
    WXmlStringMap map;
    EXPECT_TRUE(map.Load(path("s.xml")));
    EXPECT_EQ(locOf(map, L"c", L"k"), "\u00fc");
    EXPECT_TRUE(map.Load(path("s.xml")));
    EXPECT_EQ(keyOf(map, L"c", L"\u00fc"), "(none)");
}

TEST_F(StringMapFile, ThatIsMissingIsAnEmptyMap) {
    for (CString const& missing : {path("gone.xml"), path("."), CString{}}) {
        WXmlStringMap map;
        ASSERT_TRUE(map.LoadFromString(strings));
        locOf(map, L"menu", L"open");
        EXPECT_TRUE(map.Load(missing));
        EXPECT_EQ(locOf(map, L"menu", L"open"), "(none)");
        EXPECT_EQ(keyOf(map, L"menu", L"\u00d6ffnen"), "(none)");
    }
}

TEST_F(StringMapFile, ThatIsNotWellFormedIsAFailure) {
    write("bad.xml", "<s><context>");
    WXmlStringMap map;
    EXPECT_FALSE(map.Load(path("bad.xml")));
    EXPECT_EQ(locOf(map, L"c", L"k"), "(none)");
}

// Every string once, over contexts in turn: more runs of siblings than an engine may care to index.
TEST(LargeStringMap, EveryStringIsFound) {
    constexpr int contexts = 100;
    constexpr int perContext = 300;
    std::wstring xml = L"<s>";
    for (int c = 0; c < contexts; ++c) {
        xml += L"<context name='c" + std::to_wstring(c) + L"'>";
        for (int k = 0; k < perContext; ++k)
            xml += L"<string nonTranslatableString='k" + std::to_wstring(k) + L"' locString='" +
                   std::to_wstring(c) + L"/" + std::to_wstring(k) + L"'/>";
        xml += L"</context>";
    }
    WXmlStringMap map;
    ASSERT_TRUE(map.LoadFromString(CString((xml + L"</s>").c_str())));
    for (int k = 0; k < perContext; ++k) {
        for (int c = 0; c < contexts; ++c) {
            CString found;
            ASSERT_TRUE(map.GetLocStringFromNTString((L"c" + std::to_wstring(c)).c_str(),
                                                     (L"k" + std::to_wstring(k)).c_str(), found));
            ASSERT_EQ(utf8(found), std::to_string(c) + "/" + std::to_string(k));
        }
    }
}

} // namespace
