#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/engine/IXMLDOMParseError2.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(Nothing is printed for a file that is valid.
Status: 0 valid, 1 not valid or not well-formed, 2 unreadable file or unusable schema.

Examples:
  tibxml validate settings.xml settings.xsd
  curl -s https://example.org/feed.xml | tibxml validate - feed.xsd)";

struct Validation {
    std::string file;
    std::string schema;
};

using SchemasPtr = EnginePtr<IXMLDOMSchemaCollection2>;

SchemasPtr newSchemas() {
    void* object = nullptr;
    HRESULT const result = CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL,
                                            IID_IXMLDOMSchemaCollection2, &object);
    if (FAILED(result)) _com_issue_error(result);
    SchemasPtr schemas{static_cast<IXMLDOMSchemaCollection2*>(object), false};
    OleRun(schemas);
    return schemas;
}

CString targetNamespace(WXmlDoc const& schema) {
    return schema.GetRootNode().Attribute(L"@targetNamespace").GetString(L"");
}

// A schema is not a result, so a bad one is an input that does not work.
WXmlDoc loadSchemaDocument(std::string const& file) {
    try {
        return loadFromPath(file);
    } catch (Failure& failure) {
        failure.status = ExitStatus::failed;
        throw;
    }
}

// The schema in a file, for the namespace that it has. Throws `Failure` and `_com_error` when it
// cannot be used.
SchemasPtr loadSchema(std::string const& file) {
    WXmlDoc const schema = loadSchemaDocument(file);
    SchemasPtr schemas = newSchemas();
    _bstr_t uri{targetNamespace(schema)};
    HRESULT const result =
        schemas->add(uri.GetBSTR(), _variant_t{schema.EngineDocument().GetInterfacePtr()});
    if (FAILED(result)) _com_issue_errorex(result, schemas, IID_IXMLDOMSchemaCollection);
    return schemas;
}

void require(HRESULT result, IUnknown* object, IID const& iid) {
    if (FAILED(result)) _com_issue_errorex(result, object, iid);
}

std::string describe(std::string const& file, IXMLDOMParseError& error) {
    LONG line = 0;
    error.get_line(&line);
    _bstr_t reason;
    error.get_reason(reason.GetAddress());
    std::string const place = line > 0 ? ":" + std::to_string(line) : std::string{};
    return file + place + ": " + toUtf8({reason, reason.length()});
}

// The engine's error object has all errors where the engine knows more than one.
void complainAboutAll(std::string const& file, EnginePtr<IXMLDOMParseError> const& first) {
    void* found = nullptr;
    require(first->QueryInterface(IID_IXMLDOMParseError2, &found), first, IID_IXMLDOMParseError);
    EnginePtr<IXMLDOMParseError2> const known{static_cast<IXMLDOMParseError2*>(found), false};
    EnginePtr<IXMLDOMParseErrorCollection> all;
    require(known->get_allErrors(all.GetAddress()), known, IID_IXMLDOMParseError2);
    EnginePtr<IXMLDOMParseError2> error;
    while (all->get_next(error.GetAddress()) == S_OK)
        complain(describe(file, *error.GetInterfacePtr()));
}

ExitStatus run(Validation const& validation) {
    WXmlDocPtr const document = loadFromPath(validation.file).EngineDocument();
    SchemasPtr const schemas = loadSchema(validation.schema);
    require(document->putref_schemas(_variant_t{static_cast<IUnknown*>(schemas)}), document,
            IID_IXMLDOMDocument2);
    EnginePtr<IXMLDOMParseError> error;
    require(document->validate(error.GetAddress()), document, IID_IXMLDOMDocument2);
    LONG code = 0;
    error->get_errorCode(&code);
    if (code == 0) return ExitStatus::found;
    complainAboutAll(validation.file, error);
    return ExitStatus::notFound;
}

} // namespace

void addValidate(CLI::App& program, Task& task) {
    auto const validation = std::make_shared<Validation>();
    CLI::App& command = *program.add_subcommand("validate", "Tell whether a file is valid");
    addFile(command, validation->file);
    command.add_option("SCHEMA", validation->schema, "An XML Schema, with any target namespace")
        ->option_text("REQUIRED")
        ->required();
    command.footer(examples);
    command.callback([&task, validation] { task = [validation] { return run(*validation); }; });
}

} // namespace tibxml::tool
