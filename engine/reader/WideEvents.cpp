#include "WideEvents.h"

#include <TibXml/platform/Utf.h>

namespace tibxml::reader {

namespace {

std::wstring const noPrefix;

// Where a text may be cut at `size` or a little before, so that no character is.
std::size_t cutAt(std::string_view text, std::size_t size) noexcept {
    if (text.size() <= size) return text.size();
    while (isContinuation(byteAt(text.data() + size)))
        --size;
    return size;
}

std::wstring_view widened(std::string_view text, wchar_t* room) noexcept {
    wchar_t const* const end = platform::widenUtf8(text, room);
    return {room, static_cast<std::size_t>(end - room)};
}

std::wstring wide(std::string_view text) {
    std::wstring result(platform::wideLength(text), L'\0');
    platform::widenUtf8(text, result.data());
    return result;
}

SaxName const& nameOf(Attribute const& attribute) noexcept {
    return *static_cast<SaxName const*>(attribute.name->attributeName);
}

// The declaration of xml says what holds anyway.
bool isTold(Attribute const& attribute) noexcept {
    return attribute.name->declares() && attribute.name->declared->text != "xml";
}

} // namespace

void* WideEvents::nameOf(QualifiedName const& name, Uri const& uri) {
    auto const [found, isNew] = names_.try_emplace({&name, &uri});
    if (isNew) found->second = {wide(uri.text), wide(name.local()), wide(name.text)};
    return &found->second;
}

void WideEvents::startElement(void* name, StartTag const& tag) {
    open_.push_back(prefixes_.size());
    if (tag.has(NameUse::declaresDefault) || tag.has(NameUse::declaresPrefix)) declare(tag);
    attributes_.clear();
    std::size_t bytes = 0;
    for (Attribute const& attribute : tag.attributes)
        bytes += attribute.value.size();
    wchar_t* room = roomFor(bytes);
    for (Attribute const& attribute : tag.attributes) {
        if (attribute.name->declares()) continue;
        std::wstring_view const value = widened(attribute.value, room);
        attributes_.push_back({&reader::nameOf(attribute), value});
        room += value.size();
    }
    goOnIf(events_.startElement(*static_cast<SaxName const*>(name), attributes_));
}

void WideEvents::declare(StartTag const& tag) {
    for (Attribute const& attribute : tag.attributes) {
        if (!isTold(attribute)) continue;
        bool const isDefault = attribute.name->use == NameUse::declaresDefault;
        std::wstring const& prefix = isDefault ? noPrefix : reader::nameOf(attribute).local;
        prefixes_.push_back(&prefix);
        wchar_t* const room = roomFor(attribute.value.size());
        goOnIf(events_.startPrefixMapping(prefix, widened(attribute.value, room)));
    }
}

void WideEvents::endElement(void* name) {
    goOnIf(events_.endElement(*static_cast<SaxName const*>(name)));
    while (prefixes_.size() != open_.back()) {
        std::wstring const& prefix = *prefixes_.back();
        prefixes_.pop_back();
        goOnIf(events_.endPrefixMapping(prefix));
    }
    open_.pop_back();
}

void WideEvents::piece(std::string_view text) {
    while (!text.empty()) {
        std::size_t const size = cutAt(text, piece_.size());
        goOnIf(events_.characters(widened(text.substr(0, size), piece_.data())));
        text.remove_prefix(size);
    }
}

void WideEvents::instruction(std::string_view target, std::string_view data) {
    wchar_t* const room = roomFor(target.size() + data.size());
    std::wstring_view const wideTarget = widened(target, room);
    goOnIf(events_.processingInstruction(wideTarget, widened(data, room + wideTarget.size())));
}

wchar_t* WideEvents::roomFor(std::size_t bytes) {
    if (room_.size() <= bytes) room_.resize(2 * bytes + 64); // never empty: texts have an address
    return room_.data();
}

} // namespace tibxml::reader
