// The part of a document that the parser looks at: all of a text in memory, or a buffer that is
// filled again and again.
//
// The parser reads tokens from begin() to end(). When a token reaches beyond end(), refill() moves
// what there is of it to the front of the buffer, reads more after it, and the token is read again
// from its start. So the grammar knows nothing of buffers, and memory is bounded by the longest
// token. After end() there are always blockSize bytes that may be loaded, but mean nothing: loops
// over blocks need no check for their last one. A text in memory is therefore looked at in place
// up to its last bytes, and only what begins there is copied.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include <reader/Decoder.h>

namespace tibxml::reader {

// Where in a document something stands, for people: counted from 1, columns in characters. CR, LF
// and CR LF end a line.
struct Place {
    long line = 1;
    long column = 1;
};

// Where one comes to from a place over a text, which does not begin between CR and LF.
Place advance(Place from, std::string_view text) noexcept;

// The line around an offset, without its end; the kilobytes around the offset when it is very long.
std::string_view lineAround(std::string_view text, std::size_t offset) noexcept;

class Window {
public:
    // No tag, comment, CDATA section or processing instruction may be longer.
    static constexpr std::size_t longestToken = std::size_t{1} << 30;
    static constexpr std::size_t usualSize = std::size_t{1} << 16;

    // The text must outlive the window.
    explicit Window(std::string_view text);

    // `size` is how much is looked at at a time, as long as no token is longer. Throws
    // std::bad_alloc.
    explicit Window(Utf8Source& source, std::size_t size = usualSize);

    Window(Window const&) = delete;
    Window& operator=(Window const&) = delete;

    // To be called before anything else. Throws what refill() throws.
    void open();

    // Without a byte order mark at the start of the document.
    char const* begin() const noexcept { return begin_; }

    char const* end() const noexcept { return end_; }

    // Whether what was read is let go, so that its places cannot be asked for any more.
    bool letsGo() const noexcept { return source_ != nullptr; }

    bool isEmpty() const noexcept { return known_.empty(); }

    // Gets more text: the new place of `token`, which may be as long as it was when the document
    // is at its end. All other addresses become void. Throws std::bad_alloc and ParseFailure when
    // the source fails or the token is too long.
    char const* refill(char const* token);

    // Bytes of the document in front of an address.
    long offsetOf(char const* p) const noexcept { return base_ + (p - begin_); }

    // Where an address is for people. Asking for places in their order costs one look at the text.
    Place placeOf(char const* p) noexcept { return placeAt(offsetOf(p)); }

    // The same by offset; for what is no longer there, the first place that is.
    Place placeAt(long offset) noexcept;

    // The line around an address, as far as it is there.
    std::string_view lineOf(char const* p) const noexcept;

private:
    char const* copyRest(char const* token);
    char const* readOn(char const* token);
    void makeRoom(char const* from, std::size_t kept, std::size_t target);
    void fill(std::size_t target);
    void skipMark() noexcept;

    Utf8Source* source_ = nullptr;
    std::size_t size_ = usualSize;
    bool hasFailed_ = false;

    char const* begin_ = nullptr;
    char const* end_ = nullptr;
    long base_ = 0; // bytes of the document in front of begin_

    // What is there for showing places: all of a text in memory, or a buffer with a little of what
    // was before begin_.
    std::string_view known_;
    long knownBase_ = 0;
    Place knownPlace_;

    long askedOffset_ = 0; // of the last question
    Place askedPlace_;

    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_ = 0;
};

} // namespace tibxml::reader
