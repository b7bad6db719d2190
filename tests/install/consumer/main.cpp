// A caller's program: every exported family is used once, so that a name which is declared but not
// exported is a link error here.
#include <TibXml/WXPath.h>
#include <TibXml/WXmlCompositeNode.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>

#include <cstdio>

namespace {

int failures = 0;

void expect(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "wrong: %s\n", what);
        ++failures;
    }
}

void usePaths() {
    WXPath path(L"item[@id='3']/value");
    expect(path.GetLeaf().ToString() == L"value", "the leaf of a path");
}

void useDocument() {
    WXmlDoc doc = WXmlDoc::CreateFromString(L"<list><item id='3'><value>42</value></item></list>");
    WXmlNode node;
    expect(doc.GetRootNode().GetNode(L"item[@id='3']/value", node), "a node by path");
    expect(node.Value().GetInt(0) == 42, "a typed value");
    expect(doc.GetRootNode().GetNodes(L"item").Count() == 1, "a list by path");
    expect(WXmlDoc(doc.EngineDocument()) == doc, "the engine's document");
}

void useLayers() {
    WXmlDoc defaults = WXmlDoc::CreateFromString(L"<s><a width='7'/></s>");
    WXmlDoc user = WXmlDoc::CreateFromString(L"<s/>");
    WXmlCompositeNode node(defaults, user, L"/s/a");
    expect(node.ReadableAttribute(L"@width", false).GetInt(0) == 7, "a value of the defaults");
}

void catchFailure() {
    try {
        WXmlDoc doc = WXmlDoc::CreateFromString(L"<a>x</a>");
        doc.GetRootNode().Value().GetInt_throws();
        expect(false, "an absent value throws");
    } catch (WXmlValueTypeNotFoundException const& missing) {
        expect(missing.GetMessageW() == L"int", "the exception's message");
    }
}

} // namespace

int main() {
    usePaths();
    useDocument();
    useLayers();
    catchFailure();
    return failures == 0 ? 0 : 1;
}
