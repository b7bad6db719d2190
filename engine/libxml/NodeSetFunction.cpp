#include "NodeSetFunction.h"

#include <new>

#include <libxml/xpathInternals.h>
#include <libxslt/extensions.h>
#include <libxslt/extra.h>
#include <libxslt/variables.h>

namespace tibxml::transform {

namespace {

// A string or any other value is one text node.
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

} // namespace

void registerNodeSet(xsltTransformContext& context) {
    for (char const* const uri : {"http://exslt.org/common", "urn:schemas-microsoft-com:xslt"}) {
        if (xsltRegisterExtFunction(&context, reinterpret_cast<xmlChar const*>("node-set"),
                                    reinterpret_cast<xmlChar const*>(uri), nodeSet) != 0)
            throw std::bad_alloc{};
    }
}

} // namespace tibxml::transform
