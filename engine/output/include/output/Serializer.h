// Trees to text.
//
// What is written loads again to an equal tree, whatever calls built it: markup characters are
// escaped, namespaces that names need and no ancestor declares are declared, white space that would
// be taken for layout is written as a character reference. Three things may differ: adjacent texts
// become one and empty ones disappear, a CDATA section that holds "]]>" becomes two, and a node
// whose prefix cannot be kept (it means something else on the same element) gets another one.
//
// Nothing here recurses, so depth costs memory and not stack.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <TibXml/platform/BStr.h>
#include <tree/Document.h>

namespace tibxml::output {

/// Where output goes, piece by piece, so that a large document never has to exist twice.
class Sink {
public:
    Sink(Sink const&) = delete;
    Sink& operator=(Sink const&) = delete;

    /// Takes the next piece, which is valid during the call only. What it throws ends the writing
    /// and reaches the caller who asked for the output. What came before must be discarded then.
    virtual void write(std::string_view piece) = 0;

protected:
    Sink() = default;
    ~Sink() = default;
};

/// Appends everything to a string.
class StringSink final : public Sink {
public:
    explicit StringSink(std::string& out) noexcept : out_{out} {}

    void write(std::string_view piece) override { out_.append(piece); }

private:
    std::string& out_;
};

/// Why a document cannot be saved in its encoding; what() is a sentence for people and names the
/// encoding, and the character and what it stands in where one is the cause.
class EncodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The encoding that the document's XML declaration names, as written there; empty when it names
/// none. Valid until the declaration changes.
std::string_view declaredEncoding(tree::Document const& document) noexcept;

/// The text of a node in UTF-8, in pieces of whole characters:
/// - a document: its top-level nodes, the declaration without its encoding unless that is UTF-16,
///   because this text is not in that encoding; an empty document gives nothing;
/// - an element: it and its subtree, readable by itself: namespaces that its ancestors declare and
///   its subtree uses are declared on it; it counts as depth 0;
/// - an attribute: name="value";
/// - a text: its characters, escaped;
/// - any other node: as it stands in a document, a declaration with its encoding.
/// The node must belong to the document. Throws std::bad_alloc and what the sink throws.
void writeXml(tree::Document const& document, tree::Node const* node, Sink& utf8);

/// The same, appended to a string. After an exception the string may hold part of it.
void appendXml(tree::Document const& document, tree::Node const* node, std::string& utf8Out);

/// The document as a file holds it: in the encoding that it declares (UTF-8 when it declares none),
/// the declaration whole, with a byte order mark for UTF-16 only. Characters that the encoding does
/// not have become references in texts and attribute values. Throws EncodingError where that is
/// impossible or the encoding is unknown, std::bad_alloc, and what the sink throws; the
/// bytes that the sink got before are then not a document.
void writeFile(tree::Document const& document, Sink& bytes);

/// The same, appended to a string.
void appendFile(tree::Document const& document, std::string& bytesOut);

/// What writeXml gives, as wide characters in a new string that the caller frees;
/// null if there is no memory for that string. Throws std::bad_alloc.
BSTR xmlAsBstr(tree::Document const& document, tree::Node const* node);

} // namespace tibxml::output
