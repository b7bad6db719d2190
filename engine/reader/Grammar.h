// What the parser keeps while it goes through a document, and the parts of the grammar that do not
// depend on the consumer: where tokens end, what a document is refused for, what names mean.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <reader/ReadError.h>

#include "Names.h"
#include "Tags.h"
#include "Window.h"
#include <reader/CharacterScan.h>

namespace tibxml::reader {

class Grammar {
public:
    // Throws std::bad_alloc.
    explicit Grammar(Window& window) : window_{window} {}

    Grammar(Grammar const&) = delete;
    Grammar& operator=(Grammar const&) = delete;

    // The end of what the consumer has got.
    char const* here() const noexcept { return here_; }

protected:
    // Rules take the place of their token. They return the place after it, or null, with nothing
    // given to the consumer yet, if the window ends before the token does.

    struct OpenElement {
        QualifiedName const* name;
        void* resolved;
        long offset;
        long line; // 0 when it was not needed yet
    };

    // In front of the first byte of text that is not a literal character of it.
    char const* findTextEnd(char const* p) const {
        p = findTextStop(p, end_);
        return p < end_ && *p == ']' ? passBrackets(p) : p;
    }

    // The same from a ']', which is text unless it begins "]]>".
    char const* passBrackets(char const* p) const;
    // Where the terminator of a section begins; `length` bytes are there from it.
    char const* findTerminator(char const* p, std::string_view terminator, std::ptrdiff_t length);
    // What lies between two places in a section, with line ends normalised.
    std::string_view sectionText(char const* begin, char const* end);
    // Text from `begin` with line ends normalised, in text_; `p` is at the first CR.
    char const* readReturns(char const* begin, char const* p);

    // A text after which a block may be loaded.
    static std::string_view padded(std::string& text);

    void declareNamespaces();

    bool startsWith(char const* p, std::string_view text) const noexcept;

    char const* skipBlanks(char const* p) const noexcept {
        if (*p > ' ') return p; // what is beyond end_ is seen to by the code that reads more
        return findBlankEnd(p, end_);
    }

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
    TagReader tags_{names_};
    std::array<OpenElement, maximumDepth> open_;
    std::size_t depth_ = 0;
    bool hasRoot_ = false;
    bool hasReturns_ = false; // in the section that was looked at last
    std::string text_;        // of one token, when it is not as it stands in the window
};

} // namespace tibxml::reader
