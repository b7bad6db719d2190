// Schemas (XSD 1.0) compiled by libxml2's schema processor, from local files only.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include <reader/Reader.h>
#include <tree/Document.h>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that libxml2 gave it
struct _xmlSchema;

namespace tibxml::validation {

inline constexpr std::string_view schemaNamespace = "http://www.w3.org/2001/XMLSchema";

// Why a schema cannot be used; what() is "path:line: reason" as far as the path and line are known.
class SchemaError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// How schemas reach the file system.
class Files {
public:
    // The one path of the file that a path or `file:` URL means; empty when there is none. Throws
    // std::bad_alloc.
    virtual std::string find(std::string const& path) = 0;

    // Hands the bytes of a file that was found to `use`; false when it cannot be opened. Throws
    // std::bad_alloc and what `use` throws.
    virtual bool open(std::string const& found,
                      std::function<void(reader::ByteSource&)> const& use) = 0;

protected:
    ~Files() = default;
};

// A schema as a tree. The tree is not changed and must outlive the call that gets it.
struct SchemaSource {
    tree::Document const* document = nullptr;
    std::string path;        // as found, for relative locations; empty when it is from no file
    bool isAsInFile = false; // the tree is what that file holds
};

// Whether a tree has the root element of a schema.
bool isSchema(tree::Document const& document) noexcept;

// The namespace that a schema is for; empty for none. Valid until the next edit.
std::string_view targetNamespace(tree::Document const& schema) noexcept;

inline constexpr std::size_t mostSchemaDocuments = 500;

// A compiled schema. It keeps nothing of its sources and does not change any more.
class Schema {
public:
    // Compiles a schema with all that it includes, imports and redefines. Imports of a namespace
    // that `known` has a schema for mean that one. Anything that is no local file is refused, and
    // nothing is ever asked of a network. Throws SchemaError and std::bad_alloc.
    static std::shared_ptr<Schema const> compile(SchemaSource const& source,
                                                 std::span<SchemaSource const> known, Files& files);

    Schema(Schema const&) = delete;
    Schema& operator=(Schema const&) = delete;
    ~Schema();

    // For the validator.
    _xmlSchema* native() const noexcept { return native_; }

private:
    explicit Schema(_xmlSchema* native) noexcept : native_{native} {}

    _xmlSchema* native_;
};

} // namespace tibxml::validation
