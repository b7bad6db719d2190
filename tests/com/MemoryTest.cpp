#include <TibXml/platform/Variant.h>

#include "Objects.h"

#include <string>
#include <vector>

#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/Stream.h>

#include "FailingAllocation.h"

namespace tibxml::com::test {

wchar_t const* const sample =
    L"<a xmlns:dt='urn:schemas-microsoft-com:datatypes' dt:dt='bin.base64' b='a value of some "
    L"length'><c>a text of some length</c><d/><!-- a comment of some length --></a>";

class Exhausted : public testing::Test {
protected:
    // Runs a step on a fresh document with its first allocation failing, then its second, and so on
    // until it gets through; a failing step must say so and must have changed nothing.
    template <class Step>
    void failInTurn(Step step) {
        for (std::size_t succeeding = 0;; ++succeeding) {
            Document const document = documentOf(sample);
            std::string const before = xmlOf(document);
            prepare(document);
            HRESULT result = S_OK;
            bool failed = false;
            {
                FailingAllocation const failing{succeeding};
                result = step(document.get());
                failed = failing.happened();
            }
            if (result != E_OUTOFMEMORY) {
                ASSERT_EQ(result, S_OK) << succeeding;
                if (failed) continue; // it managed without
                EXPECT_GT(succeeding, 0U) << "the step allocates nothing";
                forget();
                return;
            }
            EXPECT_TRUE(failed);
            if (changesNothing) {
                EXPECT_EQ(xmlOf(document), before) << succeeding;
            }
            forget();
        }
    }

    // A step that succeeds when there is no memory at all.
    template <class Step>
    void succeedWithout(Step step) {
        Document const document = documentOf(sample);
        prepare(document);
        HRESULT result = E_FAIL;
        bool failed = false;
        {
            FailingAllocation const failing{0};
            result = step();
            failed = failing.happened();
        }
        EXPECT_EQ(result, S_OK);
        EXPECT_FALSE(failed);
        forget();
    }

    void prepare(IXMLDOMDocument* document) {
        a = nodeAt(document, L"a");
        b = nodeAt(document, L"a/@b");
        c = nodeAt(document, L"a/c");
        type = nodeAt(document, L"a/@*[. = 'bin.base64']");
        ASSERT_EQ(document->createAttribute(_bstr_t{L"b"}, attribute.out()), S_OK);
        map = attributesOf(a);
    }

    void forget() {
        for (Node* const node : {&a, &b, &c, &type})
            node->reset();
        attribute.reset();
        map.reset();
    }

    Node a, b, c, type;
    Ptr<IXMLDOMAttribute> attribute;
    Map map;
    bool changesNothing = true;
    _bstr_t const longText{L"a text that needs memory wherever it is put, because it is long"};
};

TEST_F(Exhausted, WhenMakingADocument) {
    failInTurn([](IXMLDOMDocument*) {
        void* object = nullptr;
        HRESULT const result = CoCreateInstance(CLSID_DOMDocument60, nullptr, CLSCTX_INPROC_SERVER,
                                                IID_IXMLDOMDocument3, &object);
        if (object != nullptr) static_cast<IXMLDOMDocument3*>(object)->Release();
        return result;
    });
}

TEST_F(Exhausted, WhenLoading) {
    changesNothing = false; // the old content goes when the call starts
    _bstr_t const text{sample};
    failInTurn([&](IXMLDOMDocument* document) {
        VARIANT_BOOL done = VARIANT_FALSE;
        return document->loadXML(text, &done);
    });
}

TEST_F(Exhausted, WhenLoadingWhatIsBroken) {
    changesNothing = false;
    _bstr_t const text{L"<a>\n some text and </b> more"};
    failInTurn([&](IXMLDOMDocument* document) {
        VARIANT_BOOL done = VARIANT_FALSE;
        HRESULT const result = document->loadXML(text, &done);
        return result == S_FALSE ? S_OK : result;
    });
}

TEST_F(Exhausted, WhenSelectingNodes) {
    _bstr_t const expression{L"//*[1000 < 9999] | //text()"};
    failInTurn([&](IXMLDOMDocument* document) {
        // Another expression each time, lest it be found compiled.
        wchar_t* const digit = static_cast<wchar_t*>(expression) + 6;
        digit[0] = digit[0] == L'9' ? L'0' : static_cast<wchar_t>(digit[0] + 1);
        if (digit[0] == L'0') ++digit[-1];
        List nodes;
        HRESULT const result = document->selectNodes(expression, nodes.out());
        Node node;
        return result == S_OK ? nodes->get_item(1, node.out()) : result;
    });
}

TEST_F(Exhausted, WhenGettingText) {
    failInTurn([&](IXMLDOMDocument* document) {
        List children;
        HRESULT const result = document->get_childNodes(children.out());
        if (result != S_OK) return result;
        BSTR xml = nullptr;
        HRESULT const gotXml = a->get_xml(&xml);
        SysFreeString(xml);
        return gotXml;
    });
}

TEST_F(Exhausted, WhenSettingText) {
    failInTurn([&](IXMLDOMDocument*) { return a->put_text(longText); });
    failInTurn([&](IXMLDOMDocument*) { return b->put_text(longText); });
}

TEST_F(Exhausted, WhenReplacingAttributes) {
    failInTurn([&](IXMLDOMDocument*) { return map->setNamedItem(attribute, nullptr); });
}

TEST_F(Exhausted, RemovingAndMovingAttributesNeedsNoMemory) {
    _bstr_t const name{L"b"};
    succeedWithout([&] { return map->removeNamedItem(name, nullptr); });
    succeedWithout([&] {
        Map other;
        HRESULT const result = c->get_attributes(other.out());
        return result == S_OK ? other->setNamedItem(b, nullptr) : result;
    });
}

TEST_F(Exhausted, WhenWritingAttributes) {
    _bstr_t const name{L"an-attribute-whose-name-is-too-long-for-any-small-string"};
    _variant_t const value{L"a value that is too long for any small string in the engine"};
    failInTurn(
        [&](IXMLDOMDocument*) { return as<IXMLDOMElement>(a.get())->setAttribute(name, value); });
}

TEST_F(Exhausted, WhenMovingToAnotherDocument) {
    Document const other = documentOf(L"<other b='1'/>");
    Node const root = nodeAt(other, L"other");
    Map const attributes = attributesOf(root);
    failInTurn([&](IXMLDOMDocument*) { return root->appendChild(c, nullptr); });
    EXPECT_EQ(xmlOf(other), "<other b=\"1\"><c>a text of some length</c></other>\n");
    failInTurn([&](IXMLDOMDocument*) { return attributes->setNamedItem(b, nullptr); });
    EXPECT_EQ(textOf(nodeAt(root, L"@b")), "a value of some length");
}

TEST_F(Exhausted, WhenMovingWhatAListHolds) {
    Document const other = documentOf(L"<other/>");
    Node const root = nodeAt(other, L"other");
    _bstr_t const everything{L"//node() | //@*"};
    Node item;
    failInTurn([&](IXMLDOMDocument* document) {
        List nodes;
        HRESULT result = document->selectNodes(everything, nodes.out());
        if (result == S_OK) result = root->appendChild(c, nullptr);
        if (result == S_OK) result = nodes->get_item(4, item.out());
        return result;
    });
    EXPECT_EQ(textOf(item), "a text of some length");
    EXPECT_EQ(nameOf(nodeAt(item, L"../..")), "other");
}

TEST_F(Exhausted, WhenMovingFailsTheTargetIsWhole) {
    Document const other = documentOf(L"<other/>");
    Node const root = nodeAt(other, L"other");
    _bstr_t const everything{L"//node() | //@*"};
    for (std::size_t succeeding = 0; succeeding != 60; ++succeeding) {
        Document const document = documentOf(sample);
        Node const moving = nodeAt(document, L"a/c");
        List const nodes = nodesAt(document, everything);
        FailingAllocation const failing{succeeding};
        static_cast<void>(root->appendChild(moving, nullptr));
    }
    EXPECT_EQ(setText(root, L""), S_OK);
    for (int i = 0; i != 20; ++i) {
        Node made;
        VARIANT const kind = variantOf(LONG{NODE_ELEMENT});
        ASSERT_EQ(other->createNode(kind, _bstr_t{L"e"}, nullptr, made.out()), S_OK);
        ASSERT_EQ(root->appendChild(made, nullptr), S_OK);
    }
    EXPECT_EQ(lengthOf(nodesAt(root, L"e").get()), 20);
}

TEST_F(Exhausted, WhenGettingNamespaces) {
    Document const other = documentOf(L"<other/>");
    Node const root = nodeAt(other, L"other");
    _bstr_t const all{L"//namespace::*"};
    _bstr_t const one{L"namespace::dt[. = /a/namespace::*]"};
    Node item;
    failInTurn([&](IXMLDOMDocument* document) {
        List nodes;
        item.reset();
        HRESULT result = document->selectNodes(all, nodes.out());
        if (result == S_OK) result = nodes->get_item(2, item.out());
        return result == S_OK ? c->selectSingleNode(one, item.out()) : result;
    });
    EXPECT_EQ(textOf(item), "urn:schemas-microsoft-com:datatypes");
    failInTurn([&](IXMLDOMDocument* document) {
        List nodes;
        HRESULT result = document->selectNodes(all, nodes.out());
        if (result == S_OK) result = nodes->get_item(2, item.out());
        if (result == S_OK) result = root->appendChild(c, nullptr);
        return result == S_OK ? nodes->get_item(3, item.out()) : result;
    });
    EXPECT_EQ(nameOf(item), "xmlns:xml");
    EXPECT_EQ(nameOf(nodeAt(item, L"../..")), "other");
}

TEST_F(Exhausted, WhenReplacingTheRoot) {
    failInTurn([&](IXMLDOMDocument* document) {
        return document->putref_documentElement(as<IXMLDOMElement>(c.get()));
    });
}

TEST_F(Exhausted, WhenCopying) {
    Document const other = documentOf(L"<other/>");
    failInTurn([&](IXMLDOMDocument*) { return a->cloneNode(VARIANT_TRUE, Node{}.out()); });
    failInTurn(
        [&](IXMLDOMDocument* document) { return document->cloneNode(VARIANT_TRUE, Node{}.out()); });
    failInTurn([&](IXMLDOMDocument*) {
        Node copy;
        return other->importNode(a, VARIANT_TRUE, copy.out());
    });
}

std::size_t countOf(std::string const& part, std::string const& text) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// One annotation finds room in what the document has; many do not. Each is made whole or not at
// all: a declaration and the attribute that needs it.
TEST(ExhaustedByMany, WhenAnnotating) {
    constexpr LONG count = 300;
    std::wstring xml = L"<a>";
    for (LONG i = 0; i != count; ++i)
        xml += L"<b/>";
    xml += L"</a>";
    _bstr_t const name{L"bin.base64"};
    bool failed = true;
    std::size_t succeeding = 0;
    for (; failed; ++succeeding) {
        Document const document = documentOf(xml.c_str());
        List const nodes = nodesAt(document, L"a/b");
        std::vector<Node> held(count); // lest the memory of one object serves the next
        HRESULT result = S_OK;
        {
            FailingAllocation const failing{succeeding};
            for (LONG i = 0; i != count && result == S_OK; ++i) {
                Node& node = held[static_cast<std::size_t>(i)];
                result = nodes->get_item(i, node.out());
                if (result == S_OK) result = node->put_dataType(name);
            }
            failed = failing.happened();
        }
        EXPECT_EQ(result, failed ? E_OUTOFMEMORY : S_OK);
        std::string const after = xmlOf(document);
        EXPECT_EQ(countOf("xmlns:dt=", after), countOf(" dt:dt=", after)) << succeeding;
    }
    EXPECT_GT(succeeding, std::size_t{count});
}

TEST_F(Exhausted, WhenCreatingNodes) {
    _bstr_t const name{L"an-element-with-a-long-name"};
    _bstr_t const uri{L"urn:a-namespace-with-a-long-name"};
    failInTurn([&](IXMLDOMDocument* document) {
        Node node;
        return document->createNode(variantOf(LONG{NODE_ELEMENT}), name, uri, node.out());
    });
}

TEST_F(Exhausted, WhenSaving) {
    failInTurn([&](IXMLDOMDocument* document) {
        Ptr<IStream> stream;
        *stream.out() = SHCreateMemStream(nullptr, 0);
        if (stream.get() == nullptr) return E_OUTOFMEMORY;
        return document->save(variantOf(stream.get()));
    });
}

Ptr<IXMLDOMSchemaCollection2> newSchemas() {
    Ptr<IXMLDOMSchemaCollection2> schemas;
    void* made = nullptr;
    EXPECT_EQ(CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL,
                               IID_IXMLDOMSchemaCollection2, &made),
              S_OK);
    *schemas.out() = static_cast<IXMLDOMSchemaCollection2*>(made);
    return schemas;
}

wchar_t const* const anySchema =
    L"<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'/></xs:schema>";

TEST_F(Exhausted, WhenAddingASchema) {
    Document const schema = documentOf(anySchema);
    _bstr_t const none{L""};
    failInTurn([&](IXMLDOMDocument*) {
        void* made = nullptr;
        HRESULT result = CoCreateInstance(CLSID_XMLSchemaCache60, nullptr, CLSCTX_ALL,
                                          IID_IXMLDOMSchemaCollection2, &made);
        if (result != S_OK) return result;
        Ptr<IXMLDOMSchemaCollection2> schemas;
        *schemas.out() = static_cast<IXMLDOMSchemaCollection2*>(made);
        result = schemas->add(none, variantOf(schema.get()));
        EXPECT_EQ(lengthOf(schemas.get()), result == S_OK ? 1 : 0);
        return result;
    });
}

// A stylesheet is compiled at its first use.
TEST(ExhaustedByStylesheets, WhenCompilingAndTransforming) {
    Document const source = documentOf(sample);
    Document const output = documentOf(L"<x/>");
    std::size_t succeeding = 0;
    for (bool failed = true; failed; ++succeeding) {
        Document const stylesheet =
            documentOf(L"<xsl:stylesheet version='1.0' "
                       L"xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:template "
                       L"match='/'><out/></xsl:template></xsl:stylesheet>");
        HRESULT result = S_OK;
        {
            FailingAllocation const failing{succeeding};
            result = source->transformNodeToObject(stylesheet.get(), variantOf(output.get()));
            failed = failing.happened();
        }
        EXPECT_EQ(result, failed ? E_OUTOFMEMORY : S_OK) << succeeding;
    }
    EXPECT_EQ(xmlOf(output), "<?xml version=\"1.0\"?>\n<out/>\n");
    EXPECT_GT(succeeding, 10U);
}

TEST_F(Exhausted, WhenValidating) {
    auto const schemas = newSchemas();
    Document const schema = documentOf(anySchema);
    ASSERT_EQ(schemas->add(_bstr_t{L""}, variantOf(schema.get())), S_OK);
    failInTurn([&](IXMLDOMDocument* document) {
        auto const validated = as<IXMLDOMDocument2>(document);
        EXPECT_EQ(validated->putref_schemas(variantOf(schemas.get())), S_OK);
        Ptr<IXMLDOMParseError> error;
        return validated->validate(error.out());
    });
}

TEST_F(Exhausted, LeavesNoWordsOfAnEarlierFailure) {
    prepare(documentOf(sample));
    EXPECT_EQ(a->selectNodes(_bstr_t{L"a[["}, List{}.out()), E_FAIL);
    {
        FailingAllocation const failing{0};
        EXPECT_EQ(a->put_text(longText), E_OUTOFMEMORY);
    }
    EXPECT_EQ(takeErrorText(), "");
    forget();
}

} // namespace tibxml::com::test
