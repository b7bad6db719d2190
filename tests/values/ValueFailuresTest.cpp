// What becomes of failures that an engine reports while a value is looked up, read or written.
#include "EngineTest.h"

#include <array>

namespace {

using Calls = std::vector<std::string>;

class ValueFailures : public testing::Test {
protected:
    template <class Action>
    void expectRaised(char const* function, Action const& action) {
        behaviour->codes[function] = E_ACCESSDENIED;
        EXPECT_EQ(codeOf(action), E_ACCESSDENIED) << function;
        EXPECT_EQ(descriptionOf(action), std::string{"no "} + function);
        behaviour->codes.clear();
    }

    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    fake::Node* engine = nullptr;
    WXmlNodePtr pointer = fake::make<fake::Node, IXMLDOMNode>(behaviour, engine);
    WXmlValueAccessor value{pointer, L"."};
    WXmlValueAccessor named{pointer, L"@k"};
};

TEST_F(ValueFailures, ReadingAnExistingTargetRaises) {
    expectRaised("text", [&] { value.GetInt(0); });
    expectRaised("text", [&] { value.GetString(L""); });
    expectRaised("text", [&] { value.IsEmpty(); });
    expectRaised("nodeType", [&] { value.GetInt_throws(); });
    expectRaised("nodeTypedValue", [&] { value.GetBinary(nullptr, 0); });
    EXPECT_EQ(behaviour->asked.back(), IID_IXMLDOMNode);
}

TEST_F(ValueFailures, WritingAnExistingTargetRaises) {
    expectRaised("put text", [&] { value.SetInt(1); });
    expectRaised("put text", [&] { value.SetString(L""); });
    expectRaised("put text", [&] { value.SetPoint({1, 2}); });
    expectRaised("put text", [&] { value.SetInt(1, 1); });
    expectRaised("put text", [&] { value.Clear(); });
}

TEST_F(ValueFailures, ExistingNeedsNoCall) {
    EXPECT_TRUE(value.Exists());
    EXPECT_TRUE(behaviour->calls.empty());
}

TEST_F(ValueFailures, TheTextIsReadBeforeTheKind) {
    EXPECT_EQ(utf8(value.GetString()), "text");
    EXPECT_EQ(behaviour->calls, (Calls{"text", "nodeType"}));
}

TEST_F(ValueFailures, NullTextIsEmpty) {
    engine->text = nullptr;
    EXPECT_EQ(utf8(value.GetString()), "");
    EXPECT_TRUE(value.IsEmpty());
    EXPECT_EQ(value.GetInt(3), 3);
    EXPECT_EQ(value.GetDouble(3), 3);
    EXPECT_TRUE(value.GetRect({1, 2, 3, 4}) == (CRect{1, 2, 3, 4}));
}

TEST_F(ValueFailures, TextsArePassedAsTheyAre) {
    value.Clear();
    EXPECT_EQ(engine->writtenText, L"");
    value.SetString(nullptr);
    EXPECT_EQ(engine->writtenText, L"(null)");
    value.SetRect({1, 2, 3, 4});
    EXPECT_EQ(engine->writtenText, L"1,2,3,4");
}

class AttributeFailures : public ValueFailures {
protected:
    AttributeFailures() {
        engine->attributes = fake::make<fake::Map, IXMLDOMNamedNodeMap>(ofMap, map);
        map->named = fake::make<fake::Attribute, IXMLDOMNode>(ofAttribute, attribute);
        attribute->text = L"normalised";
        attribute->value = _variant_t{L"exact"};
    }

    std::shared_ptr<fake::Behaviour> ofMap = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> ofAttribute = std::make_shared<fake::Behaviour>();
    fake::Map* map = nullptr;
    fake::Attribute* attribute = nullptr;
};

TEST_F(AttributeFailures, TheExactValueCounts) {
    EXPECT_EQ(utf8(named.GetString()), "exact");
    EXPECT_EQ(ofAttribute->calls, (Calls{"text", "nodeType", "value"}));
}

TEST_F(AttributeFailures, ANullValueLeavesTheText) {
    attribute->value.vt = VT_NULL;
    SysFreeString(attribute->value.bstrVal);
    EXPECT_EQ(utf8(named.GetString()), "normalised");
    attribute->value = _variant_t{};
    EXPECT_EQ(utf8(named.GetString()), "") << "nothing is not null";
}

TEST_F(AttributeFailures, AValueThatIsNoStringIsRaised) {
    attribute->value = _variant_t{5};
    EXPECT_EQ(codeOf([&] { return named.GetString(); }), DISP_E_TYPEMISMATCH);
}

TEST_F(AttributeFailures, AnAttributeWithoutItsInterfaceHasItsText) {
    ofAttribute->refused = {{IID_IXMLDOMAttribute, E_NOINTERFACE}};
    EXPECT_EQ(utf8(named.GetString()), "normalised");
    ofAttribute->refused = {{IID_IXMLDOMAttribute, E_UNEXPECTED}};
    EXPECT_EQ(codeOf([&] { return named.GetString(); }), E_UNEXPECTED);
}

TEST_F(AttributeFailures, AFailingValueIsRaised) {
    ofAttribute->codes["value"] = E_FAIL;
    EXPECT_EQ(descriptionOf([&] { return named.GetString(); }), "no value");
    EXPECT_EQ(ofAttribute->asked.back(), IID_IXMLDOMAttribute);
}

TEST_F(AttributeFailures, AFailingLookUpIsAMiss) {
    ofMap->codes["getNamedItem"] = E_UNEXPECTED;
    EXPECT_FALSE(named.Exists());
    EXPECT_TRUE(named.IsEmpty());
    EXPECT_EQ(named.GetInt(3), 3);
    EXPECT_EQ(missingTypeOf([&] { named.SetInt(3); }), "int");
    ofMap->codes.clear();
    EXPECT_TRUE(named.Exists());
    behaviour->codes["attributes"] = E_FAIL;
    EXPECT_FALSE(named.Exists());
    EXPECT_EQ(missingTypeOf([&] { named.SetDouble(3); }), "double");
}

TEST_F(AttributeFailures, AFailingDeleteSaysNothing) {
    ofMap->codes["removeNamedItem"] = E_UNEXPECTED;
    named.Delete();
    EXPECT_TRUE(ofMap->called("removeNamedItem"));
    behaviour->codes["attributes"] = E_FAIL;
    named.Delete();
    value.Delete();
}

TEST_F(AttributeFailures, WritingWhatIsThereMakesNoAttribute) {
    named.SetInt(3);
    EXPECT_EQ(attribute->writtenText, L"3");
    EXPECT_EQ(ofMap->calls, Calls{"getNamedItem"});
}

class AttributeCreation : public ValueFailures {
protected:
    AttributeCreation() {
        auto const owner = fake::make<fake::Document, IXMLDOMDocument3>(behaviour, document);
        engine->owner = EnginePtr<IXMLDOMDocument>{owner.GetInterfacePtr()};
        engine->attributes = fake::make<fake::Map, IXMLDOMNamedNodeMap>(behaviour, map);
        document->createdAttribute =
            fake::make<fake::Attribute, IXMLDOMAttribute>(ofAttribute, attribute);
    }

    std::shared_ptr<fake::Behaviour> ofAttribute = std::make_shared<fake::Behaviour>();
    fake::Document* document = nullptr;
    fake::Map* map = nullptr;
    fake::Attribute* attribute = nullptr;
};

TEST_F(AttributeCreation, LooksCreatesAttachesAndWrites) {
    named.SetInt(3);
    EXPECT_EQ(behaviour->calls, (Calls{"attributes", "getNamedItem", "ownerDocument",
                                       "createAttribute", "attributes", "setNamedItem"}));
    EXPECT_EQ(ofAttribute->calls, Calls{"put text"});
    EXPECT_EQ(attribute->writtenText, L"3");
}

TEST_F(AttributeCreation, AnyFailureOnTheWayIsNoTarget) {
    for (char const* const function :
         {"attributes", "getNamedItem", "ownerDocument", "createAttribute", "setNamedItem"}) {
        behaviour->codes = {{function, E_UNEXPECTED}};
        EXPECT_EQ(missingTypeOf([&] { named.SetBool(true); }), "bool") << function;
        named.SetBinary(nullptr, 0);
        EXPECT_FALSE(ofAttribute->called("put nodeTypedValue")) << function;
    }
    behaviour->codes.clear();
    ofAttribute->refused = {{IID_IXMLDOMNode, E_UNEXPECTED}};
    EXPECT_EQ(missingTypeOf([&] { named.SetBool(true); }), "bool");
}

TEST_F(AttributeCreation, TakesOneCallWhenTheEngineHasIt) {
    fake::Element* element = nullptr;
    auto const node = fake::make<fake::Element, IXMLDOMElement>(behaviour, element);
    WXmlNode holder{WXmlNodePtr{node.GetInterfacePtr()}};
    holder.Attribute(L"@k").SetInt(3);
    EXPECT_EQ(behaviour->calls, Calls{"setAttribute"});
    EXPECT_EQ(element->attribute, L"k=3");
}

TEST_F(AttributeCreation, AFailureToTellTheInterfacesIsNoTarget) {
    behaviour->refused = {{IID_IXMLDOMElement, E_UNEXPECTED}};
    behaviour->codes = {{"attributes", E_UNEXPECTED}};
    EXPECT_EQ(missingTypeOf([&] { named.SetInt(3); }), "int");
    behaviour->codes.clear();
    named.SetInt(3);
    EXPECT_EQ(attribute->writtenText, L"3");
}

TEST_F(AttributeCreation, GoesStepByStepWhenTheOneCallFails) {
    fake::Element* element = nullptr;
    auto const node = fake::make<fake::Element, IXMLDOMElement>(behaviour, element);
    WXmlNode holder{WXmlNodePtr{node.GetInterfacePtr()}};
    behaviour->codes = {{"setAttribute", E_UNEXPECTED}, {"attributes", E_UNEXPECTED}};
    EXPECT_EQ(missingTypeOf([&] { holder.Attribute(L"@k").SetInt(3); }), "int");
    EXPECT_EQ(behaviour->calls, (Calls{"setAttribute", "attributes"}));
}

TEST_F(AttributeCreation, WithoutAnOwnerThereIsNoTarget) {
    engine->owner = nullptr;
    EXPECT_EQ(missingTypeOf([&] { named.SetString(L"x"); }), "string");
}

TEST_F(AttributeCreation, ReadingCreatesNothing) {
    EXPECT_FALSE(named.Exists());
    named.Clear();
    EXPECT_FALSE(behaviour->called("createAttribute"));
}

_variant_t arrayOf(VARTYPE type, ULONG count, VARTYPE claimed) {
    _variant_t array;
    array.parray = SafeArrayCreateVector(type, 0, count);
    array.vt = static_cast<VARTYPE>(VT_ARRAY | claimed);
    return array;
}

TEST_F(ValueFailures, BytesAreOnlyWhatIsAnArrayOfBytes) {
    engine->typedValue = _variant_t{L"text"};
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
    engine->typedValue = arrayOf(VT_I4, 3, VT_I4);
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
    engine->typedValue = arrayOf(VT_UI1, 3, VT_UI1);
    EXPECT_EQ(value.GetBinary(nullptr, 0), 3U);
    engine->typedValue = arrayOf(VT_I4, 3, VT_UI1);
    EXPECT_EQ(codeOf([&] { value.GetBinary(nullptr, 0); }), E_INVALIDARG);
}

TEST_F(ValueFailures, BytesMayBeHeldByReferenceOrNotAtAll) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 5, 3);
    _variant_t reference;
    reference.vt = VT_BYREF | VT_ARRAY | VT_UI1;
    reference.pparray = &array;
    engine->typedValue = reference;
    EXPECT_EQ(value.GetBinary(nullptr, 0), 3U) << "bounds need not begin at 0";
    SafeArrayDestroy(std::exchange(array, nullptr));
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
    engine->typedValue = arrayOf(VT_UI1, 0, VT_UI1);
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
}

TEST_F(ValueFailures, WritingBytesNeverThrows) {
    std::array<unsigned char, 2> const bytes{1, 2};
    value.SetBinary(bytes.data(), bytes.size());
    EXPECT_EQ(behaviour->calls, (Calls{"put dataType", "put nodeTypedValue"}));
    EXPECT_EQ(engine->typedValue.vt, VT_ARRAY | VT_UI1);
    EXPECT_EQ(value.GetBinary(nullptr, 0), 2U);
    behaviour->codes = {{"put dataType", E_FAIL}, {"put nodeTypedValue", E_FAIL}};
    value.SetBinary(bytes.data(), bytes.size());
    EXPECT_EQ(behaviour->calls.back(), "put nodeTypedValue") << "the type's result is ignored";
}

TEST_F(ValueFailures, NoDataIsNoArray) {
    value.SetBinary(nullptr, 3);
    EXPECT_EQ(engine->typedValue.vt, VT_ARRAY | VT_UI1);
    EXPECT_EQ(engine->typedValue.parray, nullptr);
}

} // namespace
