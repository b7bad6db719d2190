// Gathers small pieces for a sink that is called once per some ten thousand bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include <output/Serializer.h>
#include <tree/Text.h>

namespace tibxml::output {

class OutputBuffer {
public:
    /// The sink must outlive the buffer. What was not flushed when the buffer dies is lost.
    explicit OutputBuffer(Sink& sink) : sink_{sink}, next_{start()} {}

    OutputBuffer(OutputBuffer const&) = delete;
    OutputBuffer& operator=(OutputBuffer const&) = delete;

    void append(char c) {
        if (room() == 0) flush();
        *next_++ = c;
    }

    /// A piece that fits is never torn apart, so sinks get whole characters.
    void append(std::string_view text) {
        if (text.size() > room()) {
            appendPastEnd(text);
            return;
        }
        copy(next_, text);
        next_ += text.size();
    }

    /// Appends the first `length` of 16 bytes that may all be read: cheaper than a copy whose
    /// length has to be looked at.
    void appendOf16(char const* bytes, std::size_t length) {
        if (room() < 16) flush();
        std::memcpy(next_, bytes, 16);
        next_ += length;
    }

    void flush() {
        std::string_view const written{start(), static_cast<std::size_t>(next_ - start())};
        next_ = start();
        if (!written.empty()) sink_.write(written);
    }

private:
    // Small enough to stay in the first-level cache until the sink has read it.
    static constexpr std::size_t capacity = std::size_t{16} * 1024;

    char* start() noexcept { return bytes_->data(); }

    std::size_t room() const noexcept {
        return static_cast<std::size_t>(bytes_->data() + capacity - next_);
    }

    void appendPastEnd(std::string_view text) {
        flush();
        if (text.size() > capacity) {
            sink_.write(text);
            return;
        }
        copy(next_, text);
        next_ += text.size();
    }

    static void copy(char* to, std::string_view text) {
        if (text.size() <= 16) {
            tree::moveShort(to, text.data(), text.size());
        } else {
            std::memcpy(to, text.data(), text.size());
        }
    }

    Sink& sink_;
    std::unique_ptr<std::array<char, capacity>> bytes_{new std::array<char, capacity>};
    char* next_;
};

} // namespace tibxml::output
