// Compiled stylesheets on different threads at the same time, each with its own.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include <TibXml/EnginePtr.h>
#include <TibXml/engine/IXMLDOMDocument.h>
#include <TibXml/engine/IXSLTemplate.h>
#include <TibXml/platform/BStr.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>

namespace {

constexpr int threadCount = 4;
constexpr int rounds = 30;

template <class Interface>
EnginePtr<Interface> make(CLSID const& classId) {
    EnginePtr<Interface> object;
    tibxml::engine::createObject(classId, object);
    return object;
}

EnginePtr<IXMLDOMDocument3> documentOf(wchar_t const* xml) {
    auto document = make<IXMLDOMDocument3>(CLSID_DOMDocument60);
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    document->loadXML(_bstr_t{xml}.GetBSTR(), &isLoaded);
    return document;
}

// What the last call left for its caller.
std::wstring errorText() {
    EnginePtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.GetAddress()) != S_OK) return {};
    _bstr_t text;
    info->GetDescription(text.GetAddress());
    return static_cast<wchar_t const*>(text);
}

// Every run has a parameter of its own, which has to come back as the result and as a message.
std::wstring firstFault(int thread) {
    auto const style = documentOf(
        L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
        L"<xsl:output method='text'/><xsl:param name='v'/><xsl:template match='/'>"
        L"<xsl:message><xsl:value-of select='$v'/></xsl:message><xsl:value-of select='$v div 2'/>"
        L"</xsl:template></xsl:stylesheet>");
    auto const source = documentOf(L"<d/>");
    auto const compiled = make<IXSLTemplate>(CLSID_XSLTemplate60);
    if (compiled->putref_stylesheet(style) != S_OK) return L"it does not compile";
    EnginePtr<IXSLProcessor> processor;
    if (compiled->createProcessor(processor.GetAddress()) != S_OK) return L"no processor";
    processor->put_input(_variant_t{static_cast<IUnknown*>(source)});
    for (int i = 0; i != rounds; ++i) {
        int const number = 2 * (thread * rounds + i);
        processor->addParameter(_bstr_t{L"v"}.GetBSTR(), _variant_t{number});
        VARIANT_BOOL isDone = VARIANT_FALSE;
        if (processor->transform(&isDone) != S_OK) return L"failed: " + errorText();
        if (std::wstring const text = errorText(); text != std::to_wstring(number))
            return L"message " + text;
        _variant_t output;
        processor->get_output(&output);
        if (std::wstring const text{output.bstrVal}; text != std::to_wstring(number / 2))
            return L"result " + text;
    }
    return {};
}

TEST(Templates, OnManyThreadsDoNotMeet) {
    std::vector<std::wstring> faults(threadCount);
    std::vector<std::thread> threads;
    threads.reserve(faults.size());
    for (int i = 0; i != threadCount; ++i)
        threads.emplace_back([&faults, i] { faults[static_cast<std::size_t>(i)] = firstFault(i); });
    for (std::thread& thread : threads)
        thread.join();
    for (std::wstring const& fault : faults)
        EXPECT_EQ(fault, L"");
}

} // namespace
