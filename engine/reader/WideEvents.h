// Tells the events of a document as wide text.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <reader/SaxReader.h>

#include "Grammar.h"

namespace tibxml::reader {

// Thrown when the events end the reading.
struct ReadingStopped {};

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

} // namespace tibxml::reader
