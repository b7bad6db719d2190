#include <transform/Stylesheet.h>

#include <new>
#include <string_view>
#include <utility>

#include <libxml/encoding.h>
#include <libxslt/extensions.h>
#include <libxslt/imports.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <libxml/LibxmlErrors.h>
#include <libxml/LibxmlTypes.h>
#include <reader/LocalFile.h>

#include "LibxmlDocument.h"
#include "TransformContext.h"
#include "TransformErrors.h"

namespace tibxml::transform {

using libxml::allocated;
using libxml::bytes;
using libxml::view;

struct Stylesheet::Compiled {
    Compiled() noexcept = default;
    Compiled(Compiled const&) = delete;
    Compiled& operator=(Compiled const&) = delete;

    ~Compiled() { xsltFreeStylesheet(style); }

    xsltStylesheet* style = nullptr;
};

namespace {

// A stylesheet without a file has a name all the same, which nothing can be relative to.
std::string urlOfStylesheet(std::string const& location) {
    return location.empty() ? "stylesheet" : reader::urlOf(location);
}

// An element is not the whole of its file, so it does not have the file's own name.
std::string urlOfSource(Source const& source) {
    if (source.location.empty()) return {};
    std::string url = reader::urlOf(source.location);
    return source.node->is(tree::NodeKind::document) ? url : url + "#";
}

// What the stylesheet says, or else the first of those that it imports.
template <class Value>
Value setting(xsltStylesheet* style, Value xsltStylesheet::*field, Value missing) noexcept {
    for (; style != nullptr; style = xsltNextImport(style)) {
        if (style->*field != missing) return style->*field;
    }
    return missing;
}

// The encoding that a stylesheet asks for; empty when it asks for none or for one that libxml2 does
// not know.
std::string_view knownEncoding(xsltStylesheet* style) noexcept {
    while (style != nullptr && style->encoding == nullptr)
        style = xsltNextImport(style);
    if (style == nullptr) return {};
    std::string_view const encoding = view(style->encoding);
    xmlCharEncodingHandler* const handler = xmlFindCharEncodingHandler(encoding.data());
    if (handler == nullptr) return {};
    xmlCharEncCloseFunc(handler);
    return encoding;
}

ResultForm formOf(xsltStylesheet* style, xmlDoc const& result) noexcept {
    ResultForm form;
    std::string_view const method =
        view(setting<xmlChar*>(style, &xsltStylesheet::method, nullptr));
    bool const isXml = (method.empty() || method == "xml" || method == "xhtml") &&
                       result.type != XML_HTML_DOCUMENT_NODE;
    form.hasDeclaration = isXml && setting(style, &xsltStylesheet::omitXmlDeclaration, -1) != 1;
    form.standalone = setting(style, &xsltStylesheet::standalone, -1);
    form.isIndented = isXml && setting(style, &xsltStylesheet::indent, -1) == 1;
    form.encoding = knownEncoding(style);
    return form;
}

bool stripsSpaces(xsltStylesheet* style) noexcept {
    for (; style != nullptr; style = xsltNextImport(style)) {
        if (style->stripSpaces != nullptr || style->stripAll != 0) return true;
    }
    return false;
}

// While this lives, a stylesheet asks for another encoding.
class EncodingChange {
public:
    // Throws std::bad_alloc.
    EncodingChange(xsltStylesheet& style, char const* encoding)
        : style_{style},
          before_{style.encoding} {
        style.encoding = allocated(xmlStrdup(bytes(encoding)));
    }

    EncodingChange(EncodingChange const&) = delete;
    EncodingChange& operator=(EncodingChange const&) = delete;

    ~EncodingChange() {
        xmlFree(style_.encoding);
        style_.encoding = before_;
    }

private:
    xsltStylesheet& style_;
    xmlChar* before_;
};

// Where libxml2 writes.
struct Written {
    std::string bytes;
    bool isOutOfMemory = false;
};

int append(void* context, char const* bytes, int size) noexcept {
    auto& written = *static_cast<Written*>(context);
    try {
        written.bytes.append(bytes, static_cast<std::size_t>(size));
        return size;
    } catch (...) {
        written.isOutOfMemory = true;
        return -1;
    }
}

// In UTF-8 without a handler, which becomes the output's.
std::string written(xsltStylesheet* style, xmlDoc& result, xmlCharEncodingHandler* handler) {
    Written written;
    xmlOutputBuffer* const buffer = xmlOutputBufferCreateIO(append, nullptr, &written, handler);
    if (buffer == nullptr) {
        if (handler != nullptr) xmlCharEncCloseFunc(handler);
        throw std::bad_alloc{};
    }
    bool const isWritten = xsltSaveResultTo(buffer, &result, style) >= 0;
    bool const isFinished = xmlOutputBufferClose(buffer) >= 0;
    if (written.isOutOfMemory) throw std::bad_alloc{};
    if (!isWritten || !isFinished)
        throw TransformError{"the result cannot be written in its encoding"};
    return std::move(written.bytes);
}

// A result in the output method of its stylesheet, which may add to it what that method demands.
std::string textOf(xsltStylesheet* style, xmlDoc& result, TextEncoding encoding) {
    // Or else the characters of attribute values become references.
    if (result.encoding == nullptr) result.encoding = allocated(xmlStrdup(bytes("UTF-8")));
    if (encoding == TextEncoding::wide) {
        EncodingChange const change{*style, "UTF-16"};
        return written(style, result, nullptr);
    }
    std::string_view const name = knownEncoding(style);
    if (!name.empty()) return written(style, result, xmlFindCharEncodingHandler(name.data()));
    EncodingChange const change{*style, "UTF-8"};
    return written(style, result, nullptr);
}

} // namespace

Stylesheet::Stylesheet(tree::Document& document, std::string location)
    : document_{&document},
      location_{std::move(location)},
      compiled_{std::make_unique<Compiled>()} {
    libxml::initializeOnce<xsltInitGlobals, xsltInit>();
    std::string const url = urlOfStylesheet(location_);
    TransformErrors const errors{document, url};
    LibxmlDocument source = toLibxml(document.node(), url);
    libxml::LibxmlInput const files{openLocalFile};
    NumericLocale const numbers;
    xsltStylesheet* const style = xsltParseStylesheetDoc(source.get());
    compiled_->style = style;
    if (style != nullptr) static_cast<void>(source.release()); // it is the stylesheet's now
    errors.requireMemory();
    if (style == nullptr || style->errors != 0) throw TransformError{errors.reason()};
    requireRules(style, errors);
}

Stylesheet::~Stylesheet() = default;

tree::DocumentRef Stylesheet::apply(Request const& request, std::string& messages) const {
    tree::DocumentRef document;
    run(request, messages,
        [&](xmlDoc& result) { document = fromLibxml(result, formOf(compiled_->style, result)); });
    return document;
}

std::string Stylesheet::text(Request const& request, TextEncoding encoding,
                             std::string& messages) const {
    std::string text;
    run(request, messages,
        [&](xmlDoc& result) { text = textOf(compiled_->style, result, encoding); });
    return text;
}

void Stylesheet::run(Request const& request, std::string& messages, UseResult const& use) const {
    TransformErrors const errors{*document_, urlOfStylesheet(location_)}; // of the copy
    tree::Node const* const source = request.source.node;
    std::string const url = urlOfSource(request.source);
    if (!stripsSpaces(compiled_->style))
        return runOn(ReadOnlyCopy{source, url}.get(), request, messages, use);
    runOn(toLibxml(source, url).get(), request, messages, use); // of which texts are freed
}

void Stylesheet::runOn(xmlDoc* input, Request const& request, std::string& messages,
                       UseResult const& use) const {
    // Each is used by those after it.
    TransformErrors const errors{*document_, urlOfStylesheet(location_)};
    libxml::LibxmlInput const files{openLocalFile};
    NumericLocale const numbers;
    Security const security = securityFor(request.permission);
    Context const context = contextFor(compiled_->style, input, security.get(), request);
    LibxmlDocument const result{
        xsltApplyStylesheetUser(compiled_->style, input, nullptr, nullptr, nullptr, context.get())};
    errors.requireMemory();
    if (!result || context->state != XSLT_STATE_OK || errors.missesInstruction())
        throw TransformError{errors.reason()};
    use(*result);
    errors.requireMemory();
    messages = errors.messages();
}

} // namespace tibxml::transform
