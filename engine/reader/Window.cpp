#include "Window.h"

#include <algorithm>
#include <cstring>

#include <TibXml/platform/Utf.h>
#include <reader/ReadError.h>
#include <reader/Simd.h>

#include "Messages.h"

namespace tibxml::reader {

namespace {

constexpr std::string_view mark = "\xEF\xBB\xBF";
constexpr std::size_t keptForPlaces = 4096;

} // namespace

Window::Window(std::string_view text) {
    if (text.starts_with(mark)) {
        text.remove_prefix(mark.size());
        base_ = mark.size();
    }
    known_ = text;
    knownBase_ = base_;
    begin_ = text.data();
    end_ = begin_ + (text.size() > blockSize ? text.size() - blockSize : 0);
}

Window::Window(Utf8Source& source, std::size_t size) : source_{&source}, size_{size} {
    makeRoom(nullptr, 0, size);
}

void Window::open() {
    if (source_ == nullptr) return;
    fill(std::max(size_, mark.size()));
    skipMark();
}

void Window::skipMark() noexcept {
    if (!known_.starts_with(mark)) return;
    known_.remove_prefix(mark.size());
    begin_ += mark.size();
    base_ = knownBase_ = mark.size();
}

char const* Window::refill(char const* token) {
    if (static_cast<std::size_t>(end_ - token) > longestToken)
        fail(Message::tokenTooLong, token, {"a tag, comment, section or instruction"});
    return source_ != nullptr ? readOn(token) : copyRest(token);
}

char const* Window::copyRest(char const* token) {
    if (buffer_ != nullptr) return token; // the second time: there is no more
    std::string_view const rest = known_.substr(static_cast<std::size_t>(token - begin_));
    buffer_ = std::make_unique_for_overwrite<char[]>(rest.size() + blockSize);
    if (!rest.empty()) std::memcpy(buffer_.get(), rest.data(), rest.size());
    std::memset(buffer_.get() + rest.size(), 0, blockSize);
    base_ = offsetOf(token);
    begin_ = buffer_.get();
    end_ = begin_ + rest.size();
    return begin_;
}

char const* Window::readOn(char const* token) {
    auto const length = static_cast<std::size_t>(end_ - token);
    std::size_t const target = length < size_ ? size_ : 2 * length;
    auto keep =
        std::min<std::size_t>(static_cast<std::size_t>(token - known_.data()), keptForPlaces);
    if (keep != 0 && token[-static_cast<std::ptrdiff_t>(keep)] == '\n') --keep; // may follow a CR
    char const* const from = token - keep;
    knownPlace_ = placeAt(offsetOf(from));
    base_ = offsetOf(token);
    knownBase_ = base_ - static_cast<long>(keep);
    makeRoom(from, keep + length, keep + target);
    begin_ = buffer_.get() + keep;
    end_ = begin_ + length;
    fill(target);
    return begin_;
}

// A buffer that holds `target` bytes and begins with the `kept` bytes from `from`.
void Window::makeRoom(char const* from, std::size_t kept, std::size_t target) {
    if (target + blockSize <= capacity_) {
        std::memmove(buffer_.get(), from, kept);
        return;
    }
    std::size_t const capacity = target + keptForPlaces + blockSize;
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    if (kept != 0) std::memcpy(larger.get(), from, kept);
    buffer_ = std::move(larger);
    capacity_ = capacity;
    if (begin_ == nullptr) begin_ = end_ = buffer_.get();
}

// Until so many bytes are there or the source has no more. What it gives before it fails counts.
void Window::fill(std::size_t target) {
    char* to = buffer_.get() + (end_ - buffer_.get());
    char* const full = buffer_.get() + (begin_ - buffer_.get()) + target;
    char* const before = to;
    while (to != full && !hasFailed_) {
        std::ptrdiff_t const count = source_->read(to, static_cast<std::size_t>(full - to));
        if (count == 0) break;
        hasFailed_ = count < 0;
        if (!hasFailed_) to += count;
    }
    std::memset(to, 0, blockSize);
    end_ = to;
    known_ = {buffer_.get(), static_cast<std::size_t>(end_ - buffer_.get())};
    if (hasFailed_ && to == before)
        throw ParseFailure{source_->failureCode(), std::string{source_->failure()}, end_};
}

Place Window::placeAt(long offset) noexcept {
    if (askedOffset_ < knownBase_ || askedOffset_ > offset) {
        askedOffset_ = knownBase_;
        askedPlace_ = knownPlace_;
    }
    if (offset <= askedOffset_) return askedPlace_;
    askedPlace_ =
        advance(askedPlace_, known_.substr(static_cast<std::size_t>(askedOffset_ - knownBase_),
                                           static_cast<std::size_t>(offset - askedOffset_)));
    askedOffset_ = offset;
    return askedPlace_;
}

std::string_view Window::lineOf(char const* p) const noexcept {
    return lineAround(known_, static_cast<std::size_t>(offsetOf(p) - knownBase_));
}

namespace {

constexpr std::size_t longestLine = 4096;
constexpr std::size_t longestStart = 3072; // of a long line, in front of the offset

bool startsCharacter(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

// Sums that fit into a byte for pieces of so many bytes, which the compiler turns into vector code.
template <class Condition>
long countBytes(std::string_view text, Condition condition) noexcept {
    constexpr std::size_t pieceSize = 240;
    long total = 0;
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, pieceSize);
        unsigned char count = 0;
        for (char const c : piece)
            count = static_cast<unsigned char>(count + (condition(c) ? 1 : 0));
        total += count;
        text.remove_prefix(piece.size());
    }
    return total;
}

// The line ends that begin with CR and are not counted by their LF.
long countReturns(std::string_view text) noexcept {
    long count = 0;
    for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at)) {
        ++at;
        count += at != text.size() && text[at] == '\n' ? 0 : 1;
    }
    return count;
}

// Where the last line begins.
std::size_t lastLine(std::string_view text, bool hasReturns) noexcept {
    std::size_t const feed = text.rfind('\n') + 1; // npos + 1 is 0
    return hasReturns ? std::max(feed, text.rfind('\r') + 1) : feed;
}

} // namespace

Place advance(Place from, std::string_view text) noexcept {
    long const feeds = countBytes(text, [](char c) { return c == '\n'; });
    long const returns = countReturns(text);
    Place to = from;
    if (feeds + returns != 0) {
        to = {from.line + feeds + returns, 1};
        text.remove_prefix(lastLine(text, returns != 0));
    }
    to.column += countBytes(text, startsCharacter);
    return to;
}

std::string_view lineAround(std::string_view text, std::size_t offset) noexcept {
    offset = std::min(offset, text.size());
    std::size_t begin = text.substr(0, offset).find_last_of("\r\n") + 1; // npos + 1 is 0
    std::size_t end = std::min(text.find_first_of("\r\n", offset), text.size());
    if (end - begin > longestLine && offset - begin > longestStart) begin = offset - longestStart;
    while (begin != offset && !startsCharacter(text[begin]))
        ++begin;
    end = std::min(end, begin + longestLine);
    return text.substr(begin, end - begin);
}

std::string wellFormed(std::string_view text) {
    std::string result;
    while (true) {
        std::size_t const valid = platform::validUtf8Prefix(text);
        result += text.substr(0, valid);
        if (valid == text.size()) return result;
        result += "\xEF\xBF\xBD";
        text.remove_prefix(valid + 1);
    }
}

} // namespace tibxml::reader
