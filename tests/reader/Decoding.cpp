#include "Decoding.h"

#include <gtest/gtest.h>

#include <iconv.h>

#include <reader/Decoder.h>

#include "Reading.h"

namespace tibxml::reader::test {

Decoded drain(Utf8Source& source, std::size_t size) {
    Decoded result;
    std::string buffer(size, '\0');
    std::ptrdiff_t count = 0;
    while ((count = source.read(buffer.data(), size)) > 0)
        result.text.append(buffer, 0, static_cast<std::size_t>(count));
    EXPECT_EQ(source.read(buffer.data(), size), count) << "an end is an end";
    if (count == 0) return result;
    result.failure = source.failure();
    result.code = source.failureCode();
    return result;
}

Decoded decode(std::string_view bytes, std::size_t step, std::size_t size) {
    Bytes source{bytes, step};
    Decoder decoder{source, EncodingRule::detect};
    return drain(decoder, size);
}

std::string encoded(std::string_view utf8, char const* encoding) {
    std::string in{utf8};
    std::string out(4 * in.size() + 64, '\0');
    char* from = in.data();
    char* to = out.data();
    std::size_t left = in.size();
    std::size_t room = out.size();
    iconv_t const handle = iconv_open(encoding, "UTF-8");
    EXPECT_NE(iconv(handle, &from, &left, &to, &room), static_cast<std::size_t>(-1)) << encoding;
    iconv(handle, nullptr, nullptr, &to, &room);
    iconv_close(handle);
    out.resize(out.size() - room);
    return out;
}

} // namespace tibxml::reader::test
