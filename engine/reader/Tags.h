// Reads start tags: their names, their attributes, and the values of these as normalised text.
//
// Documents repeat themselves, so each name remembers which name came after it the last time. At a
// tag or an attribute that name is compared in one step; only when it is another one, the name's
// end is looked for and the name looked up. What is not written as usual (other white space than
// one blank, a value with references or line ends) takes the slower way, too, which is the only one
// that knows errors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include <TibXml/platform/Utf.h>

#include "Names.h"
#include <reader/CharacterScan.h>

namespace tibxml::reader {

struct Attribute {
    QualifiedName* name;
    std::string_view value; // normalised; a block may be loaded after it
    char const* at;         // where its name stands
};

// Text that grows by pieces which are moved a block at a time, without a look at their length.
class GrowingText {
public:
    std::size_t size() const noexcept { return size_; }

    void clear() noexcept { size_ = 0; }

    // Valid until more is appended; a block may be loaded after any part of it.
    char const* data() const noexcept { return bytes_.get(); }

    // A block may be loaded from everywhere in the piece. Throws std::bad_alloc.
    void append(std::string_view piece) {
        reserve(piece.size());
        for (std::size_t i = 0; i < piece.size(); i += blockSize)
            std::memcpy(bytes_.get() + size_ + i, piece.data() + i, blockSize);
        size_ += piece.size();
    }

    void append(char32_t character) {
        reserve(blockSize);
        size_ = static_cast<std::size_t>(platform::writeUtf8(character, bytes_.get() + size_) -
                                         bytes_.get());
    }

private:
    void reserve(std::size_t more) {
        if (capacity_ - size_ < more + blockSize) grow(more);
    }

    void grow(std::size_t more);

    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// What a consumer gets of a tag.
struct StartTag {
    std::vector<Attribute> const& attributes; // in their order, with the declarations
    unsigned uses;                            // the NameUse of each attribute, as bits

    bool hasOnly(NameUse use) const noexcept {
        return (uses & ~(1U << static_cast<unsigned>(use))) == 0;
    }

    bool has(NameUse use) const noexcept {
        return (uses & (1U << static_cast<unsigned>(use))) != 0;
    }
};

class TagReader {
public:
    explicit TagReader(Names& names) noexcept : names_{names} {}

    TagReader(TagReader const&) = delete;
    TagReader& operator=(TagReader const&) = delete;

    // Reads the tag at p: the place of its '>' or "/>", or null when it is not whole before `end`.
    // Throws ParseFailure and std::bad_alloc.
    char const* read(char const* p, char const* end);

    // Of the tag that was read last.
    QualifiedName& name() const noexcept { return *element_; }

    std::vector<Attribute> const& attributes() const noexcept { return attributes_; }

    StartTag tag() const noexcept { return {attributes_, uses_}; }

    // Fails when two attributes have one namespace and local name. To be asked once all prefixes
    // of the tag stand for what they mean in it.
    void checkExpandedNames() const;

private:
    // These return the place after their token, in front of end_; the first one null when the name
    // is not the expected one, the others when the token is not whole before end_.
    char const* readExpectedName(char const* p) noexcept;
    char const* readName(char const* p);
    char const* readExpectedAttribute(char const* p);
    char const* readAttribute(char const* p);
    char const* closeEmpty(char const* p);
    char const* findValue(char const* p, QualifiedName const& name) const;
    char const* normalise(char const* begin, char const* p, char quote);
    void placeValues() noexcept;

    // Whether the name is at p, and so many bytes after it are in front of end_.
    bool isAt(QualifiedName const& name, char const* p, std::ptrdiff_t more) const noexcept {
        return end_ - p >= static_cast<std::ptrdiff_t>(name.text.size()) + more &&
               Names::isAt(name, p);
    }

    char const* after(char const* quote) const noexcept {
        return quote + 1 == end_ ? nullptr : quote + 1;
    }

    // Whether a blank, the name that came here the last time, and `="` are at p.
    bool isExpectedAttribute(char const* p) const noexcept;

    void add(QualifiedName& name, char const* at, std::string_view value);

    // A value that does not stand in the text as it is.
    struct Normalised {
        std::size_t attribute;
        std::size_t begin; // in values_
        std::size_t size;
    };

    Names& names_;
    char const* end_ = nullptr;
    QualifiedName none_{};
    QualifiedName* element_ = &none_;
    QualifiedName* latest_ = &none_; // name of the tag that is being read
    std::vector<Attribute> attributes_;
    unsigned uses_ = 0;
    std::uint64_t number_ = 0; // of start tags so far
    GrowingText values_;
    std::vector<Normalised> normalised_;
};

inline void TagReader::add(QualifiedName& name, char const* at, std::string_view value) {
    attributes_.push_back({&name, value, at});
    name.lastTag = number_;
    uses_ |= 1U << static_cast<unsigned>(name.use);
    latest_ = &name;
}

[[gnu::always_inline]] inline char const* TagReader::readExpectedName(char const* p) noexcept {
    QualifiedName* const expected = element_->nextElement;
    if (expected == nullptr || !isAt(*expected, p, 1)) return nullptr;
    char const* const end = p + expected->text.size();
    if (*end != '>' && *end != ' ' && *end != '/') return nullptr;
    latest_ = element_ = expected;
    return end;
}

[[gnu::always_inline]] inline bool TagReader::isExpectedAttribute(char const* p) const noexcept {
    QualifiedName const* const name = latest_->nextAttribute;
    if (name == nullptr || *p != ' ' || !isAt(*name, p + 1, 2)) return false;
    char const* const assignment = p + 1 + name->text.size();
    return assignment[0] == '=' && assignment[1] == '"' && name->lastTag != number_;
}

[[gnu::always_inline]] inline char const* TagReader::readExpectedAttribute(char const* p) {
    QualifiedName& name = *latest_->nextAttribute;
    char const* const value = p + 1 + name.text.size() + 2;
    char const* const stop = findValueStop<'"'>(value, end_);
    if (stop + 1 >= end_) return nullptr;
    add(name, p + 1, {value, static_cast<std::size_t>(stop - value)});
    return *stop == '"' ? stop + 1 : normalise(value, stop, '"');
}

[[gnu::always_inline]] inline char const* TagReader::read(char const* p, char const* end) {
    end_ = end;
    attributes_.clear();
    if (!normalised_.empty()) normalised_.clear();
    uses_ = 0;
    ++number_;
    char const* const nameEnd = readExpectedName(p + 1);
    p = nameEnd != nullptr ? nameEnd : readName(p + 1);
    while (p != nullptr && *p != '>') {
        if (*p == '/') return closeEmpty(p);
        p = isExpectedAttribute(p) ? readExpectedAttribute(p) : readAttribute(p);
    }
    if (!normalised_.empty()) placeValues();
    return p;
}

} // namespace tibxml::reader
