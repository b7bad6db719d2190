// Validation with engine objects of the test's own under the identifiers: the order of calls, and
// what happens when one of them fails.
#include "EngineTest.h"

#include <TibXml/platform/ComRuntime.h>
#include <calls/EngineCall.h>

#include <array>

namespace {

struct Engine {
    std::shared_ptr<fake::Behaviour> schema = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> schemas = std::make_shared<fake::Behaviour>();
    HRESULT schemasCode = S_OK;
};

Engine* engine = nullptr;

template <class Made, class Interface>
HRESULT createFake(std::shared_ptr<fake::Behaviour> const& behaviour, REFIID iid, void** object) {
    return tibxml::engine::quietly(E_OUTOFMEMORY, [&] {
        Made* made = nullptr;
        return fake::make<Made, Interface>(behaviour, made)->QueryInterface(iid, object);
    });
}

HRESULT createDocument(REFIID iid, void** object) noexcept {
    return createFake<fake::Document, IXMLDOMDocument3>(engine->schema, iid, object);
}

HRESULT createSchemas(REFIID iid, void** object) noexcept {
    if (FAILED(engine->schemasCode)) return engine->schemasCode;
    HRESULT const made =
        createFake<fake::Schemas, IXMLDOMSchemaCollection2>(engine->schemas, iid, object);
    return made == S_OK ? engine->schemasCode : made;
}

} // namespace

namespace tibxml::platform {

std::span<ComClass const> comClasses() noexcept {
    static constexpr std::array<ComClass, 2> classes{
        {{CLSID_DOMDocument60, createDocument}, {CLSID_XMLSchemaCache60, createSchemas}}};
    return classes;
}

} // namespace tibxml::platform

namespace {

using Calls = std::vector<std::string>;

class ValidationFailures : public testing::Test {
protected:
    ValidationFailures() {
        engine = &made;
        fake::Document* fakeDocument = nullptr;
        pointer = fake::make<fake::Document, IXMLDOMDocument3>(behaviour, fakeDocument);
        fakeDocument->error = fake::make<fake::ParseError, IXMLDOMParseError>(behaviour, error);
    }

    ~ValidationFailures() override { engine = nullptr; }

    bool validate() {
        WXmlDoc document{pointer};
        return document.Validate(L"a.xsd");
    }

    Engine made;
    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    fake::ParseError* error = nullptr;
    WXmlDocPtr pointer;
};

TEST_F(ValidationFailures, TheCallsInOrder) {
    EXPECT_TRUE(validate());
    EXPECT_EQ(made.schema->calls, (Calls{"setProperty", "load"}));
    EXPECT_EQ(made.schemas->calls,
              (Calls{"put validateOnLoad false", "for no namespace", "an object", "add"}));
    EXPECT_EQ(behaviour->calls, (Calls{"putref schemas", "validate", "errorCode"}));
}

TEST_F(ValidationFailures, AnErrorCodeIsInvalid) {
    error->code = static_cast<LONG>(0xC00CE224);
    EXPECT_FALSE(validate());
}

TEST_F(ValidationFailures, OfTheSchemaDocument) {
    made.schema->codes["load"] = E_FAIL;
    EXPECT_FALSE(validate());
    EXPECT_TRUE(made.schemas->calls.empty());
    EXPECT_TRUE(behaviour->calls.empty());
}

TEST_F(ValidationFailures, OfMakingTheCollection) {
    for (HRESULT const code : {E_OUTOFMEMORY, E_NOINTERFACE}) {
        made.schemasCode = code;
        EXPECT_FALSE(validate());
        EXPECT_TRUE(made.schemas->calls.empty());
    }
    made.schemasCode = S_OK;
    made.schemas->refused.emplace_back(IID_IXMLDOMSchemaCollection2, E_NOINTERFACE);
    EXPECT_FALSE(validate());
    EXPECT_TRUE(behaviour->calls.empty());
}

TEST_F(ValidationFailures, OfAddingTheSchema) {
    for (char const* function : {"put validateOnLoad false", "add"}) {
        made.schemas->codes = {{function, E_FAIL}};
        EXPECT_FALSE(validate()) << function;
    }
    made.schemas->codes = {{"add", S_FALSE}};
    EXPECT_FALSE(validate()) << "success codes other than S_OK do not count";
    EXPECT_TRUE(behaviour->calls.empty());
}

TEST_F(ValidationFailures, OfTheDocument) {
    for (char const* function : {"putref schemas", "validate", "errorCode"}) {
        behaviour->codes = {{function, E_FAIL}};
        EXPECT_FALSE(validate()) << function;
    }
}

TEST_F(ValidationFailures, WithoutAnErrorObject) {
    static_cast<fake::Document*>(pointer.GetInterfacePtr())->error = nullptr;
    EXPECT_FALSE(validate());
}

TEST_F(ValidationFailures, WithoutADocument) {
    EXPECT_FALSE(WXmlDoc{}.Validate(L"a.xsd"));
    EXPECT_TRUE(made.schemas->called("add")) << "which is noticed only after that";
}

} // namespace
