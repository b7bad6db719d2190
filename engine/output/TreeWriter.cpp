#include "TreeWriter.h"

#include <utility>

#include <tree/Name.h>
#include <tree/Text.h>

#include "Layout.h"

namespace tibxml::output {

using tree::Binding;
using tree::Node;
using tree::NodeKind;
using tree::StartTagNames;

namespace {

bool continuesText(Node const& text) noexcept {
    Node const* before = text.previousSibling();
    while (before != nullptr && before->is(tree::NodeKind::text) && before->text().empty())
        before = before->previousSibling();
    return before != nullptr && before->is(tree::NodeKind::text);
}

// Whether a text is the first of a run of adjacent texts which a reader would take for layout, the
// whole run being white space.
bool startsBlankRun(Node const& text) noexcept {
    if (!tree::isBlankText(text.text()) || continuesText(text)) return false;
    Node const* node = text.next;
    while (node != nullptr && node->is(tree::NodeKind::text) && tree::isBlankText(node->text()))
        node = node->next;
    return node == nullptr || !node->is(tree::NodeKind::text);
}

} // namespace

void TreeWriter::write(Node const& top, std::vector<Binding> wanted) {
    wanted_ = std::move(wanted);
    Node const* node = &top;
    while (node != nullptr) {
        Node const* next = open(*node);
        while (next == nullptr && node != &top) {
            Node const* const sibling = writtenFrom(node->next);
            bool const marked = (node->flags & tree::breakAfter) != 0;
            if (sibling != nullptr) {
                breakLine(marked, node, sibling, depth_);
                next = sibling;
            } else {
                --depth_;
                breakLine(marked, node, nullptr, depth_);
                node = node->parent;
                close(*node);
            }
        }
        node = next;
    }
}

// Writes a node up to its first child, which it returns; or all of it.
Node const* TreeWriter::open(Node const& node) {
    if (node.is(NodeKind::element)) return openElement(node);
    writeLeaf(node);
    return nullptr;
}

void TreeWriter::writeLeaf(Node const& node) {
    switch (node.kind) {
    case NodeKind::text: writeText(node); break;
    case NodeKind::cdata: out_.cdata(node.text()); break;
    case NodeKind::comment: out_.comment(node.text()); break;
    case NodeKind::processingInstruction:
        out_.processingInstruction(node.name->qualified, node.text());
        break;
    case NodeKind::declaration: out_.declaration(node.text()); break;
    case NodeKind::attribute:
        out_.name(node.name->qualified);
        out_.quoted(node);
        break;
    case NodeKind::element:
    case NodeKind::document: break; // they have children and are not leaves
    }
}

// A reference is never taken for layout, so one for the first blank saves the run.
void TreeWriter::writeText(Node const& text) {
    std::string_view const characters = text.text();
    bool const mayBeBlank = !characters.empty() && static_cast<unsigned char>(characters[0]) <= ' ';
    if (mayBeBlank && depth_ > 0 && layout_ && !keepsBlanks_ && startsBlankRun(text)) {
        out_.reference(static_cast<unsigned char>(characters[0]));
        out_.escaped<Place::text>(characters.substr(1));
    } else {
        out_.escaped<Place::text>(text);
    }
}

Node const* TreeWriter::openElement(Node const& element) {
    startTag(element);
    Node const* const child = firstWritten(element);
    bool const marked = (element.flags & tree::breakInside) != 0;
    if (child != nullptr) {
        out_.markup('>');
        ++depth_;
        breakLine(marked, nullptr, child, depth_);
    } else if (marked && layout_ && !keepsBlanks_) {
        out_.markup('>');
        breakLine(marked, nullptr, nullptr, depth_);
        close(element);
    } else {
        out_.markup("/>");
        leaveFrame(element);
    }
    return child;
}

void TreeWriter::close(Node const& element) {
    out_.markup("</");
    bool const framed = !frames_.empty() && frames_.back().element == &element;
    if (framed) {
        out_.name(frames_.back().prefix, element.name->local);
    } else {
        out_.name(element.name->qualified);
    }
    out_.markup('>');
    leaveFrame(element);
}

void TreeWriter::leaveFrame(Node const& element) noexcept {
    if (frames_.empty() || frames_.back().element != &element) return;
    scope_.cutBack(frames_.back().scopeSize);
    keepsBlanks_ = frames_.back().keptBlanks;
    frames_.pop_back();
}

void TreeWriter::startTag(Node const& element) {
    if (!isPlain(element)) {
        startTagInNewFrame(element);
        return;
    }
    out_.markup('<');
    out_.name(element.name->qualified);
    for (Node const* a = element.firstAttribute(); a != nullptr; a = a->next) {
        out_.markup(' ');
        out_.name(a->name->qualified);
        out_.quoted(*a);
    }
}

// Whether every name means the right thing as it is and no attribute changes what follows.
bool TreeWriter::isPlain(Node const& element) noexcept {
    if (!wanted_.empty() || !scope_.suitsElement(*element.name)) return false;
    for (Node const* a = element.firstAttribute(); a != nullptr; a = a->next) {
        tree::Name const& name = *a->name;
        if (name.uri.empty()) continue;
        if (name.declaresNamespace || name.uri == tree::xmlNamespace ||
            !scope_.suitsAttribute(name))
            return false;
    }
    return true;
}

void TreeWriter::startTagInNewFrame(Node const& element) {
    Frame frame{&element, {}, scope_.size(), keepsBlanks_};
    StartTagNames const names = resolveNames(element, std::exchange(wanted_, {}), scope_);
    frame.prefix = names.elementPrefix;
    frames_.push_back(frame);
    out_.markup('<');
    out_.name(frame.prefix, element.name->local);
    for (Binding const& binding : names.added)
        writeDeclaration(binding);
    writeAttributes(element, names);
}

void TreeWriter::writeDeclaration(Binding binding) {
    out_.markup(binding.prefix.empty() ? " xmlns" : " xmlns:");
    out_.name(binding.prefix);
    out_.quoted(binding.uri);
}

void TreeWriter::writeAttributes(Node const& element, StartTagNames const& names) {
    auto changed = names.changed.begin();
    for (Node const* a = element.firstAttribute(); a != nullptr; a = a->next) {
        if (!isWritten(*a)) continue;
        std::string_view prefix = a->name->prefix;
        if (changed != names.changed.end() && changed->attribute == a) prefix = changed++->prefix;
        out_.markup(' ');
        out_.name(prefix, a->name->local);
        out_.quoted(*a);
        noticeSpace(*a);
    }
}

void TreeWriter::noticeSpace(Node const& attribute) noexcept {
    if (!isSpaceAttribute(attribute)) return;
    std::string_view const value = attribute.text();
    if (value == "preserve" || value == "default") keepsBlanks_ = value == "preserve";
}

void TreeWriter::breakLine(bool marked, Node const* before, Node const* after, std::size_t depth) {
    if (!marked || !layout_ || keepsBlanks_ || !allowsBreak(before) || !allowsBreak(after)) return;
    static constexpr std::string_view lineAndTabs = "\n\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
    if (depth < lineAndTabs.size()) {
        out_.markup(lineAndTabs.substr(0, depth + 1));
        return;
    }
    out_.markup('\n');
    for (std::size_t i = 0; i < depth; ++i)
        out_.markup('\t');
}

} // namespace tibxml::output
