#include <validation/Schema.h>

#include <exception>
#include <limits>
#include <new>
#include <optional>
#include <utility>

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <libxml/xmlschemastypes.h>

#include <libxml/LibxmlErrors.h>
#include <libxml/LibxmlTypes.h>

#include "SchemaDocuments.h"

namespace tibxml::validation {

namespace {

using libxml::allocated;

// The documents that the calling thread's libxml2 finds under their names; else it finds no file.
thread_local SchemaDocuments const* served = nullptr;

xmlParserInputBuffer* bufferFor(char const* name, xmlCharEncoding encoding) {
    auto const index = served->indexOf(name);
    if (!index) return nullptr;
    std::string const text = served->textOf(*index);
    if (text.size() > std::size_t{std::numeric_limits<int>::max()}) return nullptr;
    // The buffer is a copy of the text.
    return xmlParserInputBufferCreateMem(text.data(), static_cast<int>(text.size()), encoding);
}

// Called from frames of C: if out of memory, the document is missing.
xmlParserInputBuffer* serve(char const* name, xmlCharEncoding encoding) noexcept {
    try {
        return bufferFor(name, encoding);
    } catch (...) {
        return nullptr;
    }
}

// While this lives, libxml2 reads these documents from memory.
class ServedDocuments {
public:
    explicit ServedDocuments(SchemaDocuments const& documents) noexcept
        : before_{std::exchange(served, &documents)} {}

    ServedDocuments(ServedDocuments const&) = delete;
    ServedDocuments& operator=(ServedDocuments const&) = delete;

    ~ServedDocuments() { served = before_; }

private:
    SchemaDocuments const* before_;
    libxml::LibxmlInput input_{serve};
};

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

// One compilation by libxml2; the first error counts.
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
        libxml::LibxmlErrors const errors{note, this};
        std::unique_ptr<xmlSchemaParserCtxt, FreeParser> const parser{
            allocated(xmlSchemaNewParserCtxt(documents_.nameOf(0).c_str()))};
        xmlSchemaSetParserStructuredErrors(parser.get(), note, this);
        ServedDocuments const files{documents_};
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
        std::string reason = documents_.withPaths(libxml::inOneLine(
            reader::wellFormed(error.message != nullptr ? error.message : "unknown error")));
        xmlNode const* const element = elementAt(error.node);
        if (element == nullptr) return reason;
        auto const index = documents_.indexOf(libxml::view(element->doc->URL));
        return index ? documents_.errorAt(*index, numberOf(element), reason).what() : reason;
    }

    SchemaDocuments const& documents_;
    std::optional<std::string> error_;
    std::exception_ptr exception_;
};

} // namespace

std::shared_ptr<Schema const> Schema::compile(SchemaSource const& source,
                                              std::span<SchemaSource const> known) {
    libxml::initializeOnce<xmlSchemaInitTypes>();
    SchemaDocuments const documents{source, known};
    checkLimits(documents);
    // Made first, so that nothing can fail once there is something to lose.
    std::shared_ptr<Schema> schema{new Schema{nullptr}};
    schema->schema_ = Compilation{documents}.run();
    return schema;
}

Schema::~Schema() {
    xmlSchemaFree(schema_);
}

} // namespace tibxml::validation
