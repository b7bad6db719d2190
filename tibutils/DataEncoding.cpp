#include <TibXml/tibutils/DataEncoding.h>

#include <TibXml/platform/Utf.h>

#include <algorithm>
#include <cstddef>

namespace TibUtils::DataEncoding {
namespace {

namespace platform = tibxml::platform;

constexpr wchar_t replacement = 0xFFFD;

// For text which is known to hold something that has no UTF-8 form; slow, but hardly ever needed.
std::string encodeWithReplacements(std::wstring_view wide) {
    std::string utf8;
    for (wchar_t const character : wide) {
        std::wstring_view const one(&character, 1);
        platform::appendUtf8(utf8,
                             platform::isValidWide(one) ? one : std::wstring_view(&replacement, 1));
    }
    return utf8;
}

unsigned byteAt(std::string_view bytes, std::size_t index) noexcept {
    return static_cast<unsigned char>(bytes[index]);
}

std::size_t sequenceLength(unsigned lead) noexcept {
    if (lead < 0xC2 || lead > 0xF4) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The second byte is where overlong forms, surrogates and values above U+10FFFF show.
bool mayFollowLead(unsigned lead, unsigned byte) noexcept {
    unsigned const least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned const most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return byte >= least && byte <= most;
}

bool isContinuation(unsigned byte) noexcept {
    return (byte & 0xC0U) == 0x80U;
}

// How many of the bytes at the front, at least the first, begin a character of UTF-8.
std::size_t begunLength(std::string_view bytes) noexcept {
    unsigned const lead = byteAt(bytes, 0);
    std::size_t const most = std::min(sequenceLength(lead), bytes.size());
    if (most < 2 || !mayFollowLead(lead, byteAt(bytes, 1))) {
        return 1;
    }
    std::size_t length = 2;
    while (length < most && isContinuation(byteAt(bytes, length))) {
        ++length;
    }
    return length;
}

// Whether the bytes are the begin of one character and nothing else.
bool isUnfinished(std::string_view bytes) noexcept {
    return begunLength(bytes) == bytes.size() && sequenceLength(byteAt(bytes, 0)) > bytes.size();
}

void appendWellFormed(std::wstring& wide, std::string_view utf8) {
    std::size_t const before = wide.size();
    wide.resize(before + platform::wideLength(utf8));
    platform::widenUtf8(utf8, wide.data() + before);
}

// Decodes all but an unfinished character at the end, which it returns.
std::string_view appendDecoded(std::wstring& wide, std::string_view utf8) {
    for (;;) {
        std::size_t const valid = platform::validUtf8Prefix(utf8);
        appendWellFormed(wide, utf8.substr(0, valid));
        utf8.remove_prefix(valid);
        if (utf8.empty() || isUnfinished(utf8)) {
            return utf8;
        }
        wide += replacement;
        utf8.remove_prefix(begunLength(utf8));
    }
}

} // namespace

std::string Utf8Encode(std::wstring_view wide) {
    std::string utf8;
    return platform::appendUtf8(utf8, wide) ? utf8 : encodeWithReplacements(wide);
}

CString Utf8Decode(std::string_view utf8) {
    std::wstring wide;
    if (!appendDecoded(wide, utf8).empty()) {
        wide += replacement;
    }
    return CString(std::wstring_view(wide));
}

CString Utf8Decoder::Decode(std::string_view piece) {
    std::string joined;
    if (HasUnfinished()) {
        joined.append(unfinished_).append(piece);
        piece = joined;
    }
    std::wstring wide;
    std::string unfinished(appendDecoded(wide, piece));
    CString decoded{std::wstring_view(wide)};
    unfinished_.swap(unfinished);
    return decoded;
}

CString Utf8Decoder::Finish() {
    CString rest(replacement, HasUnfinished() ? 1 : 0);
    unfinished_.clear();
    return rest;
}

} // namespace TibUtils::DataEncoding
