// A schema with all documents that it consists of, as texts for libxml2.
//
// libxml2 would fetch what a schema includes by itself, from anywhere, with document types
// and entities. So that it never does, all documents are read here, by the reader that refuses such
// things, and their references to each other are replaced by names that mean nothing outside.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <tree/Document.h>
#include <validation/Schema.h>

namespace tibxml::validation {

class SchemaDocuments {
public:
    // Reads all documents. Throws SchemaError for one that cannot be read, std::bad_alloc.
    SchemaDocuments(SchemaSource const& source, std::span<SchemaSource const> known);
    SchemaDocuments(SchemaDocuments const&) = delete;
    SchemaDocuments& operator=(SchemaDocuments const&) = delete;
    ~SchemaDocuments() = default;

    std::size_t size() const noexcept { return entries_.size(); }

    tree::Document const& document(std::size_t index) const noexcept {
        return *entries_[index].tree;
    }

    // The name by which the documents refer to one of them; the first one is the schema itself.
    std::string const& nameOf(std::size_t index) const noexcept { return entries_[index].name; }

    std::optional<std::size_t> indexOf(std::string_view name) const noexcept;

    // The text of a document.
    std::string textOf(std::size_t index) const;

    // An error at an element of a document, which may be named by its number in document order,
    // from 1.
    SchemaError errorAt(std::size_t index, tree::Node const* node, std::string_view reason) const;
    SchemaError errorAt(std::size_t index, std::uint64_t element, std::string_view reason) const;

    // A message of libxml2's with the paths of documents instead of their names.
    std::string withPaths(std::string_view message) const;

private:
    struct Entry {
        tree::DocumentRef tree; // a copy of our own
        std::string path;
        bool isAsInFile;
        std::string name; // for libxml2
    };

    std::size_t add(SchemaSource const& source);
    std::size_t add(std::string const& path);
    std::size_t add(Entry entry);
    void connect(std::size_t index);
    void connect(std::size_t index, tree::Node* reference);
    std::optional<std::size_t> targetOf(std::size_t index, tree::Node const* reference);
    std::optional<std::size_t> knownTarget(tree::Node const* reference);
    std::size_t located(std::size_t index, tree::Node const* reference, std::string_view location);
    std::string pathAt(std::size_t index, std::string_view location) const;
    long lineAt(std::size_t index, std::uint64_t element) const;

    std::span<SchemaSource const> known_;
    std::vector<Entry> entries_;
    std::vector<std::optional<std::size_t>> knownEntries_; // where those that are used stand
};

/// Throws SchemaError for a schema that libxml2 must not be given: it follows references between
/// definitions by calling itself, and writes the content of groups out wherever they are referred
/// to, so a few kilobytes can exhaust stack and memory. Throws std::bad_alloc.
void checkLimits(SchemaDocuments const& documents);

} // namespace tibxml::validation
