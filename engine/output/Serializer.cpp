#include <output/Serializer.h>

#include <memory>
#include <utility>
#include <vector>

#include <output/Encoding.h>

#include "Declaration.h"
#include "Encoder.h"
#include "Layout.h"
#include "MarkupWriter.h"
#include "OutputBuffer.h"
#include "TreeWriter.h"

namespace tibxml::output {

using tree::Document;
using tree::Node;
using tree::NodeKind;

namespace {

enum class Declared { whole, withoutEncoding };

void writeTopLevel(Node const& node, Declared declared, bool layout, MarkupWriter& out) {
    if (node.is(NodeKind::declaration) && declared == Declared::withoutEncoding) {
        out.declaration(withoutEncoding(node.text()));
    } else {
        TreeWriter{out, layout}.write(node, {});
    }
    if (layout) out.markup('\n');
}

void writeAll(Document const& document, Declared declared, MarkupWriter& out) {
    bool const layout = !document.preservesWhiteSpace();
    Node const* node = firstWritten(*document.node());
    for (; node != nullptr; node = writtenFrom(node->next))
        writeTopLevel(*node, declared, layout, out);
}

} // namespace

void writeXml(Document const& document, Node const* node, Sink& utf8) {
    OutputBuffer buffer{utf8};
    MarkupWriter out{buffer, nullptr};
    if (node->is(NodeKind::document)) {
        writeAll(document, Declared::withoutEncoding, out);
    } else {
        bool const layout = !document.preservesWhiteSpace();
        std::vector<tree::Binding> wanted;
        if (node->is(NodeKind::element)) wanted = inheritedNamespaces(*node);
        TreeWriter{out, layout}.write(*node, std::move(wanted));
    }
    buffer.flush();
}

void appendXml(Document const& document, Node const* node, std::string& utf8Out) {
    StringSink sink{utf8Out};
    writeXml(document, node, sink);
}

void writeFile(Document const& document, Sink& bytes) {
    std::unique_ptr<Encoder> const encoder = makeEncoder(declaredEncoding(document), bytes);
    OutputBuffer buffer{*encoder};
    MarkupWriter out{buffer, encoder->repertoire()};
    writeAll(document, Declared::whole, out);
    buffer.flush();
    encoder->finish();
}

void appendFile(Document const& document, std::string& bytesOut) {
    StringSink sink{bytesOut};
    writeFile(document, sink);
}

} // namespace tibxml::output
