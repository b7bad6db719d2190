#include <output/WideXml.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <TibXml/platform/Utf.h>
#include <output/Serializer.h>
#include <tree/MemoryBlock.h>

namespace tibxml::output {

namespace {

// Keeps a text until its length is known.
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

BSTR xmlAsBstr(tree::Document const& document, tree::Node const* node) {
    KeepingSink kept;
    writeXml(document, node, kept);
    OwnedBstr text = newBstr(kept.wideLength());
    if (text == nullptr) return nullptr;
    kept.widen(text.get());
    return text.release();
}

} // namespace tibxml::output
