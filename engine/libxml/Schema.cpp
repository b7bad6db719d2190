#include <validation/Schema.h>

#include <exception>
#include <new>
#include <optional>

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <libxml/xmlschemastypes.h>

#include "LibraryErrors.h"
#include "SchemaDocuments.h"
#include "SchemaLimits.h"
#include "ServedDocuments.h"

namespace tibxml::validation {

namespace {

// The processor's tables of built-in types are made on first use, which it does not guard.
void initializeOnce() {
    static bool const initialized = (xmlInitParser(), xmlSchemaInitTypes(), true);
    static_cast<void>(initialized);
}

std::string_view view(xmlChar const* text) noexcept {
    return text != nullptr ? std::string_view{reinterpret_cast<char const*>(text)}
                           : std::string_view{};
}

xmlNode const* elementAt(void const* errorNode) noexcept {
    auto const* node = static_cast<xmlNode const*>(errorNode);
    while (node != nullptr && node->type != XML_ELEMENT_NODE)
        node = node->type == XML_DOCUMENT_NODE ? nullptr : node->parent;
    return node;
}

xmlNode const* following(xmlNode const* node) noexcept {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
    while (node->next == nullptr)
        node = node->parent;
    return node->next;
}

// The number of an element in document order, from 1.
std::uint64_t numberOf(xmlNode const* element) noexcept {
    std::uint64_t number = 1;
    for (xmlNode const* node = element->doc->children; node != element; node = following(node))
        number += node->type == XML_ELEMENT_NODE ? 1 : 0;
    return number;
}

// One call of the schema processor; the first error counts.
class Compilation {
public:
    explicit Compilation(SchemaDocuments const& documents) noexcept : documents_{documents} {}

    xmlSchema* run() {
        xmlSchema* const schema = parse();
        if (!error_ && !exception_ && schema != nullptr) return schema;
        xmlSchemaFree(schema);
        if (exception_) std::rethrow_exception(exception_);
        if (error_) throw SchemaError{*error_};
        throw SchemaError{"the schema does not compile"};
    }

private:
    struct FreeParser {
        void operator()(xmlSchemaParserCtxt* parser) const noexcept {
            xmlSchemaFreeParserCtxt(parser);
        }
    };

    xmlSchema* parse() {
        reader::ThreadErrors const errors{note, this};
        std::unique_ptr<xmlSchemaParserCtxt, FreeParser> const parser{
            xmlSchemaNewParserCtxt(SchemaDocuments::nameOf(0).c_str())};
        if (!parser) throw std::bad_alloc{};
        xmlSchemaSetParserStructuredErrors(parser.get(), note, this);
        ServedDocuments const served{documents_};
        return xmlSchemaParse(parser.get());
    }

    // Called from frames of C, through which no exception may pass.
    static void note(void* data, xmlError* error) {
        auto& compilation = *static_cast<Compilation*>(data);
        if (error->level < XML_ERR_ERROR || compilation.error_ || compilation.exception_) return;
        try {
            if (error->code == XML_ERR_NO_MEMORY) throw std::bad_alloc{};
            compilation.error_ = compilation.words(*error);
        } catch (...) {
            compilation.exception_ = std::current_exception();
        }
    }

    std::string words(xmlError const& error) const {
        std::string reason = documents_.withPaths(
            reader::inOneLine(error.message != nullptr ? error.message : "unknown error"));
        xmlNode const* const element = elementAt(error.node);
        if (element == nullptr) return reason;
        auto const index = documents_.indexOf(view(element->doc->URL));
        return index ? documents_.errorAt(*index, numberOf(element), reason).what() : reason;
    }

    SchemaDocuments const& documents_;
    std::optional<std::string> error_;
    std::exception_ptr exception_;
};

} // namespace

std::shared_ptr<Schema const> Schema::compile(SchemaSource const& source,
                                              std::span<SchemaSource const> known, Files& files) {
    initializeOnce();
    SchemaDocuments const documents{source, known, files};
    checkLimits(documents);
    // Made first, so that nothing can fail once there is something to lose.
    std::shared_ptr<Schema> schema{new Schema{nullptr}};
    schema->native_ = Compilation{documents}.run();
    return schema;
}

Schema::~Schema() {
    xmlSchemaFree(native_);
}

} // namespace tibxml::validation
