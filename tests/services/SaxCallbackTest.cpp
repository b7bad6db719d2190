#include "EngineTest.h"

#include <type_traits>

namespace {

using TextCallback = WXmlSaxCallback<WXmlSaxText const*>;

bool countCall(void* context) {
    ++*static_cast<int*>(context);
    return true;
}

template <class Callback, class Callable>
concept CanBind = requires(Callback callback, Callable&& callable) {
    callback.Bind(std::forward<Callable>(callable));
};

TEST(SaxCallback, IsTwoWords) {
    EXPECT_EQ(sizeof(TextCallback), 2 * sizeof(void*));
    EXPECT_TRUE(std::is_aggregate_v<TextCallback>);
    EXPECT_TRUE(std::is_trivially_copyable_v<TextCallback>);
    EXPECT_TRUE(std::is_standard_layout_v<TextCallback>);
}

TEST(SaxCallback, IsEmptyAtFirstAndWhenCleared) {
    WXmlSaxCallback<> callback;
    EXPECT_TRUE(callback.IsEmpty());
    int calls = 0;
    callback = {&calls, countCall};
    EXPECT_FALSE(callback.IsEmpty());
    callback.Clear();
    EXPECT_TRUE(callback.IsEmpty());
}

TEST(SaxCallback, IsNotEmptyWithoutContext) {
    WXmlSaxCallback<> const callback{nullptr, countCall};
    EXPECT_FALSE(callback.IsEmpty());
}

TEST(SaxCallback, BindsALambdaWithItsState) {
    int sum = 0;
    auto add = [&sum, factor = 2](WXmlSaxText const* text) {
        sum += factor * text->length;
        return sum < 10;
    };
    TextCallback callback;
    callback.Bind(add);
    EXPECT_EQ(callback.context, &add);
    WXmlSaxText const text{L"abc", 3};
    EXPECT_TRUE(callback.function(callback.context, &text));
    EXPECT_FALSE(callback.function(callback.context, &text));
    EXPECT_EQ(sum, 12);
}

TEST(SaxCallback, BindsAConstantObject) {
    auto const never = [] { return false; };
    WXmlSaxCallback<> callback;
    callback.Bind(never);
    EXPECT_FALSE(callback.function(callback.context));
}

TEST(SaxCallback, RefusesATemporary) {
    auto lambda = [] { return true; };
    EXPECT_TRUE((CanBind<WXmlSaxCallback<>, decltype(lambda)&>));
    EXPECT_TRUE((CanBind<WXmlSaxCallback<>, decltype(lambda) const&>));
    EXPECT_FALSE((CanBind<WXmlSaxCallback<>, decltype(lambda)>));
    EXPECT_FALSE((CanBind<WXmlSaxCallback<>, decltype(lambda) const>));
}

TEST(SaxObject, BeginsWithEmptyCallbacks) {
    WXmlSax const sax;
    EXPECT_TRUE(sax.OnStartDocument.IsEmpty());
    EXPECT_TRUE(sax.OnEndDocument.IsEmpty());
    EXPECT_TRUE(sax.OnStartElement.IsEmpty());
    EXPECT_TRUE(sax.OnEndElement.IsEmpty());
    EXPECT_TRUE(sax.OnCharacters.IsEmpty());
}

TEST(SaxObject, HasItsCallbacksInOrderAndOneMoreWord) {
    WXmlSax const sax;
    auto const* const begin = reinterpret_cast<char const*>(&sax);
    auto const place = [&](auto const& slot) {
        return static_cast<std::size_t>(reinterpret_cast<char const*>(&slot) - begin) /
               sizeof(void*);
    };
    EXPECT_EQ(place(sax.OnStartDocument), 1U); // after the table of virtual functions
    EXPECT_EQ(place(sax.OnEndDocument), 3U);
    EXPECT_EQ(place(sax.OnStartElement), 5U);
    EXPECT_EQ(place(sax.OnEndElement), 7U);
    EXPECT_EQ(place(sax.OnCharacters), 9U);
    EXPECT_EQ(sizeof sax, 12 * sizeof(void*));
}

TEST(SaxObject, CanBeDerivedFromAndNotCopied) {
    EXPECT_TRUE(std::has_virtual_destructor_v<WXmlSax>);
    EXPECT_FALSE(std::is_copy_constructible_v<WXmlSax>);
    EXPECT_FALSE(std::is_copy_assignable_v<WXmlSax>);
}

TEST(SaxText, HasItsFieldsInOrder) {
    WXmlSaxText const text{L"ab", 2};
    EXPECT_EQ(text.length, 2);
    WXmlSaxAttribute const attribute{L"a", 1, L"bcd", 3};
    EXPECT_EQ(attribute.nameLength, 1);
    EXPECT_EQ(attribute.valueLength, 3);
    EXPECT_EQ(sizeof(text.length), 4U);
}

} // namespace
