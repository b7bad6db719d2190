// Schemas (XSD 1.0) compiled by libxml2 from local files only, and validation of trees by them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <reader/Reader.h>
#include <tree/Document.h>

struct _xmlSchema; // NOLINT(bugprone-reserved-identifier): libxml2 has named it

namespace tibxml::validation {

inline constexpr std::string_view schemaNamespace = "http://www.w3.org/2001/XMLSchema";

/// Why a schema cannot be used; what() is "path:line: reason" as far as the path and line are
/// known.
class SchemaError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A schema as a tree. The tree is not changed and must outlive the call that gets it.
struct SchemaSource {
    tree::Document const* document = nullptr;
    std::string path;        // reader::canonicalPath of its file; empty when it is from none
    bool isAsInFile = false; // the tree is what that file holds
};

/// Whether a tree has the root element of a schema.
bool isSchema(tree::Document const& document) noexcept;

/// The namespace that a schema is for; empty for none. Valid until the next edit.
std::string_view targetNamespace(tree::Document const& schema) noexcept;

inline constexpr std::size_t mostSchemaDocuments = 500;

/// A compiled schema. It keeps nothing of its sources and does not change any more.
class Schema {
public:
    /// Compiles a schema with all that it includes, imports and redefines, which it reads from
    /// local files. Imports of a namespace
    /// that `known` has a schema for mean that one. Anything that is not a local file is refused,
    /// and nothing is ever asked of a network. Throws SchemaError and std::bad_alloc.
    static std::shared_ptr<Schema const> compile(SchemaSource const& source,
                                                 std::span<SchemaSource const> known);

    Schema(Schema const&) = delete;
    Schema& operator=(Schema const&) = delete;
    ~Schema();

    /// What libxml2 validates with.
    _xmlSchema* libxmlSchema() const noexcept { return schema_; }

private:
    explicit Schema(_xmlSchema* schema) noexcept : schema_{schema} {}

    _xmlSchema* schema_;
};

/// Something that is wrong with a document.
struct Mismatch {
    std::uint32_t code; // errorInvalid with libxml2's own number added
    std::string reason;
    std::uint64_t element; // the element at fault: its number in document order, from 1
    long line = 0;         // see the functions below
};

inline constexpr std::uint32_t errorInvalid = 0xC00CE000;

/// The validation stops when it has found as many.
inline constexpr std::size_t mostMismatches = 1000;

/// All that is wrong with a document, which must have a root element, in the order in which it
/// shows; empty when it is valid. The tree is handed to libxml2 event by event, so
/// memory is taken for open elements, for the values that the schema wants to be unique, and for
/// one text at a time. Throws std::bad_alloc, and std::length_error for texts above 2 GiB.
std::vector<Mismatch> validate(Schema const& schema, tree::Document const& document);

/// Fill in the lines on which the start tags of the elements end, from 1: in the bytes of a file
/// that holds the document, or in the text that output::writeXml gives. What is not found there
/// keeps line 0. Both throw std::bad_alloc.
void findLines(std::span<Mismatch> mismatches, reader::ByteSource& file);
void findLines(std::span<Mismatch> mismatches, tree::Document const& document);

} // namespace tibxml::validation
