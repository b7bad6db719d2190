#include <transform/Stylesheet.h>

#include <string_view>
#include <utility>

#include <libxml/encoding.h>
#include <libxslt/imports.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include "LibraryDocument.h"
#include "LocalFiles.h"
#include "NodeSetFunction.h"
#include "NumericLocale.h"
#include "ResultTree.h"
#include "StylesheetRules.h"
#include "ThreadInput.h"
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

struct FreeContext {
    void operator()(xsltTransformContext* context) const noexcept {
        xsltFreeTransformContext(context);
    }
};

struct FreeSecurity {
    void operator()(xsltSecurityPrefs* security) const noexcept { xsltFreeSecurityPrefs(security); }
};

using Context = std::unique_ptr<xsltTransformContext, FreeContext>;
using Security = std::unique_ptr<xsltSecurityPrefs, FreeSecurity>;

void initializeOnce() {
    static bool const initialized = (xmlInitParser(), xsltInit(), true);
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

// A relative path has come from a stylesheet or a source without a file.
int allowAbsolute(xsltSecurityPrefs*, xsltTransformContext*, char const* path) noexcept {
    return path != nullptr && *path == '/' ? 1 : 0;
}

Security securityFor(DocumentFunction permission) {
    Security security{allocated(xsltNewSecurityPrefs())};
    for (xsltSecurityOption const option : {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                                            XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK})
        xsltSetSecurityPrefs(security.get(), option, xsltSecurityForbid);
    xsltSetSecurityPrefs(security.get(), XSLT_SECPREF_READ_FILE,
                         permission == DocumentFunction::localFiles ? allowAbsolute
                                                                    : xsltSecurityForbid);
    return security;
}

Context contextFor(xsltStylesheet* style, xmlDoc* source, xsltSecurityPrefs* security) {
    Context context{allocated(xsltNewTransformContext(style, source))};
    TransformErrors::watch(*context);
    if (xsltSetCtxtSecurityPrefs(security, context.get()) != 0) throw std::bad_alloc{};
    xsltSetCtxtParseOptions(context.get(), XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_NONET);
    context->maxTemplateDepth = maximumTemplateDepth;
    registerNodeSet(*context);
    return context;
}

// What the stylesheet says, or else the first of those that it imports.
template <class Value>
Value setting(xsltStylesheet* style, Value xsltStylesheet::*field, Value missing) noexcept {
    for (; style != nullptr; style = xsltNextImport(style)) {
        if (style->*field != missing) return style->*field;
    }
    return missing;
}

bool isKnownEncoding(char const* name) noexcept {
    xmlCharEncodingHandler* const handler = xmlFindCharEncodingHandler(name);
    if (handler == nullptr) return false;
    xmlCharEncCloseFunc(handler);
    return true;
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
    auto const* const encoding =
        reinterpret_cast<char const*>(setting<xmlChar*>(style, &xsltStylesheet::encoding, nullptr));
    if (encoding != nullptr && isKnownEncoding(encoding)) form.encoding = encoding;
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
      location_{std::move(location)} {
    initializeOnce();
    std::string const url = urlOfStylesheet(location_);
    TransformErrors const errors{document, url};
    LibraryDocument source = toLibrary(document.node(), url);
    reader::ThreadInput const files{openLocalFile};
    NumericLocale const numbers;
    compiled_ = std::make_unique<Compiled>(); // before there is something that could be lost
    compiled_->style = xsltParseStylesheetDoc(source.get());
    if (compiled_->style != nullptr) static_cast<void>(source.release()); // it is the stylesheet's
    errors.requireMemory();
    xsltStylesheet* const style = compiled_->style;
    if (style == nullptr || style->errors != 0) throw TransformError{errors.reason()};
    requireRules(style, errors);
}

Stylesheet::~Stylesheet() = default;

tree::DocumentRef Stylesheet::apply(Source const& source, DocumentFunction permission) const {
    TransformErrors const errors{*document_, urlOfStylesheet(location_)};
    std::string const url = urlOfSource(source);
    if (!stripsSpaces(compiled_->style))
        return transformed(ReadOnlyCopy{source.node, url}.get(), permission);
    return transformed(toLibrary(source.node, url).get(), permission); // of which texts are freed
}

tree::DocumentRef Stylesheet::transformed(xmlDoc* input, DocumentFunction permission) const {
    // Each is used by those behind it.
    TransformErrors const errors{*document_, urlOfStylesheet(location_)};
    reader::ThreadInput const files{openLocalFile};
    NumericLocale const numbers;
    Security const security = securityFor(permission);
    Context const context = contextFor(compiled_->style, input, security.get());
    LibraryDocument const result{
        xsltApplyStylesheetUser(compiled_->style, input, nullptr, nullptr, nullptr, context.get())};
    errors.requireMemory();
    if (!result || context->state != XSLT_STATE_OK || errors.missesInstruction())
        throw TransformError{errors.reason()};
    return fromLibrary(*result, formOf(compiled_->style, *result));
}

} // namespace tibxml::transform
