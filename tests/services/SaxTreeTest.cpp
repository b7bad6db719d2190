// The events of a document are those of the tree that is loaded from it: the same elements,
// attributes and text.
#include "SaxRecorder.h"
#include "TestStreams.h"

#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

std::string textFrom(EnginePtr<IXMLDOMNode> const& node, HRESULT (IXMLDOMNode::*getter)(BSTR*)) {
    _bstr_t text;
    EXPECT_EQ((node.operator->()->*getter)(text.GetAddress()), S_OK);
    return utf8({static_cast<wchar_t const*>(text), text.length()});
}

std::string localName(std::string const& qualified) {
    return qualified.substr(qualified.find(':') + 1);
}

/// A tree told as events are.
class TreeTeller {
public:
    void tell(EnginePtr<IXMLDOMNode> const& node) {
        DOMNodeType type{};
        node->get_nodeType(&type);
        if (type == NODE_TEXT || type == NODE_CDATA_SECTION) {
            events += textFrom(node, &IXMLDOMNode::get_text);
        } else if (type == NODE_ELEMENT) {
            tellElement(node);
        }
    }

    std::string events;

private:
    void tellElement(EnginePtr<IXMLDOMNode> const& element) {
        std::string const name = localName(textFrom(element, &IXMLDOMNode::get_nodeName));
        events += "<" + name;
        tellAttributes(element);
        events += ">";
        EnginePtr<IXMLDOMNodeList> children;
        element->get_childNodes(children.GetAddress());
        LONG count = 0;
        children->get_length(&count);
        for (LONG i = 0; i != count; ++i) {
            EnginePtr<IXMLDOMNode> child;
            children->get_item(i, child.GetAddress());
            tell(child);
        }
        events += "</" + name + ">";
    }

    void tellAttributes(EnginePtr<IXMLDOMNode> const& element) {
        EnginePtr<IXMLDOMNamedNodeMap> attributes;
        element->get_attributes(attributes.GetAddress());
        LONG count = 0;
        attributes->get_length(&count);
        for (LONG i = 0; i != count; ++i) {
            EnginePtr<IXMLDOMNode> attribute;
            attributes->get_item(i, attribute.GetAddress());
            std::string const name = textFrom(attribute, &IXMLDOMNode::get_nodeName);
            if (name == "xmlns" || name.starts_with("xmlns:")) continue;
            events +=
                " " + localName(name) + "='" + textFrom(attribute, &IXMLDOMNode::get_text) + "'";
        }
    }
};

/// The events of a document by loading it; "refused" when it does not load.
std::string eventsByLoading(std::string const& bytes) {
    WXmlDocPtr document;
    EXPECT_EQ(tibxml::engine::createObject(CLSID_DOMDocument60, document), S_OK);
    document->put_preserveWhiteSpace(VARIANT_TRUE);
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    document->load(_variant_t{slowStream(bytes, never)}, &isLoaded);
    if (isLoaded == VARIANT_FALSE) return "refused";
    EnginePtr<IXMLDOMElement> root;
    document->get_documentElement(root.GetAddress());
    TreeTeller teller;
    teller.tell(EnginePtr<IXMLDOMNode>{root.GetInterfacePtr()});
    return "document " + teller.events + " end";
}

std::string eventsByParsing(std::string const& bytes, std::size_t step) {
    SaxRecorder recorder;
    if (!recorder.sax.ParseIStream(slowStream(bytes, step))) return "refused";
    return recorder.take();
}

void compare(std::string const& bytes, std::string const& what,
             std::vector<std::size_t> const& steps) {
    std::string const expected = eventsByLoading(bytes);
    for (std::size_t const step : steps) {
        std::string const found = eventsByParsing(bytes, step);
        ASSERT_EQ(found.size(), expected.size()) << what << " by " << step;
        ASSERT_TRUE(found == expected) << what << " by " << step; // not to be printed: megabytes
    }
}

std::string contentOf(std::filesystem::path const& path) {
    std::ifstream in{path, std::ios::binary};
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The document without its document type declaration, with which it is refused.
std::string withoutDocumentType(std::string text) {
    std::size_t const begin = text.find("<!DOCTYPE");
    if (begin == std::string::npos) return text;
    std::size_t const close = text.find('>', begin);
    std::size_t const subset = text.find('[', begin);
    std::size_t const end = subset < close ? text.find("]>", begin) + 2 : close + 1;
    return text.erase(begin, end - begin);
}

std::vector<std::filesystem::path> xmlFilesBelow(std::filesystem::path const& folder) {
    std::vector<std::filesystem::path> files;
    if (!std::filesystem::is_directory(folder)) return files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator{folder}) {
        if (entry.is_regular_file() && entry.path().extension() == ".xml")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class SaxOfRealFiles : public testing::TestWithParam<char const*> {};

TEST_P(SaxOfRealFiles, IsTheTree) {
    std::vector<std::filesystem::path> const files = xmlFilesBelow(GetParam());
    if (files.empty()) GTEST_SKIP() << "not installed";
    std::size_t told = 0;
    std::size_t stride = std::max<std::size_t>(files.size() / 40, 1);
    for (std::size_t i = 0; i < files.size(); i += stride) {
        std::string const bytes = contentOf(files[i]);
        bool const isSmall = bytes.size() < 100'000;
        bool const isTyped = bytes.find("<!DOCTYPE") != std::string::npos;
        std::vector<std::size_t> const all{1, 2, 7, 4096, never};
        compare(bytes, files[i].string(), isSmall ? all : std::vector<std::size_t>{never});
        if (isTyped) {
            compare(withoutDocumentType(bytes), files[i].string(),
                    isSmall ? all : std::vector<std::size_t>{7, 4096, never});
        }
        told += eventsByLoading(withoutDocumentType(bytes)) != "refused" ? 1 : 0;
    }
    EXPECT_GT(told, 0U) << "every file was refused";
}

INSTANTIATE_TEST_SUITE_P(Packages, SaxOfRealFiles,
                         testing::Values("/usr/share/mime/packages", "/usr/share/X11/xkb/rules",
                                         "/usr/share/xml/iso-codes", "/usr/share/osinfo"));

/// Random documents with all that may stand in them.
class Generator {
public:
    explicit Generator(unsigned seed) : random_{seed} {}

    std::string document() {
        std::string text =
            oneOf({"", "<?xml version='1.0' encoding='UTF-8'?>\r\n", "\n<!-- x -->"});
        appendElement(text, 0);
        return text + oneOf({"", "\n", "<?end?>\r\n"});
    }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

    std::string oneOf(std::vector<std::string> const& choices) {
        return choices[below(static_cast<unsigned>(choices.size()))];
    }

    std::string text() {
        std::string all;
        for (unsigned i = below(4); i != 0; --i) {
            all += oneOf({"text", " ", "\n\t", "\r\n", "\r", "&amp;", "&#10;", "&#x1F600;",
                          "\u00E4", "\u20AC\U0001F600", std::string(below(500), 'x'), ">", "'\""});
        }
        return all;
    }

    void appendElement(std::string& out, int depth) {
        std::string const name = oneOf({"a", "b", "p:c", "\u00E4", "long-name.with_parts"});
        out += "<" + name;
        if (depth == 0) out += " xmlns:p='urn:p'";
        if (below(4) == 0) out += oneOf({" xmlns='urn:d'", " xmlns=\"\"", "\nxmlns:q='urn:q'"});
        for (char const* attribute : {" x", "\n y", " p:x", " xml:lang"})
            if (below(3) == 0) out += attribute + std::string{"=\""} + value() + "\"";
        if (below(4) == 0) {
            out += "/>";
            return;
        }
        out += ">";
        for (unsigned i = below(depth > 6 ? 1 : 6); i != 0; --i)
            appendContent(out, depth);
        out += "</" + name + " >";
    }

    void appendContent(std::string& out, int depth) {
        out += text();
        switch (below(6)) {
        case 0: out += "<![CDATA[" + oneOf({"", " <x> ", "\r\n\r", "]] >"}) + "]]>"; break;
        case 1: out += "<!-- " + oneOf({"comment", "<a>", "\r\n"}) + " -->"; break;
        case 2: out += "<?target " + oneOf({"data", "", "a='b'"}) + "?>"; break;
        default: appendElement(out, depth + 1);
        }
    }

    std::string value() {
        std::string all;
        for (unsigned i = below(3); i != 0; --i)
            all += oneOf({"value", " ", "\n", "\r\n", "&lt;", "&#9;", "\u20AC", "'", ">"});
        return all;
    }

    std::mt19937 random_;
};

TEST(SaxOfGeneratedDocuments, IsTheTree) {
    std::size_t longest = 0;
    for (unsigned seed = 0; seed != 300; ++seed) {
        std::string const document = Generator{seed}.document();
        longest = std::max(longest, document.size());
        ASSERT_NE(eventsByLoading(document), "refused") << document;
        compare(document, document, {1, 2, 7, 4096, never});
    }
    EXPECT_GT(longest, 3000U);
}

TEST(SaxOfGeneratedDocuments, IsRefusedWhenTheTreeIs) {
    std::size_t refused = 0;
    for (unsigned seed = 0; seed != 300; ++seed) {
        std::string document = Generator{seed}.document();
        std::mt19937 random{seed};
        document.erase(random() % document.size(), 1);
        std::string const expected = eventsByLoading(document);
        refused += expected == "refused" ? 1 : 0;
        EXPECT_EQ(eventsByParsing(document, never), expected) << document;
    }
    EXPECT_GT(refused, 50U);
}

} // namespace
