#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <new>
#include <string>

#include <reader/Decoder.h>

#include "Decoding.h"
#include "FailingAllocation.h"
#include "Reading.h"

namespace tibxml::reader::test {

TEST(Decoders, ReportEveryFailingAllocation) {
    for (char const* const encoding : {"UTF-16BE", "ISO-8859-1", "KOI8-R", "UTF-8"}) {
        std::string const text =
            "<?xml version=\"1.0\" encoding=\"" + std::string{encoding} + "\"?><a/>";
        std::string const bytes = encoded(text, encoding);
        failEveryAllocation(2, [&](FailingAllocation const& failing) {
            std::array<char, 4096> buffer;
            Bytes source{bytes};
            Decoder decoder{source, EncodingRule::detect};
            try {
                std::ptrdiff_t const count = decoder.read(buffer.data(), buffer.size());
                return count > 0 &&
                       text.starts_with({buffer.data(), static_cast<std::size_t>(count)});
            } catch (std::bad_alloc const&) {
                return failing.happened();
            }
        });
    }
}

} // namespace tibxml::reader::test
