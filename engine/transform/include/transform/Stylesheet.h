// XSLT 1.0 by libxslt: trees in, a new tree or a text out. No network, no writing, no scripts; of
// extensions only `node-set`.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <variant>

#include <tree/Document.h>

struct _xmlDoc; // NOLINT(bugprone-reserved-identifier): libxml2 has named it

namespace tibxml::transform {

// Why a stylesheet or a transformation does not work; what() is one line for people and names the
// place in the stylesheet where that is known.
class TransformError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What a stylesheet's calls of document() may read.
enum class DocumentFunction { refused, localFiles };

// What is transformed.
struct Source {
    tree::Node const* node; // a document node, or an element, which is a document of its own
    std::string location;   // the absolute path of its file; empty when there is none
};

// A name without prefix, and its namespace, empty for none.
struct ExpandedName {
    std::string local;
    std::string uri;

    bool operator==(ExpandedName const&) const = default;
};

// A value for an xsl:param at the top of a stylesheet. Those that it does not have are ignored.
struct Parameter {
    ExpandedName name;
    std::variant<std::string, double, bool> value;
};

// A transformation.
struct Request {
    Source source;
    DocumentFunction permission = DocumentFunction::refused;
    std::span<Parameter const> parameters;
    ExpandedName mode; // that it starts in; without a name in none
};

// The encoding of a text, which is named in it where its kind has a place for that.
enum class TextEncoding {
    wide,     // characters for a wide string, as UTF-8; named as UTF-16
    declared, // the one that xsl:output asks for if it is known, else UTF-8
};

// More template calls inside each other than this are taken for an endless recursion.
inline constexpr int maximumTemplateDepth = 3000;

// A compiled stylesheet. It stands for its document as that was: later changes do not show. It is
// used by one thread at a time.
class Stylesheet {
public:
    // Compiles a document. `location` is the absolute path of its file, which relative references
    // of xsl:import, xsl:include and document() start from; empty when there is none, and then they
    // are refused. Throws TransformError and std::bad_alloc.
    Stylesheet(tree::Document& document, std::string location);
    Stylesheet(Stylesheet const&) = delete;
    Stylesheet& operator=(Stylesheet const&) = delete;
    ~Stylesheet();

    // Both leave the source as it is, set `messages` to what xsl:message said, one line each, and
    // throw TransformError and std::bad_alloc.

    // A new document with the result. It has an XML declaration and is laid out as xsl:output says.
    // A result that is not a document (two elements, text beside the root, too deep) is an error.
    tree::DocumentRef apply(Request const& request, std::string& messages) const;

    // The result as xsl:output says: as XML, text or HTML.
    std::string text(Request const& request, TextEncoding encoding, std::string& messages) const;

private:
    struct Compiled;
    using UseResult = std::function<void(_xmlDoc&)>;

    void run(Request const& request, std::string& messages, UseResult const& use) const;
    void runOn(_xmlDoc* input, Request const& request, std::string& messages,
               UseResult const& use) const;

    tree::DocumentRef document_; // for naming places
    std::string location_;
    std::unique_ptr<Compiled> compiled_;
};

} // namespace tibxml::transform
