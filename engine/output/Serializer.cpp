#include <output/Serializer.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <TibXml/platform/Utf.h>
#include <tree/MemoryBlock.h>

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

// Keeps a text until its length is known, so that the wide string is made once and in one piece.
class KeepingSink final : public Sink {
public:
    void write(std::string_view piece) override {
        wideLength_ += platform::wideLength(piece);
        if (chunks_.empty() && start_.size() + piece.size() <= mostAtStart) {
            start_ += piece;
        } else {
            addToChunks(piece);
        }
    }

    std::size_t wideLength() const noexcept { return wideLength_; }

    // Writes wideLength() characters.
    void widen(wchar_t* out) const noexcept {
        out = platform::widenUtf8(start_, out);
        for (Chunk const& chunk : chunks_)
            out = platform::widenUtf8(chunk.text(), out);
    }

private:
    // Pieces of whole characters.
    class Chunk {
    public:
        explicit Chunk(std::size_t size) : memory_{size}, size_{size} {}

        std::size_t size() const noexcept { return size_; }

        std::size_t room() const noexcept { return size_ - used_; }

        void append(std::string_view piece) noexcept {
            std::memcpy(bytes() + used_, piece.data(), piece.size());
            used_ += piece.size();
        }

        std::string_view text() const noexcept { return {bytes(), used_}; }

    private:
        char* bytes() const noexcept { return static_cast<char*>(memory_.memory()); }

        tree::MemoryBlock memory_;
        std::size_t size_;
        std::size_t used_ = 0;
    };

    void addToChunks(std::string_view piece) {
        if (chunks_.empty() || chunks_.back().room() < piece.size())
            chunks_.emplace_back(std::max(nextSize(), piece.size()));
        chunks_.back().append(piece);
    }

    std::size_t nextSize() const noexcept {
        std::size_t const twice = 2 * (chunks_.empty() ? mostAtStart : chunks_.back().size());
        return twice < tree::largePage / 2 ? twice : tree::largePage;
    }

    static constexpr std::size_t mostAtStart = std::size_t{64} * 1024;

    std::string start_; // of a large text, or all of a small one
    std::vector<Chunk> chunks_;
    std::size_t wideLength_ = 0;
};

struct FreeBstr {
    void operator()(BSTR text) const noexcept { SysFreeString(text); }
};

using OwnedBstr = std::unique_ptr<OLECHAR, FreeBstr>;

OwnedBstr newBstr(std::size_t length) noexcept {
    if (length > std::numeric_limits<UINT>::max()) return nullptr;
    return OwnedBstr{SysAllocStringLen(nullptr, static_cast<UINT>(length))};
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

BSTR xmlAsBstr(tree::Document const& document, tree::Node const* node) {
    KeepingSink kept;
    writeXml(document, node, kept);
    OwnedBstr text = newBstr(kept.wideLength());
    if (text == nullptr) return nullptr;
    kept.widen(text.get());
    return text.release();
}

} // namespace tibxml::output
