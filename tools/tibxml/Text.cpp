#include "Text.h"

#include <algorithm>

#include <TibXml/tibutils/DataEncoding.h>

namespace tibxml::tool {

namespace {

constexpr int excerptLength = 40;

bool isControl(char byte) noexcept {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f;
}

} // namespace

bool isUtf8(std::string_view bytes) {
    // Whatever is ill-formed becomes something else on its way.
    return TibUtils::DataEncoding::Utf8Encode(toWide(bytes).view()) == bytes;
}

CString toWide(std::string_view utf8) {
    return TibUtils::DataEncoding::Utf8Decode(utf8);
}

std::string toUtf8(std::wstring_view wide) {
    return TibUtils::DataEncoding::Utf8Encode(wide);
}

std::string oneLine(std::string text) {
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string excerpt(CString const& text) {
    if (text.GetLength() <= excerptLength) return toUtf8(text);
    return toUtf8(text.Left(excerptLength)) + "...";
}

} // namespace tibxml::tool
