#include <output/WideXml.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include <TibXml/platform/Utf.h>
#include <output/Serializer.h>

namespace tibxml::output {

namespace {

// Measures, and keeps a text that is small.
class MeasuringSink final : public Sink {
public:
    void write(std::string_view piece) override {
        length_ += platform::wideLength(piece);
        complete_ = complete_ && kept_.size() + piece.size() <= limit;
        if (complete_) kept_ += piece;
    }

    std::size_t length() const noexcept { return length_; }

    bool hasAll() const noexcept { return complete_; }

    std::string const& kept() const noexcept { return kept_; }

private:
    static constexpr std::size_t limit = std::size_t{64} * 1024;

    std::size_t length_ = 0;
    bool complete_ = true;
    std::string kept_;
};

class WideningSink final : public Sink {
public:
    explicit WideningSink(wchar_t* out) noexcept : out_{out} {}

    void write(std::string_view piece) override { out_ = platform::widenUtf8(piece, out_); }

private:
    wchar_t* out_;
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
    MeasuringSink measured;
    writeXml(document, node, measured);
    OwnedBstr text = newBstr(measured.length());
    if (text == nullptr) return nullptr;
    WideningSink sink{text.get()};
    if (measured.hasAll()) {
        sink.write(measured.kept());
    } else {
        writeXml(document, node, sink);
    }
    return text.release();
}

} // namespace tibxml::output
