#include "Window.h"

#include <algorithm>
#include <cstring>

#include "Failure.h"
#include <reader/Simd.h>

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

} // namespace tibxml::reader
