// Engine objects in the terms of a test. Including this makes every test of the program fail that
// leaves objects.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include <TibXml/engine/IXMLDOMDocument.h>
#include <TibXml/platform/BStr.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Utf.h>
#include <calls/EngineCall.h>
#include <com/Measures.h>

namespace tibxml::com::test {

class LeakCheck final : public testing::EmptyTestEventListener {
    void OnTestStart(testing::TestInfo const& /*info*/) override { before_ = liveObjects(); }

    void OnTestEnd(testing::TestInfo const& /*info*/) override {
        EXPECT_EQ(liveObjects(), before_) << "objects of the engine were left behind";
    }

    std::size_t before_ = 0;
};

inline bool const leaksAreChecked = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new LeakCheck);
    return true;
}();

// Owns one reference.
template <class Object>
class Ptr {
public:
    Ptr() = default;

    Ptr(Ptr const& other) noexcept : object_{other.object_} {
        if (object_ != nullptr) object_->AddRef();
    }

    Ptr(Ptr&& other) noexcept : object_{std::exchange(other.object_, nullptr)} {}

    Ptr& operator=(Ptr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    ~Ptr() { reset(); }

    void reset() noexcept {
        if (object_ != nullptr) std::exchange(object_, nullptr)->Release();
    }

    // Where a call may put an object.
    Object** out() noexcept {
        reset();
        return &object_;
    }

    Object* get() const noexcept { return object_; }

    Object* operator->() const noexcept { return object_; }

    operator Object*() const noexcept { return object_; }

private:
    Object* object_ = nullptr;
};

using Document = Ptr<IXMLDOMDocument3>;
using Node = Ptr<IXMLDOMNode>;
using List = Ptr<IXMLDOMNodeList>;
using Map = Ptr<IXMLDOMNamedNodeMap>;

inline std::string utf8(std::wstring_view text) {
    std::string bytes;
    EXPECT_TRUE(platform::appendUtf8(bytes, text));
    return bytes;
}

inline std::string utf8(wchar_t const* text) {
    return text != nullptr ? utf8(std::wstring_view{text}) : "null";
}

inline std::string utf8(_bstr_t const& text) {
    return utf8(std::wstring_view{static_cast<wchar_t const*>(text), text.length()});
}

template <class Interface, class Object>
Ptr<Interface> as(Object* object) {
    Ptr<Interface> other;
    void* found = nullptr;
    if (object->QueryInterface(platform::iidOf<Interface>(), &found) == S_OK)
        *other.out() = static_cast<Interface*>(found);
    return other;
}

/// A new object of a class, which must be there.
template <class Interface>
Ptr<Interface> newObject(CLSID const& classId) {
    EnginePtr<Interface> made;
    EXPECT_EQ(tibxml::engine::createObject(classId, made), S_OK);
    Ptr<Interface> object;
    *object.out() = made.Detach();
    return object;
}

inline Document newDocument() {
    return newObject<IXMLDOMDocument3>(CLSID_DOMDocument60);
}

inline bool loadText(IXMLDOMDocument* document, wchar_t const* xml) {
    VARIANT_BOOL done = VARIANT_FALSE;
    HRESULT const result = document->loadXML(_bstr_t{xml}, &done);
    EXPECT_EQ(result, done == VARIANT_TRUE ? S_OK : S_FALSE);
    return done == VARIANT_TRUE;
}

// A document that must load.
inline Document documentOf(wchar_t const* xml) {
    Document document = newDocument();
    EXPECT_TRUE(loadText(document, xml)) << utf8(xml);
    return document;
}

// For arguments: the variant refers to the string and must not outlive it.
inline VARIANT variantOf(_bstr_t const& text) {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text;
    return value;
}

inline VARIANT variantOf(IUnknown* object) {
    VARIANT value{};
    value.vt = VT_UNKNOWN;
    value.punkVal = object;
    return value;
}

inline VARIANT variantOf(LONG number) {
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

inline std::string textOf(IXMLDOMNode* node) {
    _bstr_t text;
    EXPECT_EQ(node->get_text(text.GetAddress()), S_OK);
    return utf8(text);
}

inline std::string xmlOf(IXMLDOMNode* node) {
    _bstr_t text;
    EXPECT_EQ(node->get_xml(text.GetAddress()), S_OK);
    return utf8(text);
}

inline std::string nameOf(IXMLDOMNode* node) {
    _bstr_t text;
    EXPECT_EQ(node->get_nodeName(text.GetAddress()), S_OK);
    return utf8(text);
}

// The first node that an expression selects; null when there is none.
inline Node nodeAt(IXMLDOMNode* context, wchar_t const* expression) {
    Node node;
    EXPECT_GE(context->selectSingleNode(_bstr_t{expression}, node.out()), 0) << utf8(expression);
    return node;
}

inline List nodesAt(IXMLDOMNode* context, wchar_t const* expression) {
    List nodes;
    EXPECT_EQ(context->selectNodes(_bstr_t{expression}, nodes.out()), S_OK) << utf8(expression);
    return nodes;
}

template <class Nodes>
LONG lengthOf(Nodes* nodes) {
    LONG length = -1;
    EXPECT_EQ(nodes->get_length(&length), S_OK);
    return length;
}

// Null past the end.
template <class Nodes>
Node itemOf(Nodes* nodes, LONG index) {
    Node node;
    HRESULT const result = nodes->get_item(index, node.out());
    EXPECT_EQ(result, node.get() != nullptr ? S_OK : S_FALSE);
    return node;
}

inline Map attributesOf(IXMLDOMNode* node) {
    Map map;
    EXPECT_EQ(node->get_attributes(map.out()), S_OK);
    return map;
}

inline HRESULT setText(IXMLDOMNode* node, wchar_t const* text) {
    return node->put_text(_bstr_t{text});
}

inline Ptr<IUnknown> identityOf(IUnknown* object) {
    Ptr<IUnknown> identity;
    void* found = nullptr;
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, &found), S_OK);
    *identity.out() = static_cast<IUnknown*>(found);
    return identity;
}

inline bool isSame(IUnknown* one, IUnknown* other) {
    return identityOf(one).get() == identityOf(other).get();
}

// Takes the words that the last failing call left; empty when it left none.
inline std::string takeErrorText() {
    Ptr<IErrorInfo> info;
    if (GetErrorInfo(0, info.out()) != S_OK) return {};
    _bstr_t text;
    EXPECT_EQ(info->GetDescription(text.GetAddress()), S_OK);
    return utf8(text);
}

} // namespace tibxml::com::test
