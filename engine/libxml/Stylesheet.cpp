#include <transform/Stylesheet.h>

#include <string_view>
#include <utility>

#include <libxslt/extensions.h>
#include <libxslt/imports.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include "LibraryDocument.h"
#include "LocalFiles.h"
#include "NumericLocale.h"
#include "ResultText.h"
#include "ResultTree.h"
#include "StylesheetRules.h"
#include "ThreadInput.h"
#include "TransformContext.h"
#include "TransformErrors.h"

namespace tibxml::transform {

struct Stylesheet::Compiled {
    Compiled() noexcept = default;
    Compiled(Compiled const&) = delete;
    Compiled& operator=(Compiled const&) = delete;

    ~Compiled() { xsltFreeStylesheet(style); }

    xsltStylesheet* style = nullptr;
};

namespace {

// libxslt makes its tables and the lock of its extensions on first use, which it does not guard.
void initializeOnce() {
    static bool const initialized = (xmlInitParser(), xsltInitGlobals(), xsltInit(), true);
    static_cast<void>(initialized);
}

// A stylesheet without a file has a name all the same, which nothing can be relative to.
std::string urlOfStylesheet(std::string const& location) {
    return location.empty() ? "stylesheet" : urlOf(location);
}

// An element is not the whole of its file, so it does not have the file's own name.
std::string urlOfSource(Source const& source) {
    if (source.location.empty()) return {};
    std::string url = urlOf(source.location);
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

} // namespace

Stylesheet::Stylesheet(tree::Document& document, std::string location)
    : document_{&document},
      location_{std::move(location)},
      compiled_{std::make_unique<Compiled>()} {
    initializeOnce();
    std::string const url = urlOfStylesheet(location_);
    TransformErrors const errors{document, url};
    LibraryDocument source = toLibrary(document.node(), url);
    reader::ThreadInput const files{openLocalFile};
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
        [&](xmlDoc& result) { document = fromLibrary(result, formOf(compiled_->style, result)); });
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
    runOn(toLibrary(source, url).get(), request, messages, use); // of which texts are freed
}

void Stylesheet::runOn(xmlDoc* input, Request const& request, std::string& messages,
                       UseResult const& use) const {
    // Each is used by those behind it.
    TransformErrors const errors{*document_, urlOfStylesheet(location_)};
    reader::ThreadInput const files{openLocalFile};
    NumericLocale const numbers;
    Security const security = securityFor(request.permission);
    Context const context = contextFor(compiled_->style, input, security.get(), request);
    LibraryDocument const result{
        xsltApplyStylesheetUser(compiled_->style, input, nullptr, nullptr, nullptr, context.get())};
    errors.requireMemory();
    if (!result || context->state != XSLT_STATE_OK || errors.missesInstruction())
        throw TransformError{errors.reason()};
    use(*result);
    errors.requireMemory();
    messages = errors.messages();
}

} // namespace tibxml::transform
