#include <TibXml/platform/BStr.h>

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>

namespace {

constexpr std::size_t prefixBytes = sizeof(UINT);

char* blockOf(BSTR text) noexcept {
    return reinterpret_cast<char*>(text) - prefixBytes;
}

} // namespace

BSTR SysAllocString(OLECHAR const* text) noexcept {
    if (text == nullptr) return nullptr;
    auto const length = std::wcslen(text);
    if (length > std::numeric_limits<UINT>::max()) return nullptr;
    return SysAllocStringLen(text, static_cast<UINT>(length));
}

BSTR SysAllocStringLen(OLECHAR const* text, UINT length) noexcept {
    constexpr std::size_t longest = std::numeric_limits<UINT>::max() / sizeof(OLECHAR);
    if (length > longest) return nullptr;
    auto const bytes = static_cast<UINT>(length * sizeof(OLECHAR));
    auto* const block = static_cast<char*>(std::malloc(prefixBytes + bytes + sizeof(OLECHAR)));
    if (block == nullptr) return nullptr;
    std::memcpy(block, &bytes, prefixBytes);
    auto* const string = reinterpret_cast<BSTR>(block + prefixBytes);
    if (text != nullptr) std::memcpy(string, text, bytes);
    string[length] = L'\0';
    return string;
}

void SysFreeString(BSTR text) noexcept {
    if (text != nullptr) std::free(blockOf(text));
}

UINT SysStringLen(BSTR text) noexcept {
    return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(BSTR text) noexcept {
    UINT bytes = 0;
    if (text != nullptr) std::memcpy(&bytes, blockOf(text), prefixBytes);
    return bytes;
}
