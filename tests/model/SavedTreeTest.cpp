// Random sequences of calls, with names that clash, trees as deep as they may be, white space and
// moves between documents: what is saved then loads to an equal tree.
//
// TIBXML_SAVED_TREES sets how many sequences there are; TIBXML_SAVED_TREE_SEED runs one of them.

#include <TibXml/platform/BStr.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "EngineTest.h"

namespace model {

namespace {

constexpr wchar_t const* prefixes[] = {L"", L"", L"p:", L"q:", L"ns1:"};
constexpr wchar_t const* locals[] = {L"a", L"b"};
constexpr wchar_t const* uris[] = {L"", L"urn:1", L"urn:2"};
constexpr wchar_t const* texts[] = {L"", L" ", L"\n\t", L"x", L" y ", L"<&>]", L"\u00E4\r"};
constexpr wchar_t const* declarations[] = {L"xmlns:p", L"xmlns:q", L"xmlns", L"xmlns:ns1"};
constexpr wchar_t const* sources[] = {
    L"<a>\n<b>x</b>\n<b>y</b>\n</a>",
    L"<a xmlns:p='urn:1'>\n<p:b xmlns:q='urn:2' q:a='1' p:a='2'/>\n<!--c-->\n<![CDATA[x]]>\n</a>",
    L"<q:a xmlns:q='urn:2' xmlns='urn:1'><b> </b>\n<b xmlns=''>\n</b><?go on?></q:a>",
    L"<a xml:space='preserve'> <b xml:space='default'>\n<a>x</a>\n<a>y</a> z</b>\n</a>",
    L"<!--top--><a xmlns:xml='http://www.w3.org/XML/1998/namespace' xml:space='default'/>"};

/// The qualified names of a node's attributes, declarations left out.
std::vector<CString> attributesOf(WXmlNode const& element) {
    std::vector<CString> names;
    element.GetAttributes(names);
    std::erase_if(names, [](CString const& name) { return name.view().starts_with(L"xmlns"); });
    return names;
}

std::string namespaceOf(WXmlNode const& node) {
    for (wchar_t const* const uri : {L"urn:1", L"urn:2", L"http://www.w3.org/XML/1998/namespace"}) {
        std::wstring const test = L"self::node()[namespace-uri() = '" + std::wstring{uri} + L"']";
        if (node.DoesNodeExist(test.c_str())) return utf8(uri);
    }
    return "none";
}

std::string nameOf(WXmlNode const& node) {
    return utf8(node.GetName()) + "{" + namespaceOf(node) + "}";
}

bool isElement(WXmlNode const& node) {
    return node.DoesNodeExist(L"self::*");
}

void describe(WXmlNode const& element, std::string& out);

/// Neighbouring texts count as one, empty ones not at all.
void describeChildren(WXmlNode const& element, std::string& out) {
    bool isAfterText = false;
    for (WXmlNode const& child : element.GetNodes(L"node()")) {
        std::string const text = utf8(child.Value().GetString());
        bool const isText = child.GetName() == L"#text";
        if (isText && text.empty()) continue;
        if (isElement(child)) {
            describe(child, out);
        } else {
            out += (isText && isAfterText ? "" : "|" + utf8(child.GetName()) + ":") + text;
        }
        isAfterText = isText;
    }
}

/// Everything that can be seen of an element. Its attributes are found by their names.
void describe(WXmlNode const& element, std::string& out) {
    out += "<" + nameOf(element);
    for (CString const& name : attributesOf(element)) {
        std::wstring const selector = L"@*[name() = '" + std::wstring{name.view()} + L"']";
        WXmlNode const attribute = element.GetNode(selector.c_str());
        out += " " + nameOf(attribute) + "=" +
               utf8(element.Attribute((L"@" + name)).GetString(L"not found by its name"));
    }
    out += ">'" + utf8(element.Value().GetString()) + "'";
    describeChildren(element, out);
    out += "</>";
}

std::string describe(WXmlNode const& top) {
    std::string out;
    describe(top, out);
    return out;
}

std::size_t depthBelow(WXmlNode const& element) {
    std::size_t most = 0;
    for (WXmlNode const& child : element.GetNodes(L"*"))
        most = std::max(most, depthBelow(child));
    return most + 1;
}

class Sequence {
public:
    explicit Sequence(unsigned seed) : random_{seed} {
        for (int i = 0; i != 2; ++i)
            load();
    }

    void run() {
        for (int step = 0; step != 60; ++step)
            edit();
    }

    void check() {
        for (Document const& document : documents_)
            checkSaved(document.handle, document.keepsSpace);
        for (WXmlNode const& node : held_)
            checkXml(node);
    }

private:
    struct Document {
        WXmlDoc handle;
        WXmlDocPtr engine;
        bool keepsSpace;
    };

    void load() {
        WXmlDocPtr engine;
        ASSERT_EQ(tibxml::engine::createObject(CLSID_DOMDocument60, engine), S_OK);
        bool const keepsSpace = chance(4);
        engine->put_preserveWhiteSpace(keepsSpace ? VARIANT_TRUE : VARIANT_FALSE);
        VARIANT_BOOL done = VARIANT_FALSE;
        ASSERT_EQ(engine->loadXML(_bstr_t{pick(sources)}, &done), S_OK);
        documents_.push_back({WXmlDoc{engine}, engine, keepsSpace});
        for (WXmlNode const& node : documents_.back().handle.GetNodes(L"//node()"))
            held_.push_back(node);
    }

    void edit() {
        switch (random_() % 12) {
        case 0:
        case 1: return hold(create(NODE_ELEMENT, qualified().c_str(), pick(uris)));
        case 2:
        case 3: return hold(create(NODE_ATTRIBUTE, qualified().c_str(), pick(uris)));
        case 4: return holdText(create(chance(3) ? NODE_CDATA_SECTION : NODE_TEXT, L"", L""));
        case 5: return hold(held().Clone(!chance(3)));
        case 6: return setAttribute();
        case 7: return setText();
        case 8: return chance(3) ? held().Prune() : graftChain();
        default: return graft();
        }
    }

    void graft() {
        WXmlNode child = held();
        WXmlNode parent = held();
        child.Graft(parent, static_cast<int>(random_() % 4) - 1);
    }

    // As many elements within each other as make every third or so too deep.
    void graftChain() {
        WXmlNode top = create(NODE_ELEMENT, L"a", L"");
        std::wstring path = L"a";
        for (std::size_t i = random_() % 150; i != 0; --i)
            path += L"/a";
        hold(top.EnsureDescendantExists(path.c_str()));
        WXmlNode parent = held();
        top.Graft(parent, -1);
        hold(top);
    }

    void setAttribute() {
        WXmlNode const element = held();
        bool const declares = chance(3);
        bool const isSpace = !declares && chance(4);
        std::wstring name = declares ? pick(declarations) : isSpace ? L"xml:space" : qualified();
        wchar_t const* const space = chance(2) ? L"preserve" : L"default";
        quietly([&] {
            element.Attribute((L"@" + name).c_str())
                .SetString(declares  ? pick(uris)
                           : isSpace ? space
                                     : pick(texts));
        });
    }

    void setText() {
        WXmlNode const node = held();
        quietly([&] { node.Value().SetString(pick(texts)); });
    }

    WXmlNode create(DOMNodeType type, wchar_t const* name, wchar_t const* uri) {
        IXMLDOMNode* node = nullptr;
        Document const& document = documents_[random_() % documents_.size()];
        HRESULT const result = document.engine->createNode(_variant_t{static_cast<LONG>(type)},
                                                           _bstr_t{name}, _bstr_t{uri}, &node);
        return SUCCEEDED(result) ? WXmlNode{WXmlNodePtr{node, false}} : WXmlNode{};
    }

    void hold(WXmlNode const& node) {
        if (node.IsValid()) held_.push_back(node);
    }

    void holdText(WXmlNode const& node) {
        quietly([&] { node.Value().SetString(pick(texts)); });
        hold(node);
    }

    template <class Edit>
    static void quietly(Edit const& edit) {
        try {
            edit();
        } catch (_com_error const&) { // refused, and that is as good
        } catch (WXmlValueTypeNotFoundException const&) {
        }
    }

    static void checkSaved(WXmlDoc const& document, bool keepsSpace) {
        if (!document.IsLoaded()) return;
        EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
        ASSERT_TRUE(document.Save(stream));
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        WXmlDoc again{keepsSpace};
        ASSERT_TRUE(again.Load(stream)) << utf8(document.SaveToString());
        EXPECT_LE(depthBelow(document.GetRootNode()), 256U);
        EXPECT_EQ(describe(again.GetRootNode()), describe(document.GetRootNode()))
            << utf8(document.SaveToString());
    }

    /// What a handle holds may be in no document.
    void checkXml(WXmlNode const& node) {
        bool const isUnresolved =
            node.DoesNodeExist(L"self::*[contains(name(), ':')]") && namespaceOf(node) == "none";
        if (!isElement(node) || isUnresolved || node.DoesNodeExist(L"ancestor::*")) return;
        bool const keepsSpace =
            std::any_of(documents_.begin(), documents_.end(), [&](Document const& document) {
                return document.keepsSpace && document.handle == node.GetOwnerDocument();
            });
        WXmlDoc again{keepsSpace};
        ASSERT_TRUE(again.LoadFromString(node.GetXML())) << utf8(node.GetXML());
        EXPECT_EQ(describe(again.GetRootNode()), describe(node)) << utf8(node.GetXML());
    }

    WXmlNode held() { return held_[random_() % held_.size()]; }

    std::wstring qualified() { return std::wstring{pick(prefixes)} + pick(locals); }

    bool chance(unsigned in) { return random_() % in == 0; }

    template <std::size_t Size>
    wchar_t const* pick(wchar_t const* const (&choices)[Size]) {
        return choices[random_() % Size];
    }

    std::mt19937 random_;
    std::vector<Document> documents_;
    std::vector<WXmlNode> held_;
};

unsigned setting(char const* name, unsigned otherwise) {
    char const* const value = std::getenv(name);
    return value != nullptr ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

void runSequence(unsigned seed) {
    Sequence sequence{seed};
    sequence.run();
    sequence.check();
}

} // namespace

TEST(SavedTrees, AreEqualWhenTheyAreLoaded) {
    if (unsigned const seed = setting("TIBXML_SAVED_TREE_SEED", 0)) return runSequence(seed);
    unsigned const sequences = setting("TIBXML_SAVED_TREES", 150);
    for (unsigned seed = 1; seed <= sequences; ++seed) {
        runSequence(seed);
        ASSERT_FALSE(HasFailure()) << "repeat with TIBXML_SAVED_TREE_SEED=" << seed;
    }
}

} // namespace model
