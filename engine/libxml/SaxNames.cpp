#include "SaxNames.h"

#include <TibXml/platform/Utf.h>

#include "ParsedText.h"

namespace tibxml::reader {

namespace {

void appendWide(std::wstring& target, unsigned char const* utf8) {
    std::string_view const text = view(utf8);
    std::size_t const before = target.size();
    target.resize(before + platform::wideLength(text));
    platform::widenUtf8(text, target.data() + before);
}

SaxName wide(unsigned char const* local, unsigned char const* prefix, unsigned char const* uri) {
    SaxName name;
    appendWide(name.uri, uri);
    appendWide(name.local, local);
    if (prefix != nullptr) {
        appendWide(name.qualified, prefix);
        name.qualified += L':';
    }
    name.qualified += name.local;
    return name;
}

} // namespace

std::size_t SaxNames::Hash::operator()(Key const& key) const noexcept {
    auto hash = reinterpret_cast<std::uintptr_t>(key.local);
    for (unsigned char const* part : {key.prefix, key.uri})
        hash = hash * 0x9E3779B97F4A7C15U ^ reinterpret_cast<std::uintptr_t>(part);
    return hash ^ (hash >> 29);
}

SaxName const& SaxNames::lookUp(Key const& key, Recent& recent) {
    auto found = names_.find(key);
    if (found == names_.end())
        found = names_.emplace(key, wide(key.local, key.prefix, key.uri)).first;
    SaxName const& name = found->second;
    recent = {key, &name};
    return name;
}

} // namespace tibxml::reader
