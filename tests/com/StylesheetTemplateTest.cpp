// Compiled stylesheets and the processors that run them.
#include "Objects.h"

#include <limits>
#include <string>

#include <TibXml/engine/IXSLTemplate.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/platform/Variant.h>

#include "TestStreams.h"

namespace tibxml::com::test {

namespace {

using Template = Ptr<IXSLTemplate>;
using Processor = Ptr<IXSLProcessor>;

Template newTemplate() {
    return newObject<IXSLTemplate>(CLSID_XSLTemplate60);
}

Document sheet(std::wstring const& content) {
    return documentOf((L"<xsl:stylesheet version='1.0' xmlns:p='urn:p' exclude-result-prefixes='p' "
                       L"xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
                       content + L"</xsl:stylesheet>")
                          .c_str());
}

Processor processorOf(IXSLTemplate* compiled) {
    Processor processor;
    EXPECT_EQ(compiled->createProcessor(processor.out()), S_OK);
    return processor;
}

Processor processorFor(std::wstring const& content) {
    Template const compiled = newTemplate();
    EXPECT_EQ(compiled->putref_stylesheet(sheet(content)), S_OK) << takeErrorText();
    return processorOf(compiled);
}

HRESULT transform(IXSLProcessor* processor) {
    VARIANT_BOOL isDone = VARIANT_FALSE;
    HRESULT const result = processor->transform(&isDone);
    EXPECT_EQ(isDone, result == S_OK ? VARIANT_TRUE : VARIANT_FALSE);
    return result;
}

std::string outputOf(IXSLProcessor* processor) {
    _variant_t output;
    EXPECT_EQ(processor->get_output(&output), S_OK);
    if (output.vt == VT_EMPTY) return "nothing";
    EXPECT_EQ(output.vt, VT_BSTR);
    return output.vt == VT_BSTR ? utf8(output.bstrVal) : "no string";
}

std::string resultOf(IXSLProcessor* processor) {
    EXPECT_EQ(transform(processor), S_OK) << takeErrorText();
    return outputOf(processor);
}

LONG stateOf(IXSLProcessor* processor) {
    LONG state = -1;
    EXPECT_EQ(processor->get_readyState(&state), S_OK);
    return state;
}

_variant_t numberOf(double number) {
    VARIANT value{};
    value.vt = VT_R8;
    value.dblVal = number;
    return value;
}

HRESULT add(IXSLProcessor* processor, wchar_t const* name, _variant_t const& value,
            wchar_t const* uri = nullptr) {
    return processor->addParameter(_bstr_t{name}, value, _bstr_t{uri});
}

std::string bytesOf(IStream* stream) {
    LARGE_INTEGER const start{};
    EXPECT_EQ(stream->Seek(start, STREAM_SEEK_SET, nullptr), S_OK);
    std::string bytes(1000, '\0');
    ULONG count = 0;
    EXPECT_GE(stream->Read(bytes.data(), 1000, &count), 0);
    bytes.resize(count);
    return bytes;
}

constexpr wchar_t const* text = L"<xsl:output method='text'/>";

class Stylesheets : public testing::Test {
protected:
    Document const source = documentOf(L"<d><a>1</a><a>2</a></d>");
};

} // namespace

TEST_F(Stylesheets, AreCompiledOnce) {
    Template const compiled = newTemplate();
    Document const style =
        sheet(std::wstring{text} + L"<xsl:template match='/'>one</xsl:template>");
    ASSERT_EQ(compiled->putref_stylesheet(style), S_OK);
    Processor const first = processorOf(compiled);
    ASSERT_TRUE(loadText(style, L"<none/>"));
    Processor const second = processorOf(compiled);
    for (Processor const& processor : {first, second}) {
        EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
        EXPECT_EQ(resultOf(processor), "one");
        EXPECT_EQ(resultOf(processor), "one");
    }
}

TEST_F(Stylesheets, AreThoseOfTheTemplateWhenAProcessorIsMade) {
    Template const compiled = newTemplate();
    ASSERT_EQ(compiled->putref_stylesheet(
                  sheet(std::wstring{text} + L"<xsl:template match='/'>one</xsl:template>")),
              S_OK);
    Processor const first = processorOf(compiled);
    Document const other =
        sheet(std::wstring{text} + L"<xsl:template match='/'>two</xsl:template>");
    ASSERT_EQ(compiled->putref_stylesheet(other), S_OK);
    Processor const second = processorOf(compiled);
    EXPECT_EQ(first->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(second->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(resultOf(first), "one");
    EXPECT_EQ(resultOf(second), "two");
    Node document;
    EXPECT_EQ(second->get_stylesheet(document.out()), S_OK);
    EXPECT_TRUE(isSame(document, other));
    Template owner;
    EXPECT_EQ(first->get_ownerTemplate(owner.out()), S_OK);
    EXPECT_TRUE(isSame(owner, compiled));
}

TEST_F(Stylesheets, ThatDoNotCompileChangeNothing) {
    Template const compiled = newTemplate();
    Document const good = sheet(L"<xsl:template match='/'><r/></xsl:template>");
    Node found;
    EXPECT_EQ(compiled->get_stylesheet(found.out()), S_FALSE);
    EXPECT_EQ(compiled->putref_stylesheet(good), S_OK);
    takeErrorText();
    EXPECT_EQ(compiled->putref_stylesheet(sheet(L"<xsl:template match='['/>")), E_FAIL);
    EXPECT_NE(takeErrorText().find("/xsl:stylesheet[1]/xsl:template[1]"), std::string::npos);
    EXPECT_EQ(compiled->putref_stylesheet(nodeAt(good, L"*")), E_INVALIDARG);
    EXPECT_EQ(compiled->get_stylesheet(found.out()), S_OK);
    EXPECT_TRUE(isSame(found, good));
    EXPECT_EQ(compiled->get_stylesheet(nullptr), E_POINTER);
    EXPECT_EQ(compiled->createProcessor(nullptr), E_POINTER);
    EXPECT_EQ(compiled->putref_stylesheet(nullptr), S_OK);
    Processor processor;
    EXPECT_EQ(compiled->createProcessor(processor.out()), E_FAIL);
    EXPECT_EQ(processor.get(), nullptr);
}

TEST_F(Stylesheets, TakeParameters) {
    Processor const processor = processorFor(
        std::wstring{text} + L"<xsl:param name='v' select=\"'none'\"/><xsl:template match='/'>"
                             L"<xsl:value-of select='$v'/>,<xsl:value-of select='$v + 1'/>,"
                             L"<xsl:value-of select='boolean($v)'/></xsl:template>");
    ASSERT_EQ(processor->put_input(variantOf(source.get())), S_OK);

    struct {
        _variant_t value;
        char const* result;
    } const rows[] = {
        {_variant_t{L"a'b\"c"}, "a'b\"c,NaN,true"},
        {_variant_t{L""}, ",NaN,false"},
        {_variant_t{L"2"}, "2,3,true"},
        {numberOf(1.5), "1.5,2.5,true"},
        {numberOf(0.0), "0,1,false"},
        {numberOf(std::numeric_limits<double>::quiet_NaN()), "NaN,NaN,false"},
        {numberOf(-std::numeric_limits<double>::infinity()), "-Infinity,-Infinity,true"},
        {_variant_t{-7}, "-7,-6,true"},
        {_variant_t{static_cast<short>(7)}, "7,8,true"},
        {_variant_t{true}, "true,2,true"},
        {_variant_t{false}, "false,1,false"},
    };

    EXPECT_EQ(resultOf(processor), "none,NaN,true");
    for (auto const& row : rows) {
        EXPECT_EQ(add(processor, L"v", row.value), S_OK) << row.result;
        EXPECT_EQ(resultOf(processor), row.result);
        EXPECT_EQ(resultOf(processor), row.result) << "it stays";
    }
    EXPECT_EQ(add(processor, L"v", _variant_t{}), S_OK);
    EXPECT_EQ(resultOf(processor), "none,NaN,true");
    EXPECT_EQ(add(processor, L"v", _variant_t{L"x"}), S_OK);
    VARIANT null{};
    null.vt = VT_NULL;
    EXPECT_EQ(processor->addParameter(_bstr_t{L"v"}, null), S_OK);
    EXPECT_EQ(resultOf(processor), "none,NaN,true");
    EXPECT_EQ(add(processor, L"w", _variant_t{}), S_OK) << "it is not there";
}

TEST_F(Stylesheets, TakeParametersWithNamespaces) {
    Processor const processor = processorFor(
        std::wstring{text} + L"<xsl:param name='v'>0</xsl:param><xsl:param name='p:v'>0</xsl:param>"
                             L"<xsl:template match='/'><xsl:value-of select='$v'/>,"
                             L"<xsl:value-of select='$p:v'/></xsl:template>");
    ASSERT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(add(processor, L"v", _variant_t{L"one"}), S_OK);
    EXPECT_EQ(resultOf(processor), "one,0");
    EXPECT_EQ(add(processor, L"v", numberOf(2.5), L"urn:p"), S_OK);
    EXPECT_EQ(resultOf(processor), "one,2.5");
    EXPECT_EQ(add(processor, L"v", _variant_t{}), S_OK);
    EXPECT_EQ(resultOf(processor), "0,2.5");
    EXPECT_EQ(add(processor, L"other", _variant_t{L"x"}, L"urn:p"), S_OK);
    EXPECT_EQ(resultOf(processor), "0,2.5") << "nobody asks for it";
}

TEST_F(Stylesheets, RefuseOtherParameters) {
    Processor const processor = processorFor(L"<xsl:template match='/'><r/></xsl:template>");
    for (wchar_t const* const name : {L"", L"p:v", L"1", L"a b", L"{urn:p}v"})
        EXPECT_EQ(add(processor, name, _variant_t{L"x"}), E_INVALIDARG) << utf8(name);
    EXPECT_EQ(processor->addParameter(nullptr, _variant_t{L"x"}), E_INVALIDARG);
    EXPECT_EQ(add(processor, L"v", _variant_t{L"\x1"}), E_INVALIDARG);
    EXPECT_EQ(processor->addParameter(_bstr_t{L"v"}, variantOf(nodeAt(source, L"d").get())),
              E_INVALIDARG);
    EXPECT_EQ(processor->addObject(source, _bstr_t{L"urn:o"}), E_NOTIMPL);
}

TEST_F(Stylesheets, StartInAMode) {
    Processor const processor =
        processorFor(std::wstring{text} + L"<xsl:template match='/'>plain</xsl:template>"
                                          L"<xsl:template match='/' mode='m'>m</xsl:template>"
                                          L"<xsl:template match='/' mode='p:m'>pm</xsl:template>");
    ASSERT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(resultOf(processor), "plain");
    EXPECT_EQ(processor->setStartMode(_bstr_t{L"m"}), S_OK);
    EXPECT_EQ(resultOf(processor), "m");
    EXPECT_EQ(processor->setStartMode(_bstr_t{L"m"}, _bstr_t{L"urn:p"}), S_OK);
    EXPECT_EQ(resultOf(processor), "pm");
    _bstr_t mode;
    _bstr_t uri;
    EXPECT_EQ(processor->get_startMode(mode.GetAddress()), S_OK);
    EXPECT_EQ(processor->get_startModeURI(uri.GetAddress()), S_OK);
    EXPECT_EQ(utf8(mode), "m");
    EXPECT_EQ(utf8(uri), "urn:p");
    EXPECT_EQ(processor->setStartMode(_bstr_t{L"p:m"}), E_INVALIDARG);
    EXPECT_EQ(resultOf(processor), "pm");
    EXPECT_EQ(processor->setStartMode(_bstr_t{L"unknown"}), S_OK);
    EXPECT_EQ(resultOf(processor), "12") << "by the rules for all nodes";
    EXPECT_EQ(processor->setStartMode(nullptr), S_OK);
    EXPECT_EQ(resultOf(processor), "plain");
    EXPECT_EQ(processor->get_startMode(nullptr), E_POINTER);
    EXPECT_EQ(processor->get_startModeURI(nullptr), E_POINTER);
}

TEST_F(Stylesheets, TransformOtherInputs) {
    Processor const processor = processorFor(text);
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(resultOf(processor), "12");
    EXPECT_EQ(processor->put_input(variantOf(nodeAt(source, L"d/a").get())), S_OK);
    EXPECT_EQ(resultOf(processor), "1");
    EnginePtr<IStream> const stream = slowStream("<?xml version='1.0'?><e>three</e>", 3);
    EXPECT_EQ(processor->put_input(variantOf(stream.GetInterfacePtr())), S_OK);
    EXPECT_EQ(resultOf(processor), "three");
    _variant_t input;
    EXPECT_EQ(processor->get_input(&input), S_OK);
    ASSERT_EQ(input.vt, VT_UNKNOWN);
    EXPECT_EQ(xmlOf(as<IXMLDOMNode>(input.punkVal)), "<?xml version=\"1.0\"?>\n<e>three</e>\n");
}

TEST_F(Stylesheets, RefuseOtherInputs) {
    Processor const processor = processorFor(text);
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(processor->put_input(variantOf(_bstr_t{L"<d/>"})), E_INVALIDARG);
    EXPECT_EQ(processor->put_input(variantOf(static_cast<IUnknown*>(nullptr))), E_INVALIDARG);
    EXPECT_EQ(processor->put_input(variantOf(nodeAt(source, L"//text()").get())), E_INVALIDARG);
    EXPECT_EQ(processor->put_input(variantOf(newTemplate().get())), E_INVALIDARG);
    EnginePtr<IStream> const broken = slowStream("<e>", 3);
    EXPECT_EQ(processor->put_input(variantOf(broken.GetInterfacePtr())), E_FAIL);
    EnginePtr<IStream> const failing = slowStream("<e>text</e>", 3, 4);
    EXPECT_EQ(processor->put_input(variantOf(failing.GetInterfacePtr())), E_FAIL);
    EXPECT_EQ(resultOf(processor), "12") << "the old input stays";
    EXPECT_EQ(processor->put_input(VARIANT{}), S_OK);
    EXPECT_EQ(transform(processor), E_FAIL);
    _variant_t input;
    EXPECT_EQ(processor->get_input(&input), S_OK);
    EXPECT_EQ(input.vt, VT_EMPTY);
    EXPECT_EQ(processor->get_input(nullptr), E_POINTER);
    EXPECT_EQ(processor->transform(nullptr), E_POINTER);
}

TEST_F(Stylesheets, WriteToStreamsInTheirEncoding) {
    struct {
        wchar_t const* output;
        std::string bytes;
    } const rows[] = {
        {L"", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\u00e4\u20ac</r>\n"},
        {L"<xsl:output encoding='ISO-8859-1'/>",
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>\xe4&#8364;</r>\n"},
        {L"<xsl:output encoding='none'/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\u00e4\u20ac</r>\n"},
        {L"<xsl:output method='text' encoding='UTF-8'/>", "\u00e4\u20ac"},
        {L"<xsl:output method='text' encoding='UTF-16LE'/>", std::string{"\xe4\0\xac\x20", 4}},
    };

    for (auto const& row : rows) {
        Processor const processor =
            processorFor(row.output + std::wstring{L"<xsl:template match='/'><r>\u00e4\u20ac</r>"
                                                   L"</xsl:template>"});
        Ptr<IStream> stream;
        *stream.out() = SHCreateMemStream(nullptr, 0);
        EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
        EXPECT_EQ(processor->put_output(variantOf(stream.get())), S_OK);
        EXPECT_EQ(transform(processor), S_OK);
        EXPECT_EQ(bytesOf(stream), row.bytes) << utf8(row.output);
        _variant_t output;
        EXPECT_EQ(processor->get_output(&output), S_OK);
        ASSERT_EQ(output.vt, VT_UNKNOWN);
        EXPECT_TRUE(isSame(output.punkVal, stream));
    }
}

TEST_F(Stylesheets, FailWhenTheStreamDoes) {
    Processor const processor = processorFor(L"<xsl:template match='/'><r/></xsl:template>");
    EnginePtr<IStream> const readOnly = slowStream("", 1);
    ULONG count = 0;
    HRESULT const code = readOnly->Write("x", 1, &count);
    ASSERT_TRUE(FAILED(code));
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(processor->put_output(variantOf(readOnly.GetInterfacePtr())), S_OK);
    takeErrorText();
    EXPECT_EQ(transform(processor), code);
    EXPECT_NE(takeErrorText(), "");
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_LOADED);
    EXPECT_EQ(processor->put_output(VARIANT{}), S_OK);
    EXPECT_EQ(resultOf(processor), "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r/>\n");
}

TEST_F(Stylesheets, ReplaceTheContentOfADocument) {
    Processor const processor = processorFor(L"<xsl:template match='/'><r/></xsl:template>");
    Document const target = documentOf(L"<old/>");
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(processor->put_output(variantOf(target.get())), S_OK);
    EXPECT_EQ(transform(processor), S_OK);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n<r/>\n");
    EXPECT_EQ(processor->put_output(variantOf(nodeAt(target, L"r").get())), E_INVALIDARG);
    EXPECT_EQ(processor->put_output(variantOf(_bstr_t{L"x"})), E_INVALIDARG);
    EXPECT_EQ(processor->put_output(variantOf(newTemplate().get())), E_INVALIDARG);
    EXPECT_EQ(processor->get_output(nullptr), E_POINTER);
}

TEST_F(Stylesheets, SayHowFarTheyAre) {
    Processor const processor = processorFor(
        std::wstring{text} + L"<xsl:param name='v' select='1'/><xsl:template match='/'><xsl:if "
                             L"test='$v = 0'><xsl:message terminate='yes'>no</xsl:message></xsl:if>"
                             L"done</xsl:template>");
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_UNINITIALIZED);
    EXPECT_EQ(outputOf(processor), "nothing");
    EXPECT_EQ(processor->reset(), S_OK);
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_UNINITIALIZED);
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_LOADED);
    EXPECT_EQ(resultOf(processor), "done");
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_COMPLETE);
    EXPECT_EQ(add(processor, L"v", numberOf(0.0)), S_OK);
    EXPECT_EQ(transform(processor), E_FAIL);
    EXPECT_EQ(takeErrorText(), "no");
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_LOADED);
    EXPECT_EQ(outputOf(processor), "nothing");
    EXPECT_EQ(add(processor, L"v", numberOf(1.0)), S_OK);
    EXPECT_EQ(resultOf(processor), "done");
    EXPECT_EQ(processor->reset(), S_OK);
    EXPECT_EQ(stateOf(processor), XSL_READYSTATE_LOADED);
    EXPECT_EQ(outputOf(processor), "nothing");
    EXPECT_EQ(resultOf(processor), "done") << "input and parameters stay";
    EXPECT_EQ(processor->get_readyState(nullptr), E_POINTER);
}

TEST_F(Stylesheets, TellTheirMessages) {
    Processor const processor = processorFor(
        std::wstring{text} + L"<xsl:template match='/'><xsl:for-each select='//a'><xsl:message>"
                             L"<xsl:value-of select='.'/></xsl:message></xsl:for-each>"
                             L"</xsl:template>");
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    for (int i = 0; i != 2; ++i) {
        EXPECT_EQ(transform(processor), S_OK);
        EXPECT_EQ(takeErrorText(), "1\n2");
    }
}

TEST_F(Stylesheets, ReadOtherDocumentsOnlyWhenTheirsAllowsIt) {
    Document const style = sheet(L"<xsl:template match='/'><r><xsl:value-of "
                                 L"select='count(document(\"/none.xml\"))'/></r></xsl:template>");
    Template const compiled = newTemplate();
    ASSERT_EQ(compiled->putref_stylesheet(style), S_OK);
    Processor const processor = processorOf(compiled);
    EXPECT_EQ(processor->put_input(variantOf(source.get())), S_OK);
    EXPECT_EQ(transform(processor), E_FAIL);
    EXPECT_EQ(style->setProperty(_bstr_t{L"AllowDocumentFunction"}, _variant_t{true}), S_OK);
    EXPECT_EQ(transform(processor), S_OK);
}

TEST_F(Stylesheets, KeepWhatTheyNeed) {
    Processor processor;
    {
        Template const compiled = newTemplate();
        ASSERT_EQ(compiled->putref_stylesheet(sheet(text)), S_OK);
        processor = processorOf(compiled);
        EXPECT_EQ(processor->put_input(variantOf(documentOf(L"<d>only here</d>").get())), S_OK);
    }
    EXPECT_EQ(resultOf(processor), "only here");
}

} // namespace tibxml::com::test
