#include "SchemaDocuments.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include <output/Serializer.h>
#include <reader/LocalFile.h>
#include <reader/Reader.h>
#include <tree/Cloning.h>
#include <tree/Editing.h>
#include <tree/Navigation.h>

#include "ElementLines.h"

namespace tibxml::validation {

using tree::Node;

namespace {

// libxml2's loader looks every name up in its catalogs (files of the system's, which may lead
// anywhere) before it asks the thread's input hook, except the name of a file that exists. So the
// documents, which need not be in files, have names that all mean the root folder.
constexpr std::string_view namePrefix = "file:///";

std::string nameFor(std::size_t index) {
    std::string name{namePrefix};
    for (std::size_t i = 0; i <= index; ++i)
        name += "./";
    return name;
}

bool isSchemaElement(Node const* node, std::string_view local) noexcept {
    return node->is(tree::NodeKind::element) && node->name->uri == schemaNamespace &&
           node->name->local == local;
}

std::string_view attribute(Node const* element, std::string_view name) noexcept {
    Node const* const found = tree::findAttribute(element, name);
    return found != nullptr ? found->text() : std::string_view{};
}

bool refersToDocument(Node const* node) noexcept {
    constexpr std::array<std::string_view, 3> references{"include", "import", "redefine"};
    return std::any_of(references.begin(), references.end(),
                       [&](std::string_view local) { return isSchemaElement(node, local); });
}

// A scheme before the first ':' makes it a URI of its own; "file" is the only one that means files.
bool isElsewhere(std::string_view location) noexcept {
    std::size_t const end = location.find_first_of(":/?#");
    if (end == std::string_view::npos || location[end] != ':') return false;
    return location.substr(0, end) != "file";
}

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view space = " \t\r\n";
    std::size_t const begin = std::min(text.find_first_not_of(space), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(space) + 1);
}

tree::DocumentRef copyOf(tree::Document const& original) {
    auto copy = tree::DocumentRef::adopt(tree::Document::create());
    for (Node* child = original.node()->firstChild(); child != nullptr; child = child->next) {
        tree::appendChild(*copy, copy->node(),
                          tree::clone(*copy, original, child, tree::CloneDepth::deep));
    }
    return copy;
}

std::uint64_t numberOf(tree::Document const& document, Node const* element) noexcept {
    std::uint64_t number = 1;
    for (Node const* node = document.documentElement(); node != element;
         node = tree::nextInSubtree(node, document.documentElement()))
        number += node->is(tree::NodeKind::element) ? 1 : 0;
    return number;
}

void setLocation(tree::Document& document, Node* reference, std::string const& name) {
    if (Node* const known = tree::findAttribute(reference, "schemaLocation"))
        return tree::setText(document, known, name);
    auto* const attributeName = document.names().intern({}, "schemaLocation", {});
    tree::appendAttribute(document, reference, tree::newAttribute(document, attributeName, name));
}

// What people read: where, then what.
std::string placed(std::string const& path, long line, std::string_view reason) {
    std::string text = path;
    if (line > 0) text.append(text.empty() ? "line " : ":").append(std::to_string(line));
    if (!text.empty()) text += ": ";
    return text.append(reason);
}

} // namespace

bool isSchema(tree::Document const& document) noexcept {
    Node const* const root = document.documentElement();
    return root != nullptr && isSchemaElement(root, "schema");
}

std::string_view targetNamespace(tree::Document const& schema) noexcept {
    return attribute(schema.documentElement(), "targetNamespace");
}

SchemaDocuments::SchemaDocuments(SchemaSource const& source, std::span<SchemaSource const> known)
    : known_{known},
      knownEntries_(known.size()) {
    add(source);
    for (std::size_t i = 0; i != entries_.size(); ++i)
        connect(i);
}

std::optional<std::size_t> SchemaDocuments::indexOf(std::string_view name) const noexcept {
    auto const found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](Entry const& entry) { return entry.name == name; });
    if (found == entries_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - entries_.begin());
}

std::string SchemaDocuments::textOf(std::size_t index) const {
    std::string text;
    output::appendXml(*entries_[index].tree, entries_[index].tree->documentElement(), text);
    return text;
}

std::size_t SchemaDocuments::add(SchemaSource const& source) {
    return add(Entry{copyOf(*source.document), source.path, source.isAsInFile, {}});
}

std::size_t SchemaDocuments::add(Entry entry) {
    entry.name = nameFor(entries_.size());
    entries_.push_back(std::move(entry));
    return entries_.size() - 1;
}

std::size_t SchemaDocuments::add(std::string const& path) {
    Entry entry{tree::DocumentRef::adopt(tree::Document::create()), path, true, {}};
    reader::LocalFile file = reader::LocalFile::at(path);
    if (!file.isOpen()) throw SchemaError{path + ": cannot be opened"};
    reader::ReadError error;
    if (!reader::read(*entry.tree, file, error))
        throw SchemaError{placed(path, error.line, error.reason)};
    if (!isSchema(*entry.tree)) throw SchemaError{placed(path, 0, "this is not a schema")};
    return add(std::move(entry));
}

void SchemaDocuments::connect(std::size_t index) {
    Node* child = entries_[index].tree->documentElement()->firstChild();
    for (; child != nullptr; child = child->next)
        if (refersToDocument(child)) connect(index, child);
}

void SchemaDocuments::connect(std::size_t index, Node* reference) {
    std::optional<std::size_t> const target = targetOf(index, reference);
    if (target) setLocation(*entries_[index].tree, reference, nameOf(*target));
}

// None for an import without a location: libxml2 then knows what is missing.
std::optional<std::size_t> SchemaDocuments::targetOf(std::size_t index, Node const* reference) {
    if (isSchemaElement(reference, "import"))
        if (auto const known = knownTarget(reference)) return known;
    Node const* const location = tree::findAttribute(reference, "schemaLocation");
    if (location == nullptr) return std::nullopt;
    return located(index, reference, trimmed(location->text()));
}

std::optional<std::size_t> SchemaDocuments::knownTarget(Node const* reference) {
    std::string_view const wanted = attribute(reference, "namespace");
    for (std::size_t i = 0; i != known_.size(); ++i) {
        if (targetNamespace(*known_[i].document) != wanted) continue;
        if (!knownEntries_[i]) knownEntries_[i] = add(known_[i]);
        return knownEntries_[i];
    }
    return std::nullopt;
}

std::size_t SchemaDocuments::located(std::size_t index, Node const* reference,
                                     std::string_view location) {
    std::string const quoted = "'" + std::string{location} + "'";
    if (isElsewhere(location))
        throw errorAt(index, reference, quoted + " is not a local file, and no other is read");
    std::string const path = reader::canonicalPath(pathAt(index, location));
    if (path.empty()) throw errorAt(index, reference, "there is no file " + quoted);
    for (std::size_t i = 0; i != entries_.size(); ++i)
        if (entries_[i].path == path) return i;
    if (entries_.size() == mostSchemaDocuments)
        throw errorAt(index, reference, "the schema consists of more than 500 documents");
    return add(path);
}

// Empty when the place is relative to nothing.
std::string SchemaDocuments::pathAt(std::size_t index, std::string_view location) const {
    std::string const& from = entries_[index].path;
    if (location.empty()) return from;
    if (location.starts_with("file:") || location.starts_with('/')) return std::string{location};
    if (from.empty()) return {};
    return (std::filesystem::path{from}.parent_path() / location).native();
}

long SchemaDocuments::lineAt(std::size_t index, std::uint64_t element) const {
    Entry const& entry = entries_[index];
    if (entry.path.empty() || !entry.isAsInFile)
        return ElementLines{{element}, *entry.tree}.lineOf(element);
    reader::LocalFile file = reader::LocalFile::at(entry.path);
    return file.isOpen() ? ElementLines{{element}, file}.lineOf(element) : 0;
}

SchemaError SchemaDocuments::errorAt(std::size_t index, std::uint64_t element,
                                     std::string_view reason) const {
    return SchemaError{placed(entries_[index].path, lineAt(index, element), reason)};
}

SchemaError SchemaDocuments::errorAt(std::size_t index, Node const* node,
                                     std::string_view reason) const {
    return errorAt(index, numberOf(*entries_[index].tree, node), reason);
}

std::string SchemaDocuments::withPaths(std::string_view message) const {
    std::string text;
    while (true) {
        std::size_t const begin = message.find(namePrefix);
        text += message.substr(0, begin);
        if (begin == std::string_view::npos) return text;
        message.remove_prefix(begin);
        std::size_t const end =
            std::min(message.find_first_not_of("./", namePrefix.size()), message.size());
        std::optional<std::size_t> const index = indexOf(message.substr(0, end));
        text += index ? std::string_view{entries_[*index].path} : message.substr(0, end);
        message.remove_prefix(end);
    }
}

} // namespace tibxml::validation
