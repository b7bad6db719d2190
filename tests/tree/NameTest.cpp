#include "Trees.h"

#include <tree/Text.h>

namespace tibxml::tree::test {

using Names = Tree;

TEST_F(Names, AreStoredOnce) {
    Name const* const name = this->name("local", "p", "urn:x");
    std::size_t const size = document().names().size();
    EXPECT_EQ(this->name("local", "p", "urn:x"), name);
    EXPECT_EQ(document().names().size(), size);
    EXPECT_EQ(name->qualified, "p:local");
    EXPECT_EQ(name->prefix, "p");
    EXPECT_EQ(name->local, "local");
    EXPECT_EQ(name->uri, "urn:x");
}

TEST_F(Names, DifferInEachPart) {
    Name const* const name = this->name("local", "p", "urn:x");
    EXPECT_NE(this->name("other", "p", "urn:x"), name);
    EXPECT_NE(this->name("local", "q", "urn:x"), name);
    EXPECT_NE(this->name("local", "p", "urn:y"), name);
    EXPECT_NE(this->name("local", "", "urn:x"), name);
    EXPECT_NE(this->name("local", "p", ""), name);
}

TEST_F(Names, ShareOneRecordPerExpandedName) {
    Name const* const standing = name("local", "p", "urn:x")->expanded;
    EXPECT_EQ(standing, name("local", "", "urn:x"));
    EXPECT_EQ(standing->expanded, standing);
    EXPECT_EQ(name("local", "q", "urn:x")->expanded, standing);
    EXPECT_NE(name("local", "p", "urn:y")->expanded, standing);
    EXPECT_EQ(document().names().findExpanded("local", "urn:x"), standing);
    EXPECT_EQ(document().names().findExpanded("local", ""), nullptr);
}

TEST_F(Names, OfOneExpandedNameUnderManyPrefixesAreFoundAsFast) {
    // In one bucket these would take a minute.
    constexpr int count = 200'000;
    for (int i = 0; i != count; ++i)
        name("local", "p" + std::to_string(i), "urn:x");
    EXPECT_EQ(name("local", "p7", "urn:x")->expanded, name("local", "", "urn:x"));
    EXPECT_EQ(document().names().size(), count + 1U);
}

TEST_F(Names, AreNotFoundInAnEmptyTable) {
    EXPECT_EQ(document().names().findExpanded("a", ""), nullptr);
}

TEST_F(Names, KnowDeclarations) {
    EXPECT_TRUE(name("xmlns", "", xmlnsNamespace)->declaresNamespace);
    EXPECT_TRUE(name("p", "xmlns", xmlnsNamespace)->declaresNamespace);
    EXPECT_FALSE(name("xmlns", "p", "urn:x")->declaresNamespace);
    EXPECT_FALSE(name("lang", "xml", xmlNamespace)->declaresNamespace);
    EXPECT_FALSE(name("xmlnsx")->declaresNamespace);
}

TEST_F(Names, StayWhereTheyAreWhileTheTableGrows) {
    std::vector<Name*> names;
    for (int i = 0; i != 5000; ++i)
        names.push_back(name("n" + std::to_string(i), i % 3 == 0 ? "p" : "", "urn:x"));
    EXPECT_EQ(document().names().size(), 5000U + 1667U) << "a prefixed one, and who stands for it";
    for (int i = 0; i != 5000; ++i) {
        auto const at = static_cast<std::size_t>(i);
        std::string const local = "n" + std::to_string(i);
        EXPECT_EQ(name(local, i % 3 == 0 ? "p" : "", "urn:x"), names[at]);
        EXPECT_EQ(document().names().findExpanded(local, "urn:x"), names[at]->expanded);
    }
}

TEST_F(Names, HaveAWideFormThatIsMadeOnce) {
    Name* const name = this->name("\xC3\xA4\xF0\x9F\x98\x80", "p", "urn:x");
    std::wstring_view const wide = document().names().wideForm(*name);
    EXPECT_TRUE(wide == L"p:\u00E4\U0001F600");
    EXPECT_EQ(wide.data()[wide.size()], L'\0');
    EXPECT_EQ(document().names().wideForm(*name).data(), wide.data());
}

TEST_F(Names, DoNotDependOnTheTextsGiven) {
    std::string local = "volatile";
    Name const* const name = this->name(local);
    local = "changed!";
    EXPECT_EQ(name->local, "volatile");
}

TEST(NameCharacters, FollowXml) {
    for (wchar_t const c :
         std::wstring_view{L"AZaz_\u00C0\u00D6\u00F8\u037F\u200C\u2070\u3001\U00010000"})
        EXPECT_TRUE(isNameStart(c) && isNamePart(c)) << static_cast<std::uint32_t>(c);
    for (wchar_t const c : std::wstring_view{L"-.09\u00B7\u0300\u036F\u203F\u2040"})
        EXPECT_TRUE(!isNameStart(c) && isNamePart(c)) << static_cast<std::uint32_t>(c);
    for (wchar_t const c : std::wstring_view{L" :@[`{/\u00D7\u00F7\u037E\u2000\u3000\uFFFE"})
        EXPECT_TRUE(!isNameStart(c) && !isNamePart(c)) << static_cast<std::uint32_t>(c);
}

} // namespace tibxml::tree::test
