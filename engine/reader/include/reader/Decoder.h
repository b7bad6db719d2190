// Text of any encoding as UTF-8 for the parser.
//
// What is UTF-8 passes through unchecked, because the parser checks it while it scans. Everything
// else is checked here. Text before the place of a failure is given before the failure.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <reader/Input.h>

namespace tibxml::reader {

// Where the parser's text comes from when it does not lie in memory as a whole.
class Utf8Source {
public:
    // Puts at most `size` bytes of UTF-8 into `buffer`; returns how many, 0 at the end, negative
    // on failure, before which everything in front of it has been given. The parser checks that
    // the bytes are UTF-8. A byte order mark is passed on, as U+FEFF. Throws std::bad_alloc.
    virtual std::ptrdiff_t read(char* buffer, std::size_t size) = 0;

    // Why the last read has failed: a sentence for people, and its code.
    virtual std::string_view failure() const noexcept = 0;
    virtual unsigned failureCode() const noexcept = 0;

protected:
    ~Utf8Source() = default;
};

struct FoundEncoding;

// What turns whole characters into UTF-8, for callers that may have room for less than one.
class ConvertingSource : public Utf8Source {
public:
    ConvertingSource(ConvertingSource const&) = delete;
    ConvertingSource& operator=(ConvertingSource const&) = delete;

    std::ptrdiff_t read(char* buffer, std::size_t size) final;

    std::string_view failure() const noexcept final { return failure_; }

    unsigned failureCode() const noexcept final { return code_; }

protected:
    static constexpr std::size_t leastRoom = 32; // for what one character becomes

    ConvertingSource() = default;
    ~ConvertingSource() = default;

    // As read(), with that room at least.
    virtual std::ptrdiff_t convert(char* out, std::size_t room) = 0;

    // Returns what a failed read does.
    std::ptrdiff_t fail(std::uint32_t code, std::string reason) noexcept;

private:
    std::array<char, leastRoom> few_; // converted and not yet asked for
    std::size_t fewBegin_ = 0;
    std::size_t fewEnd_ = 0;
    std::string failure_;
    std::uint32_t code_ = 0;
};

// A document in bytes.
class Decoder final : public ConvertingSource {
public:
    // The source is read only when text is asked for, and at most once for each piece of text after
    // the XML declaration.
    Decoder(ByteSource& source, EncodingRule rule) noexcept;
    ~Decoder();

    // A document that lies in memory, as it is, when its encoding is UTF-8; nothing otherwise.
    // Throws std::bad_alloc.
    static std::optional<std::string_view> utf8In(std::string_view bytes);

private:
    enum class End { none, ofSource, failedSource, refused };

    std::ptrdiff_t convert(char* out, std::size_t room) override;
    void start();
    bool fill();
    std::ptrdiff_t pass(char* out, std::size_t room);
    std::ptrdiff_t end(char* out, std::size_t room);
    std::ptrdiff_t failAtBytes();

    std::string_view rest() const noexcept { return {window_.get() + begin_, end_ - begin_}; }

    ByteSource& source_;
    EncodingRule rule_;
    std::unique_ptr<FoundEncoding> found_; // from the first reading on
    std::unique_ptr<char[]> window_;       // bytes of the source
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::uint64_t offset_ = 0; // of the begin in the source
    End ending_ = End::none;
};

// Wide text, whatever encoding it declares.
class WideSource final : public ConvertingSource {
public:
    explicit WideSource(std::wstring_view text) noexcept : rest_{text} {}

private:
    std::ptrdiff_t convert(char* out, std::size_t room) override;

    std::wstring_view rest_;
};

} // namespace tibxml::reader
