// Documents, read in all ways and by libxml2: whatever differs is a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <ReaderComparison.h>

namespace {

using tibxml::reader::test::Entry;

void check(std::string const& difference) {
    if (difference.empty()) return;
    std::fputs(difference.c_str(), stderr);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const document{reinterpret_cast<char const*>(data), size};
    for (Entry const entry : {Entry::text, Entry::bytes})
        check(tibxml::reader::test::difference(document, entry));
    return 0;
}
