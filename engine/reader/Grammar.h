// What the parser keeps while it goes through a document, and the parts of the grammar that do not
// depend on who is told: where tokens end, what a document is refused for, what names mean.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <reader/ReadError.h>

#include "CharacterScan.h"
#include "Names.h"
#include "NamespaceScopes.h"
#include "Window.h"

namespace tibxml::reader {

struct Attribute {
    QualifiedName* name;
    std::string_view value; // normalised
    char const* at;         // where its name stands
};

struct StartTag {
    std::vector<Attribute> const& attributes; // in their order, with the declarations
    unsigned uses = 0;                        // the NameUse of each attribute, as bits

    bool has(NameUse use) const noexcept {
        return (uses & (1U << static_cast<unsigned>(use))) != 0;
    }
};

class Grammar {
public:
    // Throws std::bad_alloc.
    explicit Grammar(Window& window) : window_{window} {}

    Grammar(Grammar const&) = delete;
    Grammar& operator=(Grammar const&) = delete;

    // Up to where what is told reaches.
    char const* here() const noexcept { return here_; }

protected:
    // Rules take the place of their token. They return the place after it, or null, with nothing
    // told yet, when the window ends before the token does.

    struct OpenElement {
        QualifiedName const* name;
        void* resolved;
        std::size_t bindings; // in force outside of it
        long offset;
        long line; // 0 when it was not needed yet
    };

    // In front of the first byte of text that is no literal character of it.
    char const* findTextEnd(char const* p) const;
    // Where the terminator of a section begins; `length` bytes are there from it.
    char const* findTerminator(char const* p, std::string_view terminator, std::ptrdiff_t length);
    // What lies between two places in a section, with line ends normalised.
    std::string_view sectionText(char const* begin, char const* end);
    // Text from `begin` with line ends normalised, in text_; `p` is at the first CR.
    char const* readReturns(char const* begin, char const* p);

    // Reads the tag at p up to its '>' or "/>" into attributes_; null when it is not all there.
    char const* readTag(char const* p, QualifiedName*& name, unsigned& uses);
    char const* readAttribute(char const* p, QualifiedName const& element, unsigned& uses);
    char const* findValue(char const* p, QualifiedName const& attribute) const;
    char const* readValue(char const* p, QualifiedName const& attribute, std::string_view& value);
    char const* normalise(char const* begin, char const* p, char quote,
                          QualifiedName const& attribute);
    void placeValues() noexcept;
    void declareNamespaces();
    void checkExpandedNames();

    // Null when the character at p may be whole with more text; otherwise fails because of it.
    char const* stopAt(char const* p) const;
    bool startsWith(char const* p, std::string_view text) const noexcept;
    char const* skipBlanks(char const* p) const noexcept;

    [[noreturn]] void failInTag(char const* p, QualifiedName const& element) const;
    [[noreturn]] void failAtEndTag(char const* p);
    [[noreturn]] void failOutside(char const* p) const;
    [[noreturn]] void failAtEnd(char const* p);
    char const* checkEndTag(char const* p);
    char const* unknownMarkup(char const* p) const;
    void checkTarget(std::string_view target) const;
    void noteLines();
    long lineOf(OpenElement& element);

    Window& window_;
    char const* end_ = nullptr; // of the window
    char const* here_ = nullptr;
    Names names_;
    NamespaceScopes scopes_{names_};
    std::array<OpenElement, maximumDepth> open_;
    std::size_t depth_ = 0;
    bool hasRoot_ = false;
    bool hasReturns_ = false;           // in the section that was looked at last
    std::uint64_t tag_ = 0;             // the number of start tags so far
    std::vector<Attribute> attributes_; // of one tag
    std::string values_;                // of attributes, as far as they were normalised

    struct Normalised {
        std::size_t attribute;
        std::size_t begin; // in values_
        std::size_t size;
    };

    std::vector<Normalised> normalised_;
    std::string text_; // of one token, when it is not as it stands in the window
};

} // namespace tibxml::reader
