// Transforming when memory runs out, as far as it is the engine's own.
#include <TibXml/platform/Variant.h>

#include "Objects.h"

#include <string>

#include <TibXml/engine/IXSLTemplate.h>

#include "FailingAllocation.h"

namespace tibxml::com::test {

namespace {

Document sheet(wchar_t const* content) {
    return documentOf((std::wstring{L"<xsl:stylesheet version='1.0' "
                                    L"xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"} +
                       content + L"</xsl:stylesheet>")
                          .c_str());
}

} // namespace

TEST(TransformMemory, OfAString) {
    Document const source = documentOf(L"<d/>");
    Document const style = sheet(L"<xsl:template match='/'><r>some text that is not "
                                 L"short<xsl:message>a message</xsl:message></r></xsl:template>");
    failEveryAllocation(5, [&](FailingAllocation const& failing) {
        BSTR result = nullptr;
        HRESULT const code = source->transformNode(style, &result);
        bool const isRight = code == S_OK
                                 ? result != nullptr
                                 : code == E_OUTOFMEMORY && result == nullptr && failing.happened();
        SysFreeString(result);
        return isRight;
    });
}

TEST(TransformMemory, OfAProcessor) {
    Document const source = documentOf(L"<d/>");
    Ptr<IXSLTemplate> compiled;
    void* object = nullptr;
    ASSERT_EQ(CoCreateInstance(CLSID_XSLTemplate60, nullptr, CLSCTX_INPROC_SERVER, IID_IXSLTemplate,
                               &object),
              S_OK);
    *compiled.out() = static_cast<IXSLTemplate*>(object);
    Document const style = sheet(L"<xsl:param name='v'/><xsl:template match='/'><r>"
                                 L"<xsl:value-of select='$v'/></r></xsl:template>");
    _bstr_t const name{L"v"};
    _variant_t const value{L"a value that is longer than a short string"};
    VARIANT const input = variantOf(source.get());
    failEveryAllocation(5, [&](FailingAllocation const& failing) {
        IXSLProcessor* processor = nullptr;
        VARIANT_BOOL isDone = VARIANT_FALSE;
        HRESULT code = compiled->putref_stylesheet(style);
        if (code == S_OK) code = compiled->createProcessor(&processor);
        if (code == S_OK) code = processor->put_input(input);
        if (code == S_OK) code = processor->addParameter(name, value);
        if (code == S_OK) code = processor->transform(&isDone);
        if (processor != nullptr) processor->Release();
        if (code == S_OK) return isDone == VARIANT_TRUE;
        return code == E_OUTOFMEMORY && isDone == VARIANT_FALSE && failing.happened();
    });
}

// Compiling leaves nothing either.
TEST(TransformMemory, OfCompiling) {
    Document const source = documentOf(L"<d/>");
    Document const style = sheet(L"<xsl:template match='/'><r>text</r></xsl:template>");
    failEveryAllocation(5, [&](FailingAllocation const& failing) {
        Ptr<IXMLDOMNode> copy;
        HRESULT code = style->cloneNode(VARIANT_TRUE, copy.out());
        BSTR result = nullptr;
        if (code == S_OK) code = source->transformNode(copy, &result);
        bool const isRight = code == S_OK || (code == E_OUTOFMEMORY && failing.happened());
        SysFreeString(result);
        return isRight;
    });
}

} // namespace tibxml::com::test
