#include "Objects.h"

#include <functional>
#include <vector>

#include <TibXml/EnginePtr.h>
#include <TibXml/engine/ISAXCounter.h>
#include <TibXml/engine/ISAXXMLReader.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>
#include <reader/ReadError.h>

#include "TestStreams.h"

namespace tibxml::com::test {

namespace {

using Reader = Ptr<ISAXXMLReader>;

std::string text(wchar_t const* characters, int length) {
    EXPECT_NE(characters, nullptr);
    return utf8(std::wstring_view{characters, static_cast<std::size_t>(length)});
}

// Writes down every call; answers what `answer` says about the number of the call.
class Handler final : public platform::ComObject<ISAXContentHandler> {
public:
    std::string calls;
    int count = 0;
    std::function<HRESULT(int)> answer = [](int) { return S_OK; };
    std::function<void(ISAXAttributes&)> look = [](ISAXAttributes&) {};
    Ptr<ISAXLocator> locator;
    Ptr<ISAXAttributes> attributes;

    HRESULT putDocumentLocator(ISAXLocator* given) override {
        given->AddRef();
        *locator.out() = given;
        return note("locator");
    }

    HRESULT startDocument() override { return note("document"); }

    HRESULT endDocument() override { return note("end"); }

    HRESULT startPrefixMapping(wchar_t const* prefix, int prefixLength, wchar_t const* uri,
                               int uriLength) override {
        return note("+" + text(prefix, prefixLength) + "=" + text(uri, uriLength));
    }

    HRESULT endPrefixMapping(wchar_t const* prefix, int prefixLength) override {
        return note("-" + text(prefix, prefixLength));
    }

    HRESULT startElement(wchar_t const* uri, int uriLength, wchar_t const* local, int localLength,
                         wchar_t const* qualified, int qualifiedLength,
                         ISAXAttributes* given) override {
        given->AddRef();
        *attributes.out() = given;
        look(*given);
        return note("<{" + text(uri, uriLength) + "}" + text(local, localLength) + "|" +
                    text(qualified, qualifiedLength) + ">");
    }

    HRESULT endElement(wchar_t const* uri, int uriLength, wchar_t const* local, int localLength,
                       wchar_t const* qualified, int qualifiedLength) override {
        return note("</{" + text(uri, uriLength) + "}" + text(local, localLength) + "|" +
                    text(qualified, qualifiedLength) + ">");
    }

    HRESULT characters(wchar_t const* piece, int length) override {
        EXPECT_GT(length, 0);
        return note("'" + text(piece, length) + "'");
    }

    HRESULT ignorableWhitespace(wchar_t const*, int) override { return note("white space"); }

    HRESULT processingInstruction(wchar_t const* target, int targetLength, wchar_t const* data,
                                  int dataLength) override {
        return note("?" + text(target, targetLength) + " " + text(data, dataLength));
    }

    HRESULT skippedEntity(wchar_t const*, int) override { return note("entity"); }

private:
    ~Handler() override = default;

    HRESULT note(std::string const& call) {
        calls += (calls.empty() ? "" : " ") + call;
        return answer(count++);
    }
};

class Errors final : public platform::ComObject<ISAXErrorHandler> {
public:
    std::vector<std::string> calls;
    HRESULT code = S_OK;
    int line = -1;
    int column = -1;

    HRESULT error(ISAXLocator*, wchar_t const*, HRESULT) override { return note("error"); }

    HRESULT fatalError(ISAXLocator* locator, wchar_t const* message, HRESULT given) override {
        code = given;
        EXPECT_EQ(locator->getLineNumber(&line), S_OK);
        EXPECT_EQ(locator->getColumnNumber(&column), S_OK);
        return note(utf8(message));
    }

    HRESULT ignorableWarning(ISAXLocator*, wchar_t const*, HRESULT) override {
        return note("warning");
    }

private:
    ~Errors() override = default;

    HRESULT note(std::string const& call) {
        calls.push_back(call);
        return S_OK;
    }
};

Reader newReader() {
    return newObject<ISAXXMLReader>(CLSID_SAXXMLReader60);
}

} // namespace

class Sax : public testing::Test {
protected:
    Sax() {
        *owned_.out() = handler = new Handler;
        EXPECT_EQ(reader->putContentHandler(handler), S_OK);
    }

    HRESULT parse(wchar_t const* xml) {
        handler->calls.clear();
        handler->count = 0;
        return reader->parse(variantOf(_bstr_t{xml}));
    }

    Reader reader = newReader();
    Handler* handler = nullptr;

private:
    Ptr<Handler> owned_;
};

TEST_F(Sax, TellsNamespacesAroundTheirElements) {
    EXPECT_EQ(parse(L"<a xmlns='urn:d' xmlns:p='urn:p'><p:b xmlns=''><c/></p:b></a>"), S_OK);
    EXPECT_EQ(handler->calls,
              "locator document +=urn:d +p=urn:p <{urn:d}a|a> += <{urn:p}b|p:b> <{}c|c> "
              "</{}c|c> </{urn:p}b|p:b> - </{urn:d}a|a> -p - end");
}

TEST_F(Sax, TellsProcessingInstructionsAndText) {
    EXPECT_EQ(parse(L"<?xml version='1.0'?><?t data?><a> <?u?>x<![CDATA[y]]></a><!--x--><?v w ?>"),
              S_OK);
    EXPECT_EQ(handler->calls,
              "locator document ?t data <{}a|a> ' ' ?u  'x' 'y' </{}a|a> ?v w  end");
}

TEST_F(Sax, GivesAttributesByIndexAndName) {
    int looks = 0;
    handler->look = [&](ISAXAttributes& attributes) {
        ++looks;
        int length = 0;
        wchar_t const* found = nullptr;
        EXPECT_EQ(attributes.getLength(&length), S_OK);
        EXPECT_EQ(length, 3);
        EXPECT_EQ(attributes.getURI(1, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "urn:p");
        EXPECT_EQ(attributes.getURI(0, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "");
        EXPECT_EQ(attributes.getLocalName(1, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "b");
        EXPECT_EQ(attributes.getQName(1, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "p:b");
        EXPECT_EQ(attributes.getValue(2, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "3 \u00E4");
        EXPECT_EQ(attributes.getType(2, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "CDATA");
        EXPECT_EQ(attributes.getIndexFromName(L"urn:p", 5, L"b", 1, &length), S_OK);
        EXPECT_EQ(length, 1);
        EXPECT_EQ(attributes.getIndexFromName(nullptr, 0, L"b", 1, &length), S_OK);
        EXPECT_EQ(length, 0);
        EXPECT_EQ(attributes.getIndexFromQName(L"cxyz", 1, &length), S_OK);
        EXPECT_EQ(length, 2);
        EXPECT_EQ(attributes.getValueFromName(L"urn:p", 5, L"b", 1, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "2");
        EXPECT_EQ(attributes.getValueFromQName(L"b", 1, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "1");
        EXPECT_EQ(attributes.getTypeFromName(L"", 0, L"c", 1, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "CDATA");
        EXPECT_EQ(attributes.getTypeFromQName(L"p:b", 3, &found, &length), S_OK);
        EXPECT_EQ(text(found, length), "CDATA");
        wchar_t const* local = nullptr;
        wchar_t const* qualified = nullptr;
        int localLength = 0;
        int qualifiedLength = 0;
        EXPECT_EQ(attributes.getName(1, &found, &length, &local, &localLength, &qualified,
                                     &qualifiedLength),
                  S_OK);
        EXPECT_EQ(text(found, length) + text(local, localLength) + text(qualified, qualifiedLength),
                  "urn:pbp:b");
    };
    EXPECT_EQ(parse(L"<a b='1' xmlns:p='urn:p' p:b='2' c='3&#32;\u00E4'/>"), S_OK);
    EXPECT_EQ(looks, 1);
}

TEST_F(Sax, HasNoAttributesButTheElements) {
    handler->look = [&](ISAXAttributes& attributes) {
        for (int const index : {-1, 1, 1000}) {
            wchar_t const* found = L"";
            int length = 7;
            EXPECT_EQ(attributes.getValue(index, &found, &length), E_INVALIDARG);
            EXPECT_EQ(found, nullptr);
            EXPECT_EQ(length, 0);
            EXPECT_EQ(attributes.getURI(index, &found, &length), E_INVALIDARG);
            EXPECT_EQ(attributes.getLocalName(index, &found, &length), E_INVALIDARG);
            EXPECT_EQ(attributes.getQName(index, &found, &length), E_INVALIDARG);
            EXPECT_EQ(attributes.getType(index, &found, &length), E_INVALIDARG);
            EXPECT_EQ(attributes.getName(index, &found, &length, &found, &length, &found, &length),
                      E_INVALIDARG);
        }
        int index = 7;
        wchar_t const* found = L"";
        EXPECT_EQ(attributes.getIndexFromName(L"u", 1, L"b", 1, &index), E_INVALIDARG);
        EXPECT_EQ(index, -1);
        EXPECT_EQ(attributes.getIndexFromName(L"", 0, L"b", -1, &index), E_INVALIDARG);
        EXPECT_EQ(attributes.getIndexFromQName(nullptr, 1, &index), E_INVALIDARG);
        EXPECT_EQ(attributes.getValueFromQName(L"x", 1, &found, &index), E_INVALIDARG);
        EXPECT_EQ(attributes.getTypeFromQName(L"x", 1, &found, &index), E_INVALIDARG);
        EXPECT_EQ(attributes.getValueFromName(L"", 0, L"x", 1, &found, &index), E_INVALIDARG);
        EXPECT_EQ(attributes.getTypeFromName(L"", 0, L"x", 1, &found, &index), E_INVALIDARG);
        EXPECT_EQ(found, nullptr);
        EXPECT_EQ(attributes.getLength(nullptr), E_POINTER);
        EXPECT_EQ(attributes.getValue(0, nullptr, &index), E_POINTER);
        EXPECT_EQ(attributes.getValue(0, &found, nullptr), E_POINTER);
        EXPECT_EQ(attributes.getIndexFromQName(L"b", 1, nullptr), E_POINTER);
    };
    EXPECT_EQ(parse(L"<a b='1'/>"), S_OK);
    EXPECT_EQ(handler->count, 5);
}

TEST_F(Sax, ShowsAKeptAttributeObjectNothing) {
    EXPECT_EQ(parse(L"<a b='1'/>"), S_OK);
    int length = 7;
    EXPECT_EQ(handler->attributes->getLength(&length), S_OK);
    EXPECT_EQ(length, 0);
}

TEST_F(Sax, StopsAtEveryFailingCodeWithThatCode) {
    wchar_t const* const xml = L"<?p?><a xmlns:p='u' b='1'>x<p:c/></a>";
    EXPECT_EQ(parse(xml), S_OK);
    int const calls = handler->count;
    EXPECT_EQ(calls, 11);
    for (int last = 0; last != calls; ++last) {
        handler->answer = [last](int call) { return call == last ? E_ABORT : S_OK; };
        EXPECT_EQ(parse(xml), E_ABORT) << last;
        EXPECT_EQ(handler->count, last + 1);
    }
    handler->answer = [](int) { return S_FALSE; };
    EXPECT_EQ(parse(xml), S_OK);
    EXPECT_EQ(handler->count, calls);
}

TEST_F(Sax, EndsExceptionsOfHandlersAsCodes) {
    for (int last = 0; last != 5; ++last) {
        handler->answer = [last](int call) -> HRESULT {
            if (call == last) throw std::runtime_error{"words"};
            return S_OK;
        };
        EXPECT_EQ(parse(L"<a/>"), E_FAIL) << last;
        EXPECT_EQ(takeErrorText(), "words");
        EXPECT_EQ(handler->count, last + 1);
    }
    handler->answer = [](int) -> HRESULT { throw std::bad_alloc{}; };
    EXPECT_EQ(parse(L"<a/>"), E_OUTOFMEMORY);
    handler->answer = [](int) -> HRESULT { throw 1; };
    EXPECT_EQ(parse(L"<a/>"), E_UNEXPECTED);
}

TEST_F(Sax, TellsWhatIsWrong) {
    EXPECT_EQ(parse(L"<a>\n<b></a>"), platform::resultCode(0xC00CE000 + 7));
    EXPECT_EQ(takeErrorText(), "2:8: the end tag </a> does not match the start tag <b> at line 2");
    EXPECT_EQ(parse(L"<!DOCTYPE a><a/>"), platform::resultCode(0xC00CE584));
    EXPECT_EQ(handler->calls, "locator document");
    EXPECT_EQ(reader->parseURL(L"/no/such/file"), platform::resultCode(0xC00CE587));
    EXPECT_EQ(takeErrorText(), "cannot open the file: No such file or directory");
    EXPECT_EQ(parse(nullptr), platform::resultCode(0xC00CE001));
    EXPECT_EQ(reader->parse(variantOf(static_cast<IUnknown*>(nullptr))),
              platform::resultCode(0xC00CE587));
    EXPECT_EQ(reader->parse(variantOf(LONG{1})), E_INVALIDARG);
    EXPECT_EQ(reader->parseURL(nullptr), E_INVALIDARG);
}

TEST_F(Sax, LeavesTheErrorInformationOfAStoppingHandler) {
    EXPECT_NE(parse(L"<a>"), S_OK);
    handler->answer = [](int) { return E_FAIL; };
    EXPECT_EQ(parse(L"<a/>"), E_FAIL);
    EXPECT_EQ(takeErrorText(), "") << "the words are those of another failure";
}

TEST_F(Sax, TellsErrorsToAnErrorHandler) {
    Ptr<Errors> errors;
    *errors.out() = new Errors;
    EXPECT_EQ(reader->putErrorHandler(errors), S_OK);
    EXPECT_EQ(parse(L"<a>\n<b></a>"), platform::resultCode(0xC00CE000 + 7));
    EXPECT_EQ(errors->calls, std::vector<std::string>{
                                 "the end tag </a> does not match the start tag <b> at line 2"});
    EXPECT_EQ(errors->code, platform::resultCode(0xC00CE000 + 7));
    EXPECT_EQ(errors->line, 2);
    EXPECT_EQ(errors->column, 8);
    EXPECT_EQ(parse(L"<a/>"), S_OK);
    handler->answer = [](int) { return E_FAIL; };
    EXPECT_EQ(parse(L"<a/>"), E_FAIL);
    EXPECT_EQ(errors->calls.size(), 1U);
}

TEST_F(Sax, LocatesWhatItTells) {
    std::string places;
    handler->answer = [&](int) {
        int line = 0;
        int column = 0;
        EXPECT_EQ(handler->locator->getLineNumber(&line), S_OK);
        EXPECT_EQ(handler->locator->getColumnNumber(&column), S_OK);
        places += std::to_string(line) + ":" + std::to_string(column) + " ";
        return S_OK;
    };
    EXPECT_EQ(parse(L"<a>\n\u00E4<b/>\n</a>"), S_OK);
    EXPECT_EQ(places, "1:1 1:1 1:3 2:2 2:4 2:6 3:1 3:5 3:5 ");
    wchar_t const* id = L"";
    int line = 7;
    EXPECT_EQ(handler->locator->getLineNumber(&line), S_OK);
    EXPECT_EQ(line, 0) << "the parse is over";
    EXPECT_EQ(handler->locator->getPublicId(&id), S_OK);
    EXPECT_EQ(id, nullptr);
    EXPECT_EQ(handler->locator->getSystemId(&id), S_OK);
    EXPECT_EQ(id, nullptr);
    EXPECT_EQ(handler->locator->getSystemId(nullptr), E_POINTER);
    EXPECT_EQ(handler->locator->getLineNumber(nullptr), E_POINTER);
}

TEST_F(Sax, KeepsTheLocatorAtTheError) {
    EXPECT_NE(parse(L"<a>\n<b></a>"), S_OK);
    int number = 0;
    EXPECT_EQ(handler->locator->getLineNumber(&number), S_OK);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(handler->locator->getColumnNumber(&number), S_OK);
    EXPECT_EQ(number, 8);
}

TEST_F(Sax, KnowsItsHandlers) {
    Ptr<ISAXContentHandler> content;
    EXPECT_EQ(reader->getContentHandler(content.out()), S_OK);
    EXPECT_EQ(content.get(), handler);
    EXPECT_EQ(reader->putContentHandler(nullptr), S_OK);
    EXPECT_EQ(reader->getContentHandler(content.out()), S_OK);
    EXPECT_EQ(content.get(), nullptr);
    EXPECT_EQ(parse(L"<a xmlns:p='u' b='1'>x<?y?></a>"), S_OK);
    EXPECT_NE(parse(L"<a>"), S_OK);
    EXPECT_EQ(handler->calls, "");
    Ptr<ISAXErrorHandler> error;
    EXPECT_EQ(reader->getErrorHandler(error.out()), S_OK);
    EXPECT_EQ(error.get(), nullptr);
    EXPECT_EQ(reader->getErrorHandler(nullptr), E_POINTER);
    EXPECT_EQ(reader->getContentHandler(nullptr), E_POINTER);
}

TEST_F(Sax, TellsAHandlerToTheEndThatIsReplacedOnTheWay) {
    handler->answer = [&](int call) {
        return call == 1 ? reader->putContentHandler(nullptr) : S_OK;
    };
    EXPECT_EQ(parse(L"<a/>"), S_OK);
    EXPECT_EQ(handler->count, 5);
}

TEST_F(Sax, RefusesToParseWithinAParse) {
    HRESULT inner = S_OK;
    handler->answer = [&](int call) {
        if (call == 2) inner = reader->parse(variantOf(_bstr_t{L"<b/>"}));
        return S_OK;
    };
    EXPECT_EQ(parse(L"<a/>"), S_OK);
    EXPECT_EQ(inner, E_FAIL);
    EXPECT_EQ(handler->calls, "locator document <{}a|a> </{}a|a> end");
}

TEST_F(Sax, SurvivesItsReleaseWithinAParse) {
    handler->answer = [&](int) {
        reader.reset();
        return S_OK;
    };
    ISAXXMLReader* const only = reader.get();
    EXPECT_EQ(only->parse(variantOf(_bstr_t{L"<a/>"})), S_OK);
    EXPECT_EQ(handler->count, 5);
}

TEST_F(Sax, SaysWhichFeaturesItHas) {
    struct Row {
        wchar_t const* name;
        VARIANT_BOOL value;
    };

    for (Row const& row : {
             Row{L"prohibit-dtd", VARIANT_TRUE},
             Row{L"normalize-line-breaks", VARIANT_TRUE},
             Row{L"http://xml.org/sax/features/namespaces", VARIANT_TRUE},
             Row{L"http://xml.org/sax/features/namespace-prefixes", VARIANT_FALSE},
             Row{L"exhaustive-errors", VARIANT_FALSE},
             Row{L"schema-validation", VARIANT_FALSE},
             Row{L"http://xml.org/sax/features/external-general-entities", VARIANT_FALSE},
             Row{L"http://xml.org/sax/features/external-parameter-entities", VARIANT_FALSE},
         }) {
        VARIANT_BOOL value = 7;
        EXPECT_EQ(reader->getFeature(row.name, &value), S_OK);
        EXPECT_EQ(value, row.value) << utf8(row.name);
        EXPECT_EQ(reader->putFeature(row.name, row.value), S_OK);
        VARIANT_BOOL const opposite = row.value == VARIANT_TRUE ? VARIANT_FALSE : VARIANT_TRUE;
        EXPECT_EQ(reader->putFeature(row.name, opposite), E_NOTIMPL);
    }
    VARIANT_BOOL value = 7;
    EXPECT_EQ(reader->getFeature(L"no-such", &value), E_INVALIDARG);
    EXPECT_EQ(value, VARIANT_FALSE);
    EXPECT_EQ(reader->getFeature(nullptr, &value), E_INVALIDARG);
    EXPECT_EQ(reader->getFeature(L"prohibit-dtd", nullptr), E_POINTER);
    EXPECT_EQ(reader->putFeature(L"no-such", VARIANT_TRUE), E_INVALIDARG);
}

TEST_F(Sax, HasNothingElse) {
    VARIANT value{};
    EXPECT_EQ(reader->getProperty(L"no-such", &value), E_INVALIDARG);
    EXPECT_EQ(reader->getProperty(L"no-such", nullptr), E_POINTER);
    EXPECT_EQ(reader->putProperty(L"no-such", value), E_INVALIDARG);
    ISAXEntityResolver* resolver = nullptr;
    EXPECT_EQ(reader->getEntityResolver(&resolver), S_OK);
    EXPECT_EQ(resolver, nullptr);
    EXPECT_EQ(reader->putEntityResolver(nullptr), S_OK);
    EXPECT_EQ(reader->putEntityResolver(reinterpret_cast<ISAXEntityResolver*>(this)), E_NOTIMPL);
    ISAXDTDHandler* types = nullptr;
    EXPECT_EQ(reader->getDTDHandler(&types), S_OK);
    EXPECT_EQ(types, nullptr);
    EXPECT_EQ(reader->putDTDHandler(nullptr), S_OK);
    EXPECT_EQ(reader->putDTDHandler(reinterpret_cast<ISAXDTDHandler*>(this)), E_NOTIMPL);
    wchar_t const* url = L"";
    EXPECT_EQ(reader->getBaseURL(&url), S_OK);
    EXPECT_EQ(url, nullptr);
    EXPECT_EQ(reader->putBaseURL(L"x"), E_NOTIMPL);
    EXPECT_EQ(reader->getSecureBaseURL(&url), S_OK);
    EXPECT_EQ(reader->putSecureBaseURL(L"x"), E_NOTIMPL);
    EXPECT_EQ(reader->putBaseURL(nullptr), S_OK);
}

TEST_F(Sax, CountsWithoutTelling) {
    Ptr<ISAXCounter> const counter = as<ISAXCounter>(reader.get());
    SAXCounts counts{9, 9, 9, 9};
    EXPECT_EQ(counter->count(variantOf(_bstr_t{L"<a b='1' xmlns='u'>\u20AC<c/></a>"}), &counts),
              S_OK);
    EXPECT_EQ(counts.elements, 2U);
    EXPECT_EQ(counts.attributes, 1U);
    EXPECT_EQ(counts.textBytes, 3U);
    EXPECT_EQ(counts.depth, 2U);
    EXPECT_EQ(handler->calls, "");

    EXPECT_EQ(counter->count(variantOf(_bstr_t{L"<a>xy<b>"}), &counts), parse(L"<a>xy<b>"));
    EXPECT_EQ(counts.elements, 2U);
    EXPECT_EQ(counts.textBytes, 2U);
    EXPECT_EQ(counter->count(variantOf(_bstr_t{L"<a/>"}), nullptr), E_POINTER);
    EXPECT_EQ(counter->count(VARIANT{}, &counts), E_INVALIDARG);
    EXPECT_EQ(counts.elements, 0U);
}

TEST_F(Sax, CountsWhatAStreamHas) {
    Ptr<ISAXCounter> const counter = as<ISAXCounter>(reader.get());
    std::string xml = "<a>";
    for (int i = 0; i != 50000; ++i)
        xml += "<b c='d'>e</b>";
    EnginePtr<IStream> const failing = slowStream(xml, 4096, 400000);
    VARIANT input{};
    input.vt = VT_UNKNOWN;
    input.punkVal = failing.operator->();
    SAXCounts counts{};
    EXPECT_EQ(counter->count(input, &counts), static_cast<HRESULT>(reader::errorSource));
    EXPECT_GT(counts.elements, 28000U);
    EXPECT_EQ(counts.elements, counts.attributes + 1);

    EnginePtr<IStream> const whole = slowStream(xml + "</a>", 4096);
    input.punkVal = whole.operator->();
    EXPECT_EQ(counter->count(input, &counts), S_OK);
    EXPECT_EQ(counts.elements, 50001U);
    EXPECT_EQ(counts.textBytes, 50000U);
}

TEST_F(Sax, OffersItsInterfaces) {
    EXPECT_TRUE(isSame(as<ISAXXMLReader>(reader.get()).get(), reader.get()));
    EXPECT_NE(as<ISupportErrorInfo>(reader.get()).get(), nullptr);
    EXPECT_EQ(as<IXMLDOMDocument>(reader.get()).get(), nullptr);
}

} // namespace tibxml::com::test
