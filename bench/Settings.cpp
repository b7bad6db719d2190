#include "Settings.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace bench {

namespace {

void appendExtras(std::string& out, std::string const& number, std::size_t i) {
    if (i % 10 == 3) out += "\t\t<!-- changed by user " + number + " -->\n";
    if (i % 20 == 5) out += "\t\t<position>(" + number + ",20)</position>\n";
    if (i % 25 == 6) out += "\t\t<script><![CDATA[if (a < " + number + ") run();]]></script>\n";
}

void appendItem(std::string& out, std::size_t i) {
    std::string const number = std::to_string(i);
    out += "\t<item id=\"" + number + "\" kind=\"k" + std::to_string(i % 10) + "\">\n";
    out += "\t\t<name>";
    out += i % 50 == 7 ? "Gr\xC3\xB6\xC3\x9F"
                         "e &amp; Farbe "
                       : "Setting number ";
    out += number + "</name>\n\t\t<value>" + std::to_string(i * 7 % 100'003) + "</value>\n";
    appendExtras(out, number, i);
    out += "\t</item>\n";
}

bool isAscii8(unsigned char const* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return (word & 0x8080808080808080U) == 0;
}

constexpr std::array<unsigned, 4> leads{0, 0xC0, 0xE0, 0xF0}; // by number of further bytes

} // namespace

std::string settings(std::size_t items) {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<settings>\n";
    for (std::size_t i = 0; i < items; ++i)
        appendItem(out, i);
    return out + "</settings>\n";
}

std::string const& largeSettings() {
    static std::string const text = settings(manyItems);
    return text;
}

std::string const& smallSettings() {
    static std::string const text = settings(fewItems);
    return text;
}

std::wstring widened(char const* utf8, std::size_t size) {
    std::wstring wide(size, L'\0');
    std::size_t length = 0;
    auto const* bytes = reinterpret_cast<unsigned char const*>(utf8);
    for (auto const* const end = bytes + size; bytes < end;) {
        for (; end - bytes >= 8 && isAscii8(bytes); bytes += 8, length += 8)
            std::copy_n(bytes, 8, &wide[length]);
        if (bytes == end) break;
        unsigned const lead = *bytes++;
        unsigned const more = lead < 0xC0 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        unsigned code = more == 0 ? lead : lead & (0x3FU >> more);
        for (unsigned i = 0; i < more; ++i)
            code = code << 6 | (*bytes++ & 0x3FU);
        wide[length++] = static_cast<wchar_t>(code);
    }
    wide.resize(length);
    return wide;
}

std::string narrowed(wchar_t const* wide, std::size_t size) {
    std::string utf8;
    utf8.reserve(size + size / 8);
    for (wchar_t const* const end = wide + size; wide != end; ++wide) {
        // NOLINTNEXTLINE(bugprone-signed-char-misuse): a wide character is never negative
        auto const code = static_cast<unsigned>(*wide);
        unsigned const more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        utf8 += static_cast<char>(leads[more] | code >> (6 * more));
        for (unsigned i = more; i-- > 0;)
            utf8 += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
    }
    return utf8;
}

} // namespace bench
