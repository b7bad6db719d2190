#include "EngineTest.h"

#include <type_traits>
#include <utility>

namespace {

static_assert(!std::is_default_constructible_v<WXmlValueAccessor>);
static_assert(std::is_nothrow_move_constructible_v<WXmlValueAccessor>);
static_assert(std::is_nothrow_move_assignable_v<WXmlValueAccessor>);

WXmlNodePtr noNode() {
    return {};
}

/// Expects that an accessor names nothing: always absent, never writable.
void expectNothing(WXmlValueAccessor accessor) {
    EXPECT_FALSE(accessor.Exists());
    EXPECT_TRUE(accessor.IsEmpty());
    EXPECT_EQ(accessor.GetInt(7), 7);
    EXPECT_NO_THROW(accessor.Clear());
    accessor.Delete();
    accessor.SetBinary(nullptr, 0);
    EXPECT_EQ(missingTypeOf([&] { accessor.SetBool(true); }), "bool");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetInt(1); }), "int");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetIntPtr(1); }), "intptr");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetUIntPtr(1); }), "uintptr_t");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetDouble(1); }), "double");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetString(L"x"); }), "string");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetPoint({1, 2}); }), "rect");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetSize({1, 2}); }), "rect");
    EXPECT_EQ(missingTypeOf([&] { accessor.SetRect({1, 2, 3, 4}); }), "rect");
    EXPECT_EQ(missingTypeOf([&] { accessor.GetBinary(nullptr, 0); }), "binary");
}

TEST(Accessor, ANullOrEmptySelectorNamesNothing) {
    WXmlDoc const document = loaded(L"<a>text</a>");
    expectNothing(document.GetRootNode().Attribute(nullptr));
    expectNothing(document.GetRootNode().Attribute(L""));
    EXPECT_EQ(utf8(document.SaveToString()), "<a>text</a>\n");
}

TEST(Accessor, WithoutANodeThereIsNothing) {
    expectNothing(WXmlValueAccessor{noNode(), L"."});
    expectNothing(WXmlValueAccessor{noNode(), L"@a"});
    expectNothing(WXmlNode{}.Value());
    expectNothing(WXmlNode{}.Attribute(L"@a"));
}

TEST(Accessor, TheTextOfAnElementIsAllTextInIt) {
    WXmlDoc const document = loaded(L"<a>x<b>y</b><!--no--><![CDATA[z]]></a>");
    EXPECT_EQ(utf8(document.GetRootNode().Value().GetString()), "xyz");
}

TEST(Accessor, OtherNodesHaveTheirText) {
    WXmlDoc const document = loaded(L"<a b='1'>x<!--c--><?p i?></a>");
    EXPECT_EQ(utf8(nodeAt(document, L"text()").Value().GetString()), "x");
    EXPECT_EQ(utf8(nodeAt(document, L"comment()").Value().GetString()), "c");
    EXPECT_EQ(utf8(nodeAt(document, L"@b").Value().GetString()), "1");
    EXPECT_EQ(utf8(nodeAt(document, L"/").Value().GetString()), "x");
}

TEST(Accessor, OnlyASingleDotIsTheNode) {
    WXmlNode const node = loaded(L"<a _='1'>text</a>").GetRootNode();
    EXPECT_EQ(utf8(node.Attribute(L".").GetString()), "text");
    EXPECT_EQ(utf8(node.Attribute(L"._").GetString()), "1");
    EXPECT_FALSE(node.Attribute(L"..").Exists());
    EXPECT_FALSE(node.Attribute(L"@").Exists()) << "an attribute without name";
}

TEST(Accessor, DeletingATextDoesNothingClearingEmptiesIt) {
    WXmlDoc const document = loaded(L"<a k='1'>x<b>y</b></a>");
    WXmlValueAccessor value = document.GetRootNode().Value();
    value.Delete();
    EXPECT_EQ(utf8(document.SaveToString()), "<a k=\"1\">x<b>y</b></a>\n");
    value.Clear();
    EXPECT_EQ(utf8(document.SaveToString()), "<a k=\"1\"/>\n");
    EXPECT_TRUE(value.Exists());
    EXPECT_TRUE(value.IsEmpty());
}

TEST(Accessor, AnAttributeComesAndGoes) {
    WXmlDoc const document = loaded(L"<a/>");
    WXmlValueAccessor attribute = document.GetRootNode().Attribute(L"@k");
    EXPECT_FALSE(attribute.Exists());
    EXPECT_TRUE(attribute.IsEmpty());
    attribute.Clear();
    EXPECT_FALSE(attribute.Exists()) << "clearing creates nothing";
    attribute.SetInt(5);
    EXPECT_EQ(utf8(document.SaveToString()), "<a k=\"5\"/>\n");
    attribute.Clear();
    EXPECT_TRUE(attribute.Exists());
    EXPECT_TRUE(attribute.IsEmpty());
    attribute.Delete();
    EXPECT_EQ(utf8(document.SaveToString()), "<a/>\n");
    EXPECT_FALSE(attribute.Exists());
    attribute.Delete();
    EXPECT_FALSE(attribute.Exists()) << "nothing to delete is no fault";
}

TEST(Accessor, EverySetterCreatesTheAttribute) {
    auto const after = [](auto const& set) {
        WXmlDoc const document = loaded(L"<a/>");
        set(document.GetRootNode().Attribute(L"@k"));
        return utf8(document.GetRootNode().GetXML());
    };
    using Accessor = WXmlValueAccessor;
    EXPECT_EQ(after([](Accessor a) { a.SetBool(true); }), "<a k=\"true\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetIntPtr(-1); }), "<a k=\"-1\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetUIntPtr(1); }), "<a k=\"1\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetDouble(1); }), "<a k=\"1.000000\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetString(L""); }), "<a k=\"\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetPoint({1, 2}); }), "<a k=\"(1,2)\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetSize({1, 2}); }), "<a k=\"(1,2)\"/>");
    EXPECT_EQ(after([](Accessor a) { a.SetRect({1, 2, 3, 4}); }), "<a k=\"1,2,3,4\"/>");
}

TEST(Accessor, WhatCannotCarryAttributesHasNone) {
    WXmlDoc const document = loaded(L"<a b='1'>text<!--c--></a>");
    for (wchar_t const* const path : {L"text()", L"comment()", L"@b", L"/"}) {
        WXmlValueAccessor accessor = nodeAt(document, path).Attribute(L"@k");
        EXPECT_FALSE(accessor.Exists()) << utf8(path);
        EXPECT_TRUE(accessor.IsEmpty()) << utf8(path);
        EXPECT_EQ(missingTypeOf([&] { accessor.SetInt(1); }), "int") << utf8(path);
        accessor.Delete();
    }
    EXPECT_EQ(utf8(document.SaveToString()), "<a b=\"1\">text<!--c--></a>\n");
}

TEST(Accessor, NamesThatAreNoneCannotBeWritten) {
    WXmlDoc const document = loaded(L"<a/>");
    for (wchar_t const* const name : {L"@", L"@1", L"@a b", L"@p:k"}) {
        WXmlValueAccessor accessor = document.GetRootNode().Attribute(name);
        EXPECT_EQ(missingTypeOf([&] { accessor.SetInt(1); }), "int") << utf8(name);
    }
    EXPECT_EQ(utf8(document.SaveToString()), "<a/>\n");
}

TEST(Accessor, PrefixesAreThoseOfTheElement) {
    WXmlDoc const document = loaded(L"<a xmlns:p='urn:p' p:k='1'/>");
    EXPECT_EQ(document.GetRootNode().Attribute(L"@p:k").GetInt(), 1);
    document.GetRootNode().Attribute(L"@p:m").SetInt(2);
    EXPECT_EQ(utf8(document.SaveToString()), "<a xmlns:p=\"urn:p\" p:k=\"1\" p:m=\"2\"/>\n");
}

TEST(Accessor, AttributeValuesAreExact) {
    WXmlDoc const document = loaded(L"<a k=' a  b&#10;'/>");
    EXPECT_EQ(utf8(document.GetRootNode().Attribute(L"@k").GetString()), " a  b\n");
}

TEST(Accessor, ResolvesAnewEachTime) {
    WXmlNode const node = loaded(L"<a/>").GetRootNode();
    WXmlValueAccessor const before = node.Attribute(L"@k");
    WXmlValueAccessor const copy = before;
    EXPECT_FALSE(copy.Exists());
    node.Attribute(L"@k").SetInt(3);
    EXPECT_EQ(before.GetInt(), 3);
    EXPECT_EQ(copy.GetInt(), 3);
    node.Attribute(L"@k").Delete();
    EXPECT_FALSE(copy.Exists());
}

TEST(Accessor, CopiesNameTheSameValue) {
    WXmlNode const node = loaded(L"<a k='1'>2</a>").GetRootNode();
    WXmlValueAccessor accessor = node.Value();
    accessor = node.Attribute(L"@k");
    EXPECT_EQ(accessor.GetInt(), 1);
    WXmlValueAccessor& same = accessor;
    accessor = same;
    EXPECT_EQ(accessor.GetInt(), 1);
    WXmlValueAccessor copy = accessor;
    copy.SetInt(4);
    EXPECT_EQ(accessor.GetInt(), 4);
}

TEST(Accessor, WhatWasMovedFromNamesNothing) {
    // NOLINTBEGIN(bugprone-use-after-move): that is what is tested
    WXmlNode const node = loaded(L"<a k='1'>2</a>").GetRootNode();
    WXmlValueAccessor accessor = node.Attribute(L"@k");
    WXmlValueAccessor moved = std::move(accessor);
    EXPECT_EQ(moved.GetInt(), 1);
    EXPECT_FALSE(accessor.Exists());
    EXPECT_TRUE(accessor.IsEmpty());
    WXmlValueAccessor assigned = node.Value();
    assigned = std::move(moved);
    EXPECT_EQ(assigned.GetInt(), 1);
    EXPECT_FALSE(moved.Exists());
    EXPECT_EQ(missingTypeOf([&] { moved.SetInt(1); }), "int");
    moved.Delete();
    accessor = assigned;
    EXPECT_EQ(accessor.GetInt(), 1);
    WXmlValueAccessor& same = accessor;
    accessor = std::move(same);
    EXPECT_EQ(accessor.GetInt(), 1);
    // NOLINTEND(bugprone-use-after-move)
}

} // namespace
