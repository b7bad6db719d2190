#include "TransformContext.h"

#include <langinfo.h>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include <libxml/xpathInternals.h>
#include <libxslt/extensions.h>
#include <libxslt/extra.h>
#include <libxslt/variables.h>
#include <libxslt/xsltutils.h>

#include <libxml/LibxmlTypes.h>
#include <reader/LocalFile.h>

#include "TransformErrors.h"

namespace tibxml::transform {

using libxml::allocated;
using libxml::bytes;

namespace {

xmlChar const* bytesOrNull(std::string const& text) noexcept {
    return text.empty() ? nullptr : bytes(text);
}

// A relative path has come from a stylesheet or a source without a file.
int allowAbsolute(xsltSecurityPrefs*, xsltTransformContext*, char const* path) noexcept {
    return path != nullptr && *path == '/' ? 1 : 0;
}

struct ToLibxml {
    xmlXPathObject* operator()(std::string const& text) const noexcept {
        return xmlXPathNewString(bytes(text));
    }

    xmlXPathObject* operator()(double number) const noexcept { return xmlXPathNewFloat(number); }

    xmlXPathObject* operator()(bool truth) const noexcept {
        return xmlXPathNewBoolean(truth ? 1 : 0);
    }
};

// Set as a text first, because libxslt takes texts and expressions only, of which neither is exact
// for numbers.
void setParameter(xsltTransformContext& context, Parameter const& parameter) {
    ExpandedName const& name = parameter.name;
    std::string const full = name.uri.empty() ? name.local : "{" + name.uri + "}" + name.local;
    bool const isSet = xsltQuoteOneUserParam(&context, bytes(full), bytes("")) == 0;
    auto* const variable = static_cast<xsltStackElem*>(
        xmlHashLookup2(context.globalVars, bytes(name.local), bytesOrNull(name.uri)));
    if (!isSet || variable == nullptr)
        throw TransformError{"the parameter " + name.local + " cannot be set"};
    xmlXPathObject* const value = allocated(std::visit(ToLibxml{}, parameter.value));
    xmlXPathFreeObject(variable->value);
    variable->value = value;
}

// Modes are compared by their place in the stylesheet's dictionary.
void setMode(xsltTransformContext& context, ExpandedName const& mode) {
    if (mode.local.empty()) return;
    context.mode = allocated(xmlDictLookup(context.dict, bytes(mode.local), -1));
    if (!mode.uri.empty())
        context.modeURI = allocated(xmlDictLookup(context.dict, bytes(mode.uri), -1));
}

// The one extension that stylesheets may use: `node-set`, which turns a result tree fragment into
// nodes. A string or any other value is one text node.
void textAsNodeSet(xmlXPathParserContext* parser) noexcept {
    xsltTransformContext* const context = xsltXPathGetTransformContext(parser);
    xmlChar* const text = xmlXPathPopString(parser);
    xmlDoc* const fragment = xsltCreateRVT(context);
    if (fragment != nullptr) xsltRegisterLocalRVT(context, fragment);
    xmlNode* const node = fragment != nullptr ? xmlNewDocText(fragment, text) : nullptr;
    xmlFree(text);
    if (node == nullptr) return xmlXPathErr(parser, XPATH_MEMORY_ERROR);
    xmlAddChild(reinterpret_cast<xmlNode*>(fragment), node);
    valuePush(parser, xmlXPathNewNodeSet(node));
}

void nodeSet(xmlXPathParserContext* parser, int count) noexcept {
    if (count != 1) return xmlXPathErr(parser, XPATH_INVALID_ARITY);
    xmlXPathObject const* const value = parser->value;
    if (value == nullptr) return xmlXPathErr(parser, XPATH_INVALID_OPERAND);
    if (value->type == XPATH_XSLT_TREE || value->type == XPATH_NODESET) {
        xsltFunctionNodeSet(parser, count);
    } else {
        textAsNodeSet(parser);
    }
}

// For one transformation, under the names of EXSLT and of the platform's own engine.
void registerNodeSet(xsltTransformContext& context) {
    for (char const* const uri : {"http://exslt.org/common", "urn:schemas-microsoft-com:xslt"}) {
        if (xsltRegisterExtFunction(&context, bytes("node-set"), bytes(uri), nodeSet) != 0)
            throw std::bad_alloc{};
    }
}

int readFile(void* context, char* buffer, int size) noexcept {
    auto& file = *static_cast<reader::LocalFile*>(context);
    return static_cast<int>(file.read(buffer, static_cast<std::size_t>(size)));
}

int closeFile(void* context) noexcept {
    delete static_cast<reader::LocalFile*>(context);
    return 0;
}

xmlParserInputBuffer* bufferFor(std::string const& path, xmlCharEncoding encoding) {
    auto file = std::make_unique<reader::LocalFile>(reader::LocalFile::regularAt(path));
    if (!file->isOpen()) return nullptr;
    auto* const buffer = xmlParserInputBufferCreateIO(readFile, closeFile, file.get(), encoding);
    if (buffer != nullptr) static_cast<void>(file.release()); // until libxml2 closes it
    return buffer;
}

} // namespace

xmlParserInputBuffer* openLocalFile(char const* url, xmlCharEncoding encoding) noexcept {
    try {
        std::optional<std::string> const path = reader::pathOfUrl(url);
        return path ? bufferFor(*path, encoding) : nullptr;
    } catch (...) {
        return nullptr; // what cannot be opened is missing
    }
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

Context contextFor(xsltStylesheet* style, xmlDoc* input, xsltSecurityPrefs* security,
                   Request const& request) {
    Context context{allocated(xsltNewTransformContext(style, input))};
    TransformErrors::watch(*context);
    if (xsltSetCtxtSecurityPrefs(security, context.get()) != 0) throw std::bad_alloc{};
    xsltSetCtxtParseOptions(context.get(), XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_NONET);
    context->maxTemplateDepth = maximumTemplateDepth;
    registerNodeSet(*context);
    for (Parameter const& parameter : request.parameters)
        setParameter(*context, parameter);
    setMode(*context, request.mode);
    return context;
}

NumericLocale::NumericLocale() {
    if (std::string_view{::nl_langinfo(RADIXCHAR)} == ".") return;
    locale_t const copy = ::duplocale(::uselocale(nullptr));
    if (copy == nullptr) throw std::bad_alloc{};
    own_ = ::newlocale(LC_NUMERIC_MASK, "C", copy);
    if (own_ == nullptr) {
        ::freelocale(copy);
        throw std::bad_alloc{};
    }
    before_ = ::uselocale(own_);
}

NumericLocale::~NumericLocale() {
    if (own_ == nullptr) return;
    ::uselocale(before_);
    ::freelocale(own_);
}

} // namespace tibxml::transform
