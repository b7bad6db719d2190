#include "Reading.h"

#include <tree/Navigation.h>

namespace tibxml::reader::test {

using tree::Node;
using tree::NodeKind;

Node* Reading::root() const {
    EXPECT_NE(document->documentElement(), nullptr) << error.reason;
    return document->documentElement();
}

Reading readBytes(Bytes source, bool preserveWhiteSpace) {
    Reading reading;
    reading.document->setPreservesWhiteSpace(preserveWhiteSpace);
    reading.done = read(*reading.document, source, reading.error);
    return reading;
}

Reading readText(std::string_view utf8, bool preserveWhiteSpace) {
    Reading reading;
    reading.document->setPreservesWhiteSpace(preserveWhiteSpace);
    reading.done = read(*reading.document, {utf8, EncodingRule::alwaysUtf8}, reading.error);
    return reading;
}

namespace {

void appendStart(Node const& node, std::string& out) {
    std::string const text{node.text()};
    switch (node.kind) {
    case NodeKind::element:
        out.append("<").append(node.name->qualified);
        for (Node const* a = node.firstAttribute(); a != nullptr; a = a->next)
            out.append(" ").append(a->name->qualified).append("='").append(a->text()).append("'");
        out.append(">");
        break;
    case NodeKind::text: out += "\"" + text + "\""; break;
    case NodeKind::cdata: out += "[" + text + "]"; break;
    case NodeKind::comment: out += "<!" + text + ">"; break;
    case NodeKind::declaration:
    case NodeKind::processingInstruction:
        out.append("<?").append(node.name->qualified).append(" ").append(text).append(">");
        break;
    default: break;
    }
    if ((node.flags & tree::breakInside) != 0) out += "~";
}

void appendEnd(Node const& node, std::string& out) {
    if (node.is(NodeKind::element)) out += "</>";
    if ((node.flags & tree::breakAfter) != 0) out += "|";
}

} // namespace

std::string shape(Reading const& reading) {
    std::string out;
    Node const* node = reading.top();
    while (true) {
        appendStart(*node, out);
        if (node->firstChild() != nullptr) {
            node = node->firstChild();
            continue;
        }
        appendEnd(*node, out);
        while (node->parent != nullptr && node->next == nullptr) {
            node = node->parent;
            appendEnd(*node, out);
        }
        if (node->parent == nullptr) return out;
        node = node->next;
    }
}

void expectFailure(Reading const& reading, std::string_view what) {
    EXPECT_FALSE(reading.done) << what;
    EXPECT_NE(reading.error.code, 0U) << what;
    EXPECT_NE(reading.error.reason, "") << what;
    EXPECT_EQ(reading.error.reason.find('\n'), std::string::npos) << what;
    EXPECT_EQ(reading.top()->firstChild(), nullptr) << what;
}

} // namespace tibxml::reader::test
