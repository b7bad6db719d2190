// The handler of a SAX object, called as an engine calls it.
#include <services/WXmlSaxImpl.h>

#include "SaxRecorder.h"

#include <array>

namespace {

/// Attributes that fail where a test wants it.
class FailingAttributes final : public tibxml::platform::ComObject<ISAXAttributes> {
public:
    HRESULT lengthResult = S_OK;
    HRESULT nameResult = S_OK;
    HRESULT valueResult = S_OK;

    HRESULT getLength(int* length) noexcept override {
        *length = 2;
        return lengthResult;
    }

    HRESULT getLocalName(int, wchar_t const** name, int* length) noexcept override {
        *name = L"name";
        *length = 4;
        return nameResult;
    }

    HRESULT getValue(int, wchar_t const** value, int* length) noexcept override {
        *value = L"value";
        *length = 5;
        return valueResult;
    }

    HRESULT getURI(int, wchar_t const**, int*) noexcept override { return E_NOTIMPL; }

    HRESULT getQName(int, wchar_t const**, int*) noexcept override { return E_NOTIMPL; }

    HRESULT getName(int, wchar_t const**, int*, wchar_t const**, int*, wchar_t const**,
                    int*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT getIndexFromName(wchar_t const*, int, wchar_t const*, int, int*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT getIndexFromQName(wchar_t const*, int, int*) noexcept override { return E_NOTIMPL; }

    HRESULT getType(int, wchar_t const**, int*) noexcept override { return E_NOTIMPL; }

    HRESULT getTypeFromName(wchar_t const*, int, wchar_t const*, int, wchar_t const**,
                            int*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT getTypeFromQName(wchar_t const*, int, wchar_t const**, int*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT getValueFromName(wchar_t const*, int, wchar_t const*, int, wchar_t const**,
                             int*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT getValueFromQName(wchar_t const*, int, wchar_t const**, int*) noexcept override {
        return E_NOTIMPL;
    }
};

class SaxHandler : public testing::Test {
protected:
    HRESULT startElement() {
        return handler->startElement(L"u", 1, L"local", 5, L"p:local", 7, attributes);
    }

    HRESULT endElement() { return handler->endElement(L"u", 1, L"local", 5, L"p:local", 7); }

    SaxRecorder recorder;
    EnginePtr<WXmlSaxImpl> handler{new WXmlSaxImpl{&recorder.sax}, false};
    FailingAttributes* const failing = new FailingAttributes;
    EnginePtr<ISAXAttributes> attributes{failing, false};
};

TEST_F(SaxHandler, OffersTwoInterfaces) {
    void* object = nullptr;
    EXPECT_EQ(handler->QueryInterface(IID_ISAXContentHandler, &object), S_OK);
    EXPECT_EQ(object, static_cast<ISAXContentHandler*>(handler.GetInterfacePtr()));
    EXPECT_EQ(handler->Release(), 1U);
    EXPECT_EQ(handler->QueryInterface(IID_IUnknown, &object), S_OK);
    EXPECT_EQ(object, static_cast<ISAXContentHandler*>(handler.GetInterfacePtr()));
    EXPECT_EQ(handler->Release(), 1U);
    EXPECT_EQ(handler->QueryInterface(IID_ISAXLocator, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(SaxHandler, CountsItsReferences) {
    EXPECT_EQ(handler->AddRef(), 2U);
    EXPECT_EQ(handler->AddRef(), 3U);
    EXPECT_EQ(handler->Release(), 2U);
    EXPECT_EQ(handler->Release(), 1U);
}

TEST_F(SaxHandler, HasItsFunctionsInOrder) {
    // Called through the table, as an engine does that was compiled elsewhere.
    using Simple = HRESULT (*)(void*);
    void* const object = static_cast<ISAXContentHandler*>(handler.GetInterfacePtr());
    Simple const* const table = *static_cast<Simple const* const*>(object);
    EXPECT_EQ(table[4](object), S_OK);
    EXPECT_EQ(recorder.take(), "document ");
    EXPECT_EQ(table[5](object), S_OK);
    EXPECT_EQ(recorder.take(), " end");
    using Text = HRESULT (*)(void*, wchar_t const*, int);
    auto const texts = reinterpret_cast<Text const*>(table);
    EXPECT_EQ(texts[10](object, L"abc", 3), S_OK);
    EXPECT_EQ(recorder.take(), "abc");
    EXPECT_EQ(texts[11](object, L"abc", 3), S_OK);
    EXPECT_EQ(texts[13](object, L"abc", 3), S_OK);
    EXPECT_EQ(recorder.take(), "");
}

TEST_F(SaxHandler, IgnoresWhatThereIsNoCallbackFor) {
    EXPECT_EQ(handler->putDocumentLocator(nullptr), S_OK);
    EXPECT_EQ(handler->startPrefixMapping(L"p", 1, L"u", 1), S_OK);
    EXPECT_EQ(handler->endPrefixMapping(L"p", 1), S_OK);
    EXPECT_EQ(handler->ignorableWhitespace(L" ", 1), S_OK);
    EXPECT_EQ(handler->processingInstruction(L"t", 1, L"d", 1), S_OK);
    EXPECT_EQ(handler->skippedEntity(L"e", 1), S_OK);
    EXPECT_EQ(recorder.take(), "");
}

TEST_F(SaxHandler, ForwardsTheRestByLocalName) {
    EXPECT_EQ(handler->startDocument(), S_OK);
    EXPECT_EQ(startElement(), S_OK);
    EXPECT_EQ(handler->characters(L"text", 2), S_OK);
    EXPECT_EQ(endElement(), S_OK);
    EXPECT_EQ(handler->endDocument(), S_OK);
    EXPECT_EQ(recorder.take(), "document <local name='value' name='value'>te</local> end");
}

TEST_F(SaxHandler, AnswersWhatTheCallbackDoes) {
    for (bool const throws : {false, true}) {
        recorder.answer = [throws](std::size_t) -> bool {
            if (throws) throw 1;
            return false;
        };
        EXPECT_EQ(handler->startDocument(), E_FAIL);
        EXPECT_EQ(startElement(), E_FAIL);
        EXPECT_EQ(handler->characters(L"text", 2), E_FAIL);
        EXPECT_EQ(endElement(), E_FAIL);
        EXPECT_EQ(handler->endDocument(), E_FAIL);
    }
    EXPECT_THROW(handler->RethrowException(), int);
    EXPECT_NO_THROW(handler->RethrowException());
}

TEST_F(SaxHandler, SucceedsWithoutCallbacks) {
    WXmlSax empty;
    EnginePtr<WXmlSaxImpl> const idle{new WXmlSaxImpl{&empty}, false};
    failing->lengthResult = E_FAIL; // not asked for
    EXPECT_EQ(idle->startDocument(), S_OK);
    EXPECT_EQ(idle->startElement(L"", 0, L"a", 1, L"a", 1, attributes), S_OK);
    EXPECT_EQ(idle->characters(L"text", 2), S_OK);
    EXPECT_EQ(idle->endElement(L"", 0, L"a", 1, L"a", 1), S_OK);
    EXPECT_EQ(idle->endDocument(), S_OK);
    int context = 0;
    empty.OnCharacters.context = &context; // half of a callback counts as none
    EXPECT_EQ(idle->characters(L"text", 2), S_OK);
}

TEST_F(SaxHandler, FailsAsTheAttributesDo) {
    for (HRESULT FailingAttributes::*const result :
         {&FailingAttributes::lengthResult, &FailingAttributes::nameResult,
          &FailingAttributes::valueResult}) {
        failing->*result = E_ABORT;
        EXPECT_EQ(startElement(), E_ABORT);
        failing->*result = S_OK;
    }
    EXPECT_EQ(recorder.take(), "");
    EXPECT_EQ(startElement(), S_OK);
}

TEST_F(SaxHandler, OutlivesItsOwner) {
    handler->Disown();
    EXPECT_EQ(handler->startDocument(), E_FAIL);
    EXPECT_EQ(startElement(), E_FAIL);
    EXPECT_EQ(recorder.take(), "");
}

} // namespace
