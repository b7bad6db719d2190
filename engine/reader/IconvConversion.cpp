// The encodings that the system's converter knows.

#include <array>
#include <cerrno>
#include <iconv.h>

#include "Conversion.h"

namespace tibxml::reader {

namespace {

constexpr std::size_t failed = static_cast<std::size_t>(-1);

iconv_t const noConverter = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)

class IconvConversion final : public Conversion {
public:
    explicit IconvConversion(iconv_t handle) noexcept : handle_{handle} {}

    ~IconvConversion() override { iconv_close(handle_); }

    Converted convert(std::string_view bytes, char* out, std::size_t room) noexcept override {
        // The interface asks for a pointer to characters that it never changes.
        char* in = const_cast<char*>(bytes.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        std::size_t left = bytes.size();
        std::size_t const before = room;
        std::size_t const result = iconv(handle_, &in, &left, &out, &room);
        return {bytes.size() - left, before - room, stopFor(result, errno, left)};
    }

    std::size_t finish(char* out, std::size_t room) noexcept override {
        std::size_t const before = room;
        iconv(handle_, nullptr, nullptr, &out, &room);
        return before - room;
    }

private:
    static Converted::Stop stopFor(std::size_t result, int reason, std::size_t left) noexcept {
        if (result != failed && left == 0) return Converted::Stop::needsInput;
        if (result == failed && reason == EINVAL) return Converted::Stop::needsInput;
        if (result == failed && reason == E2BIG) return Converted::Stop::needsRoom;
        return Converted::Stop::invalid;
    }

    iconv_t handle_;
};

} // namespace

std::unique_ptr<Conversion> conversionFrom(std::string const& name) {
    iconv_t const handle = iconv_open("UTF-8", name.c_str());
    if (handle == noConverter && errno == ENOMEM) throw std::bad_alloc{};
    if (handle == noConverter) return nullptr;
    try {
        return std::make_unique<IconvConversion>(handle);
    } catch (...) {
        iconv_close(handle);
        throw;
    }
}

} // namespace tibxml::reader
