// XSLT 1.0 by libxslt: trees in, a new tree out. No network, no writing, no scripts; of extensions
// only `node-set`.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

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

    // A new document with the result for a source, which is not changed. The result has an XML
    // declaration and is laid out as xsl:output says. Throws TransformError, also for a result that
    // is no document (two elements, text beside the root, too deep), and std::bad_alloc.
    tree::DocumentRef apply(Source const& source, DocumentFunction permission) const;

private:
    struct Compiled;

    tree::DocumentRef transformed(_xmlDoc* input, DocumentFunction permission) const;

    tree::DocumentRef document_; // for naming places
    std::string location_;
    std::unique_ptr<Compiled> compiled_;
};

} // namespace tibxml::transform
