// One reading of a document: from an input over a window to a consumer, with failures as a
// ReadError.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>
#include <variant>

#include <reader/Decoder.h>
#include <reader/Input.h>

#include "Parser.h"

namespace tibxml::reader {

// Bytes in memory that are not UTF-8, for the decoder.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::string_view bytes) noexcept : rest_{bytes} {}

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        std::size_t const count = std::min(size, rest_.size());
        if (count != 0) std::memcpy(buffer, rest_.data(), count);
        rest_.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    }

private:
    std::string_view rest_;
};

inline std::size_t windowSizeOf(Input const& input) noexcept {
    return input.windowSize != 0 ? input.windowSize : Window::usualSize;
}

// What `use` answers about the window of a source.
template <class Use>
bool withWindow(Utf8Source& source, Input const& input, Use use) {
    Window window{source, windowSizeOf(input)};
    return use(window);
}

// The same about an input's. What is UTF-8 in memory is looked at where it is.
template <class Use>
bool withWindow(Input const& input, Use use) {
    if (auto const* const text = std::get_if<std::wstring_view>(&input.from)) {
        WideSource source{*text};
        return withWindow(source, input, use);
    }
    if (auto const* const source = std::get_if<ByteSource*>(&input.from)) {
        Decoder decoder{**source, input.encoding};
        return withWindow(decoder, input, use);
    }
    auto const bytes = std::get<std::string_view>(input.from);
    bool const isUtf8 = input.encoding == EncodingRule::alwaysUtf8 || Decoder::utf8In(bytes);
    if (isUtf8) {
        Window window{bytes};
        return use(window);
    }
    MemorySource source{bytes};
    Decoder decoder{source, input.encoding};
    return withWindow(decoder, input, use);
}

// Fills the error for people from a failure in this window.
void describe(ParseFailure const& failure, Window& window, ReadError& error);

// True when the whole document was read; otherwise the error is filled. Throws std::bad_alloc and
// what the consumer throws.
template <class Consumer>
bool run(Parser<Consumer>& parser, Window& window, ReadError& error) {
    try {
        parser.run();
        return true;
    } catch (ParseFailure const& failure) {
        describe(failure, window, error);
        return false;
    }
}

} // namespace tibxml::reader
