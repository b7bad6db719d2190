// Documents on different threads at the same time, which need no locks from their callers.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <TibXml/engine/IXMLDOMDocument.h>
#include <TibXml/platform/BStr.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Stream.h>
#include <com/Measures.h>

// The C library loads and unloads the converters of encodings under a lock of its own that
// ThreadSanitizer does not see; nothing else is left out.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's name
extern "C" __attribute__((visibility("default"))) char const* __tsan_default_suppressions() {
    return "race:_dl_close_worker\n";
}

namespace tibxml::com::test {

constexpr int threadCount = 4;
constexpr int rounds = 40;

VARIANT variantOf(IUnknown* object) {
    VARIANT value{};
    value.vt = VT_UNKNOWN;
    value.punkVal = object;
    return value;
}

// What one thread does with documents of its own, in the same words as all the others.
class Work {
public:
    // The first thing that went wrong; empty when nothing did.
    std::string const& failure() const { return failure_; }

    void run() {
        for (int i = 0; i != rounds && failure_.empty(); ++i) {
            void* object = nullptr;
            expect(CoCreateInstance(CLSID_DOMDocument60, nullptr, CLSCTX_INPROC_SERVER,
                                    IID_IXMLDOMDocument3, &object),
                   S_OK, "create");
            auto* const document = static_cast<IXMLDOMDocument3*>(object);
            load(document);
            query(document);
            edit(document);
            save(document);
            fail(document);
            document->Release();
        }
    }

private:
    void expect(HRESULT result, HRESULT expected, char const* what) {
        if (result != expected && failure_.empty()) failure_ = what;
    }

    void load(IXMLDOMDocument3* document) {
        std::wstring xml = L"<?xml version='1.0' encoding='ISO-8859-1'?><r xmlns:p='urn:p'>";
        for (int i = 0; i != 30; ++i) {
            xml += L"<item id='" + std::to_wstring(i) + L"'><p:v>\u00E4" + std::to_wstring(i) +
                   L"</p:v></item>";
        }
        VARIANT_BOOL done = VARIANT_FALSE;
        expect(document->loadXML(_bstr_t{(xml + L"</r>").c_str()}, &done), S_OK, "load");
    }

    void query(IXMLDOMDocument3* document) {
        _bstr_t const prefixes{L"xmlns:n='urn:p'"};
        VARIANT value{};
        value.vt = VT_BSTR;
        value.bstrVal = prefixes;
        expect(document->setProperty(_bstr_t{L"SelectionNamespaces"}, value), S_OK, "prefixes");
        expectText(document, L"r/item[@id='7']/n:v", L"\u00E47");
        expectText(document, L"//item[last()]/n:v/text()", L"\u00E429");
        IXMLDOMNodeList* nodes = nullptr;
        expect(document->selectNodes(_bstr_t{L"//item[@id mod 3 = 0]"}, &nodes), S_OK, "select");
        LONG length = 0;
        if (nodes != nullptr) nodes->get_length(&length);
        if (nodes != nullptr) nodes->Release();
        if (length != 10) failure_ = "length";
    }

    void expectText(IXMLDOMNode* context, wchar_t const* expression, std::wstring_view expected) {
        IXMLDOMNode* node = nullptr;
        expect(context->selectSingleNode(_bstr_t{expression}, &node), S_OK, "select one");
        if (node == nullptr) return;
        _bstr_t text;
        expect(node->get_text(text.GetAddress()), S_OK, "text");
        if (std::wstring_view{text, text.length()} != expected) failure_ = "another text";
        node->Release();
    }

    void edit(IXMLDOMDocument3* document) {
        IXMLDOMNode* item = nullptr;
        expect(document->selectSingleNode(_bstr_t{L"r/item[3]"}, &item), S_OK, "select item");
        if (item == nullptr) return;
        expect(item->put_dataType(_bstr_t{L"bin.base64"}), S_OK, "annotate");
        expect(item->put_text(_bstr_t{L"a new text of some length"}), S_OK, "set text");
        IXMLDOMNamedNodeMap* map = nullptr;
        IXMLDOMAttribute* attribute = nullptr;
        expect(item->get_attributes(&map), S_OK, "attributes");
        expect(document->createAttribute(_bstr_t{L"p:new"}, &attribute), S_OK, "create attribute");
        expect(map->setNamedItem(attribute, nullptr), S_OK, "set attribute");
        attribute->Release();
        map->Release();
        item->Release();
        expectText(document, L"r/item[3]", L"a new text of some length");
    }

    void save(IXMLDOMDocument3* document) {
        IStream* const stream = SHCreateMemStream(nullptr, 0);
        expect(document->save(variantOf(stream)), S_OK, "save");
        LARGE_INTEGER const start{};
        stream->Seek(start, STREAM_SEEK_SET, nullptr);
        VARIANT_BOOL done = VARIANT_FALSE;
        expect(document->load(variantOf(stream), &done), S_OK, "load again");
        stream->Release();
        expectText(document, L"r/item[@id='7']/n:v", L"\u00E47");
    }

    void fail(IXMLDOMDocument3* document) {
        VARIANT_BOOL done = VARIANT_FALSE;
        expect(document->loadXML(_bstr_t{L"<a>\n</b>"}, &done), S_FALSE, "broken text");
        IXMLDOMNode* node = nullptr;
        expect(document->selectSingleNode(_bstr_t{L"a[["}, &node), E_FAIL, "bad expression");
        IErrorInfo* info = nullptr;
        expect(GetErrorInfo(0, &info), S_OK, "error information");
        if (info != nullptr) info->Release();
        loadBadBytes(document);
    }

    void loadBadBytes(IXMLDOMDocument3* document) {
        std::string_view const bytes = "<?xml version='1.0' encoding='EUC-JP'?><a>\xFF\xFF</a>";
        IStream* const stream = SHCreateMemStream(reinterpret_cast<BYTE const*>(bytes.data()),
                                                  static_cast<UINT>(bytes.size()));
        VARIANT_BOOL done = VARIANT_FALSE;
        expect(document->load(variantOf(stream), &done), S_FALSE, "bad bytes");
        stream->Release();
    }

    std::string failure_;
};

TEST(Documents, OnManyThreadsDoNotMeet) {
    std::size_t const before = liveObjects();
    std::vector<Work> works(threadCount);
    std::vector<std::thread> threads;
    threads.reserve(works.size());
    for (Work& work : works)
        threads.emplace_back([&work] { work.run(); });
    for (std::thread& thread : threads)
        thread.join();
    for (Work const& work : works)
        EXPECT_EQ(work.failure(), "");
    EXPECT_EQ(liveObjects(), before);
}

} // namespace tibxml::com::test
