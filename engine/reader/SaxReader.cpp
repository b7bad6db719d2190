#include <reader/SaxReader.h>

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <TibXml/platform/Utf.h>

#include "Run.h"

namespace tibxml::reader {

namespace {

// Thrown when the events end the reading.
struct ReadingStopped {};

// Makes the events of a document wide text.
//
// All functions throw ReadingStopped, std::bad_alloc and what the events throw.
class WideEvents {
public:
    explicit WideEvents(SaxEvents& events) noexcept : events_{events} {}

    void* nameOf(QualifiedName const& name, Uri const& uri);

    void startDocument() { goOnIf(events_.startDocument()); }

    void endDocument() { goOnIf(events_.endDocument()); }

    void declaration(std::string_view /*content*/) noexcept {}

    void startElement(void* name, StartTag const& tag);
    void endElement(void* name);

    static constexpr bool dropsBlanks() noexcept { return false; }

    void blanks() noexcept {}

    void text(std::string_view text) { piece(text); }

    void piece(std::string_view text);

    void reference(std::string_view character) { piece(character); }

    void cdata(std::string_view content) { piece(content); }

    void comment(std::string_view /*content*/) noexcept {}

    void instruction(std::string_view target, std::string_view data);

private:
    struct NameKey {
        QualifiedName const* name;
        Uri const* uri;

        bool operator==(NameKey const&) const = default;
    };

    struct NameHash {
        std::size_t operator()(NameKey const& key) const noexcept {
            auto const name = reinterpret_cast<std::uintptr_t>(key.name);
            return (name ^ (name >> 9U)) * 0x9E3779B97F4A7C15U ^
                   reinterpret_cast<std::uintptr_t>(key.uri);
        }
    };

    static void goOnIf(bool wanted) {
        if (!wanted) throw ReadingStopped{};
    }

    void declare(StartTag const& tag);
    // As much room for wide characters as a text with so many bytes can take; what was there before
    // is lost.
    wchar_t* roomFor(std::size_t bytes);

    SaxEvents& events_;
    std::unordered_map<NameKey, SaxName, NameHash> names_;
    std::vector<std::size_t> open_;             // how many declarations were in force outside
    std::vector<std::wstring const*> prefixes_; // of the declarations in force
    std::vector<SaxAttribute> attributes_;      // of one tag at a time
    std::vector<wchar_t> room_;                 // for the texts of one event
    std::array<wchar_t, 4096> piece_;           // of a text
};

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

SaxName const& nameIn(Attribute const& attribute) noexcept {
    return *static_cast<SaxName const*>(attribute.name->attributeName);
}

// The declaration of xml says what holds anyway.
bool isTold(Attribute const& attribute) noexcept {
    return attribute.name->declares() && attribute.name->declared->text != "xml";
}

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
        attributes_.push_back({&nameIn(attribute), value});
        room += value.size();
    }
    goOnIf(events_.startElement(*static_cast<SaxName const*>(name), attributes_));
}

void WideEvents::declare(StartTag const& tag) {
    for (Attribute const& attribute : tag.attributes) {
        if (!isTold(attribute)) continue;
        bool const isDefault = attribute.name->use == NameUse::declaresDefault;
        std::wstring const& prefix = isDefault ? noPrefix : nameIn(attribute).local;
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

class ParsePlace final : public SaxPlace {
public:
    ParsePlace(Window& window, Grammar const& grammar, ReadError const& error) noexcept
        : window_{window},
          grammar_{grammar},
          error_{error} {}

    long line() const noexcept override { return error_.code != 0 ? error_.line : place().line; }

    long column() const noexcept override {
        return error_.code != 0 ? error_.column : place().column;
    }

private:
    Place place() const noexcept {
        return grammar_.here() != nullptr ? window_.placeOf(grammar_.here()) : Place{};
    }

    Window& window_;
    Grammar const& grammar_;
    ReadError const& error_;
};

bool readEvents(SaxEvents& events, Window& window, ReadError& error) {
    error = {};
    WideEvents consumer{events};
    Parser<WideEvents> parser{window, consumer};
    ParsePlace const place{window, parser, error};
    if (!events.start(place)) return false;
    try {
        if (!run(parser, window, error)) return false;
        consumer.endDocument();
        return true;
    } catch (ReadingStopped const&) {
        return false;
    }
}

} // namespace

bool readSax(SaxEvents& events, Input const& input, ReadError& error) {
    return withWindow(input, [&](Window& window) { return readEvents(events, window, error); });
}

} // namespace tibxml::reader
