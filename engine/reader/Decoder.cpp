#include <reader/Decoder.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include <reader/ReadError.h>

#include "Encodings.h"

namespace tibxml::reader {

namespace {

constexpr std::size_t windowSize = maximumDeclaration;

std::string hexadecimal(std::uint32_t number) {
    std::array<char, 16> digits;
    (void)std::snprintf(digits.data(), digits.size(), "0x%02X", static_cast<unsigned>(number));
    return digits.data();
}

// Bytes as people write them.
std::string inHexadecimal(std::string_view bytes) {
    std::string text;
    for (char const byte : bytes)
        text += (text.empty() ? "" : " ") + hexadecimal(static_cast<unsigned char>(byte));
    return text;
}

std::uint32_t codeOf(Message message) noexcept {
    return errorNotWellFormed + static_cast<std::uint32_t>(message);
}

} // namespace

std::ptrdiff_t ConvertingSource::read(char* buffer, std::size_t size) {
    if (fewBegin_ == fewEnd_) {
        if (code_ != 0) return -1;
        if (size >= leastRoom) return convert(buffer, size);
        std::ptrdiff_t const count = convert(few_.data(), few_.size());
        if (count <= 0) return count;
        fewBegin_ = 0;
        fewEnd_ = static_cast<std::size_t>(count);
    }
    std::size_t const count = std::min(size, fewEnd_ - fewBegin_);
    std::memcpy(buffer, few_.data() + fewBegin_, count);
    fewBegin_ += count;
    return static_cast<std::ptrdiff_t>(count);
}

std::ptrdiff_t ConvertingSource::fail(std::uint32_t code, std::string reason) noexcept {
    code_ = code;
    failure_ = std::move(reason);
    return -1;
}

std::optional<std::string_view> Decoder::utf8In(std::string_view bytes) {
    FoundEncoding const found = findEncoding(bytes.substr(0, maximumDeclaration));
    if (found.conversion || found.refusal) return {};
    return bytes;
}

Decoder::Decoder(ByteSource& source, EncodingRule rule) noexcept : source_{source}, rule_{rule} {}

Decoder::~Decoder() = default;

void Decoder::start() {
    if (!window_) window_ = std::make_unique_for_overwrite<char[]>(windowSize);
    std::size_t seen = 0;
    while (rule_ == EncodingRule::detect && end_ != windowSize && needsMoreToFind(rest(), seen)) {
        seen = end_;
        if (fill()) continue;
        if (ending_ == End::failedSource) end_ = 0; // what is left may mean anything
        break;
    }
    bool const detects = rule_ == EncodingRule::detect;
    found_ = std::make_unique<FoundEncoding>(detects ? findEncoding(rest()) : FoundEncoding{});
    if (!found_->refusal) return;
    end_ = std::min(end_, found_->declarationSize);
    ending_ = End::refused;
}

// Reads the source once; false when no more can come.
bool Decoder::fill() {
    if (ending_ != End::none) return false;
    std::memmove(window_.get(), window_.get() + begin_, end_ - begin_);
    end_ -= std::exchange(begin_, 0);
    std::ptrdiff_t const count = source_.read(window_.get() + end_, windowSize - end_);
    if (count <= 0) ending_ = count == 0 ? End::ofSource : End::failedSource;
    end_ += static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0));
    return count > 0;
}

std::ptrdiff_t Decoder::convert(char* out, std::size_t room) {
    if (!found_) start();
    if (!found_->conversion) return pass(out, room);
    while (true) {
        Converted const result = found_->conversion->convert(rest(), out, room);
        begin_ += result.taken;
        offset_ += result.taken;
        if (result.given != 0) return static_cast<std::ptrdiff_t>(result.given);
        if (result.stop != Converted::Stop::needsInput) return failAtBytes();
        if (!fill()) return end(out, room);
    }
}

std::ptrdiff_t Decoder::pass(char* out, std::size_t room) {
    if (begin_ != end_) {
        std::size_t const count = std::min(room, end_ - begin_);
        std::memcpy(out, window_.get() + begin_, count);
        begin_ += count;
        return static_cast<std::ptrdiff_t>(count);
    }
    if (ending_ != End::none) return end(out, room);
    std::ptrdiff_t const count = source_.read(out, room);
    if (count > 0) return count;
    ending_ = count == 0 ? End::ofSource : End::failedSource;
    return end(out, room);
}

// What comes after the last byte.
std::ptrdiff_t Decoder::end(char* out, std::size_t room) {
    if (ending_ == End::refused) return fail(codeOf(*found_->refusal), found_->reason);
    if (ending_ == End::failedSource) return fail(errorSource, "the source could not be read");
    if (begin_ != end_)
        return fail(codeOf(Message::cutCharacter), sentence(Message::cutCharacter, {found_->name}));
    if (!found_->conversion) return 0;
    return static_cast<std::ptrdiff_t>(found_->conversion->finish(out, room));
}

std::ptrdiff_t Decoder::failAtBytes() {
    return fail(codeOf(Message::invalidBytes),
                sentence(Message::invalidBytes,
                         {inHexadecimal(rest().substr(0, unitSize(found_->encoding))),
                          std::to_string(offset_), found_->name}));
}

std::ptrdiff_t WideSource::convert(char* out, std::size_t room) {
    if (rest_.empty()) return 0;
    Converted const result = convertWide(rest_, out, room);
    rest_.remove_prefix(result.taken);
    if (result.given != 0) return static_cast<std::ptrdiff_t>(result.given);
    return fail(errorSource, "the text holds characters that are not Unicode: " +
                                 hexadecimal(static_cast<std::uint32_t>(rest_.front())));
}

} // namespace tibxml::reader
