#include <TibXml/tibutils/Json.h>
#include <TibXml/tibutils/Variant.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <thread>
#include <type_traits>

namespace {

using TibUtils::Variant;
using namespace TibUtils::Json;

template <class Kind>
bool throwsBadCast(Variant const& value) {
    try {
        value.Get<Kind>();
        return false;
    } catch (std::bad_cast const&) {
        return value.TryGet<Kind>() == nullptr && !value.Is<Kind>();
    }
}

// How many of the six kinds a value is, and how many it refuses to give.
std::pair<int, int> kindsOf(Variant const& v) {
    int const is = v.Is<NullType>() + v.Is<CString>() + v.Is<Object>() + v.Is<double>() +
                   v.Is<bool>() + v.Is<Array>();
    int const refused = throwsBadCast<NullType>(v) + throwsBadCast<CString>(v) +
                        throwsBadCast<Object>(v) + throwsBadCast<double>(v) +
                        throwsBadCast<bool>(v) + throwsBadCast<Array>(v);
    return {is, refused};
}

TEST(Variant, IsOfOneKind) {
    Variant const values[] = {{},      NullType{}, L"text", CString{L"t"}, Object{}, 1.5, 7, true,
                              Array{}, 0,          L""};
    for (Variant const& value : values)
        EXPECT_EQ(kindsOf(value), std::pair(1, 5)) << Write(value);
}

TEST(Variant, IsMadeFromEachKind) {
    EXPECT_TRUE(Variant{}.Is<NullType>());
    EXPECT_TRUE(Variant{NullType{}}.Get<NullType>() == NullType{});
    EXPECT_TRUE(Variant{L"text"}.Get<CString>() == L"text");
    EXPECT_TRUE(Variant{static_cast<wchar_t const*>(nullptr)}.Get<CString>().IsEmpty());
    EXPECT_TRUE(Variant{CString{L"text"}}.Get<CString>() == L"text");
    EXPECT_EQ(Variant{1.5}.Get<double>(), 1.5);
    EXPECT_EQ(Variant{1.5F}.Get<double>(), 1.5);
    EXPECT_EQ(Variant{-7}.Get<double>(), -7);
    EXPECT_EQ(Variant{7U}.Get<double>(), 7);
    EXPECT_EQ(Variant{INT64_MIN}.Get<double>(), -9223372036854775808.0);
    EXPECT_EQ(Variant{UINT64_MAX}.Get<double>(), 18446744073709551616.0);
    EXPECT_TRUE(Variant{true}.Get<bool>());
    EXPECT_FALSE(Variant{false}.Get<bool>());
    EXPECT_EQ(Variant{Object{}}.Get<Object>().GetSize(), 0U);
    EXPECT_EQ(Variant{Array{}}.Get<Array>().GetSize(), 0U);
}

TEST(Variant, IsNotMadeFromOtherThings) {
    EXPECT_FALSE((std::is_constructible_v<Variant, int*>));
    EXPECT_FALSE((std::is_constructible_v<Variant, char const*>));
    EXPECT_FALSE((std::is_constructible_v<Variant, wchar_t>));
    EXPECT_FALSE((std::is_constructible_v<Variant, char>));
}

TEST(Variant, CanBeChangedInPlace) {
    Variant value = L"a";
    value.Get<CString>() += L"b";
    EXPECT_EQ(Write(value), "\"ab\"");
    value = Object{};
    value.Get<Object>().AddValue(L"k", 1);
    EXPECT_EQ(Write(value), R"({"k":1})");
    value = 2;
    EXPECT_THROW(value.Get<Object>(), std::bad_cast);
    EXPECT_EQ(Write(value), "2");
}

TEST(JsonObject, KeepsOrderAndReplacesInPlace) {
    Object object;
    object.AddValue(L"z", 1);
    object.AddValue(L"a", 2);
    object.AddValue(L"", 3);
    object.AddValue(L"z", L"new");
    EXPECT_EQ(Write(object), R"({"z":"new","a":2,"":3})");
    EXPECT_EQ(object.GetSize(), 3U);
    EXPECT_TRUE(object.GetValueName(1) == L"a");
    EXPECT_EQ(object.GetValue(1).Get<double>(), 2);
    EXPECT_TRUE(object.GetValue(L"z").Get<CString>() == L"new");
    EXPECT_TRUE(object.HasValue(L""));
    EXPECT_FALSE(object.HasValue(L"Z"));
}

TEST(JsonObject, ThrowsForWhatIsNotThere) {
    Object object;
    EXPECT_FALSE(object.HasValue(L"k"));
    EXPECT_THROW(object.GetValue(L"k"), std::out_of_range);
    EXPECT_THROW(object.GetValue(0), std::out_of_range);
    EXPECT_THROW(object.GetValueName(0), std::out_of_range);
    object.AddValue(L"k", 1);
    EXPECT_THROW(object.GetValue(L"K"), std::out_of_range);
    EXPECT_THROW(object.GetValue(1), std::out_of_range);
    EXPECT_THROW(object.GetValueName(1), std::out_of_range);
}

TEST(JsonObject, FindsNamesAmongMany) {
    Object object;
    for (int i = 0; i < 5000; ++i)
        object.AddValue(std::to_wstring(i).c_str(), i);
    Object const copy = object;
    for (int i = 0; i < 5000; i += 2)
        object.AddValue(std::to_wstring(i).c_str(), -i);
    EXPECT_EQ(object.GetSize(), 5000U);
    for (int i = 0; i < 5000; ++i) {
        CString const name = std::to_wstring(i).c_str();
        EXPECT_EQ(object.GetValue(name).Get<double>(), i % 2 == 0 ? -i : i);
        EXPECT_EQ(copy.GetValue(name).Get<double>(), i);
        EXPECT_TRUE(object.GetValueName(static_cast<std::size_t>(i)) == name);
    }
    EXPECT_FALSE(object.HasValue(L"5000"));
}

TEST(JsonArray, KeepsOrder) {
    Array array;
    EXPECT_THROW(array.GetValue(0), std::out_of_range);
    array.AddValue(1);
    array.AddValue(L"two");
    array.AddValue({});
    EXPECT_EQ(Write(array), R"([1,"two",null])");
    EXPECT_EQ(array.GetSize(), 3U);
    EXPECT_THROW(array.GetValue(3), std::out_of_range);
}

TEST(JsonCopies, AreIndependent) {
    Array inner;
    inner.AddValue(1);
    Object object;
    object.AddValue(L"list", inner);
    Object copy = object;
    inner.AddValue(2);
    copy.AddValue(L"more", inner);
    EXPECT_EQ(Write(object), R"({"list":[1]})");
    EXPECT_EQ(Write(copy), R"({"list":[1],"more":[1,2]})");
    object = copy;
    copy = Object{};
    EXPECT_EQ(Write(object), R"({"list":[1],"more":[1,2]})");
    Object const moved = std::move(object);
    EXPECT_EQ(object.GetSize(), 0U); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(moved.GetSize(), 2U);
}

TEST(JsonCopies, AValueMayBePutIntoItself) {
    Object object;
    object.AddValue(L"a", 1);
    object.AddValue(L"self", object);
    object.AddValue(L"self", object);
    EXPECT_EQ(Write(object), R"({"a":1,"self":{"a":1,"self":{"a":1}}})");
    Array array;
    array.AddValue(array);
    array.AddValue(array);
    EXPECT_EQ(Write(array), "[[],[[]]]");
    Variant value = array;
    value = value.Get<Array>().GetValue(1);
    EXPECT_EQ(Write(value), "[[]]");
    auto const& self = value;
    value = self;
    EXPECT_EQ(Write(value), "[[]]");
}

TEST(JsonCopies, MayBeUsedOnDifferentThreads) {
    Object object;
    for (int i = 0; i < 100; ++i)
        object.AddValue(std::to_wstring(i).c_str(), i);
    auto const change = [copy = object]() mutable {
        for (int i = 0; i < 100; ++i) {
            Object another = copy;
            another.AddValue(L"0", L"changed");
            copy = another;
        }
    };
    std::thread first{change};
    std::thread second{change};
    first.join();
    second.join();
    EXPECT_EQ(object.GetValue(L"0").Get<double>(), 0);
}

// Lists and objects in turn.
Variant nested(int depth) {
    Variant value;
    for (int i = 0; i < depth; ++i) {
        Array array;
        array.AddValue(i);
        array.AddValue(std::move(value));
        Object object;
        object.AddValue(L"k", std::move(array));
        value = std::move(object);
    }
    return value;
}

TEST(JsonDepth, CostsNoStack) {
    constexpr int depth = 200'000;
    Variant value = nested(depth);
    Variant copy = value;
    copy.Get<Object>().AddValue(L"more", 1);
    EXPECT_EQ(copy.Get<Object>().GetSize(), 2U);
    value = {};
    std::string const text = Write(copy);
    EXPECT_EQ(text.substr(0, 12), R"({"k":[199999)");
    EXPECT_TRUE(text.ends_with("]}],\"more\":1}"));
}

TEST(JsonDepth, SharedValuesAreDestroyedOnce) {
    Variant value;
    for (int i = 0; i < 64; ++i) { // 2^64 values if none were shared
        Array array;
        array.AddValue(value);
        array.AddValue(value);
        value = std::move(array);
    }
    Variant const kept = value.Get<Array>().GetValue(0);
    value = {};
    EXPECT_EQ(kept.Get<Array>().GetSize(), 2U);
}

} // namespace
