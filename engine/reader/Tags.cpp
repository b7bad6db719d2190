#include "Tags.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include <TibXml/platform/Utf.h>

#include "Messages.h"
#include "References.h"
#include <reader/CharacterScan.h>

namespace tibxml::reader {

namespace {

std::string_view view(char const* begin, char const* end) noexcept {
    return {begin, static_cast<std::size_t>(end - begin)};
}

bool isQuote(char c) noexcept {
    return c == '"' || c == '\'';
}

} // namespace

void GrowingText::grow(std::size_t more) {
    std::size_t const capacity = std::max(2 * capacity_, size_ + more + 8 * blockSize);
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    if (size_ != 0) std::memcpy(larger.get(), bytes_.get(), size_);
    bytes_ = std::move(larger);
    capacity_ = capacity;
}

// The slash must be followed by '>'.
char const* TagReader::closeEmpty(char const* p) {
    if (p + 1 == end_) return nullptr;
    if (p[1] != '>') failAtCharacter(p, end_, Message::unexpectedInTag, {element_->text});
    placeValues();
    return p;
}

char const* TagReader::readName(char const* p) {
    char const* const nameEnd = findNameEnd(p, end_);
    if (nameEnd == end_) return nullptr;
    if (nameEnd == p) failAtCharacter(nameEnd, end_, Message::nameExpected);
    QualifiedName& name = names_.find(p, static_cast<std::size_t>(nameEnd - p));
    element_->nextElement = &name;
    latest_ = element_ = &name;
    return nameEnd;
}

// From after the part before; only white space may be left.
char const* TagReader::readAttribute(char const* p) {
    char const* const begin = findBlankEnd(p, end_);
    if (begin == end_) return nullptr;
    if (*begin == '>' || *begin == '/') return begin;
    char const* const nameEnd = findNameEnd(begin, end_);
    if (nameEnd == end_) return nullptr;
    if (nameEnd == begin) failAtCharacter(begin, end_, Message::unexpectedInTag, {element_->text});
    if (begin == p) fail(Message::noSpaceBeforeAttribute, p, {element_->text});
    QualifiedName& name = names_.find(begin, static_cast<std::size_t>(nameEnd - begin));
    if (name.lastTag == number_) fail(Message::attributeTwice, begin, {name.text, element_->text});
    char const* const value = findValue(nameEnd, name);
    if (value == nullptr) return nullptr;
    latest_->nextAttribute = &name;
    add(name, begin, {});
    char const* const stop = findValueStop(value + 1, end_, *value);
    if (stop == end_) return nullptr;
    if (*stop != *value) return normalise(value + 1, stop, *value);
    attributes_.back().value = view(value + 1, stop);
    return after(stop);
}

// The quote in front of the value.
char const* TagReader::findValue(char const* p, QualifiedName const& name) const {
    p = findBlankEnd(p, end_);
    if (p == end_) return nullptr;
    if (*p != '=') failAtCharacter(p, end_, Message::attributeWithoutValue, {name.text});
    p = findBlankEnd(p + 1, end_);
    if (p == end_) return nullptr;
    if (!isQuote(*p)) fail(Message::valueWithoutQuotes, p, {name.text});
    return p;
}

// The value of the latest attribute, whose first character that is not as it seems is at p.
char const* TagReader::normalise(char const* begin, char const* p, char quote) {
    if (normalised_.empty()) values_.clear();
    std::size_t const start = values_.size();
    while (p < end_ && *p != quote) {
        values_.append(view(begin, p));
        char32_t character = ' ';
        char const* next = p + 1;
        if (*p == '&') {
            next = readReference(p, end_, character);
        } else if (*p == '\r') {
            if (next == end_) return nullptr;
            if (*next == '\n') ++next;
        } else if (*p == '<') {
            fail(Message::lessThanInValue, p, {latest_->text});
        } else if (*p != '\t' && *p != '\n') {
            next = stopAt(p, end_);
        }
        if (next == nullptr) return nullptr;
        values_.append(character);
        begin = next;
        p = findValueStop(begin, end_, quote);
    }
    if (p >= end_) return nullptr;
    values_.append(view(begin, p));
    normalised_.push_back({attributes_.size() - 1, start, values_.size() - start});
    return after(p);
}

// The buffer has grown while values were added; now it stays.
void TagReader::placeValues() noexcept {
    for (Normalised const& part : normalised_)
        attributes_[part.attribute].value = {values_.data() + part.begin, part.size};
}

// Two attributes of one namespace and local name have different prefixes, since no name was there
// twice. So nothing is to be looked for as long as each namespace is used by one prefix only.
void TagReader::checkExpandedNames() const {
    bool areSuspect = false;
    for (Attribute const& attribute : attributes_) {
        Prefix const& prefix = *attribute.name->attributePrefix;
        if (attribute.name->prefixLength == 0) continue;
        areSuspect |= prefix.uri->lastTag == number_ && prefix.uri->lastPrefix != &prefix;
        prefix.uri->lastTag = number_;
        prefix.uri->lastPrefix = &prefix;
    }
    if (!areSuspect) return;
    std::map<std::pair<Uri const*, std::string_view>, Attribute const*> found;
    for (Attribute const& attribute : attributes_) {
        QualifiedName const& name = *attribute.name;
        if (name.prefixLength == 0) continue;
        auto const [before, isNew] =
            found.try_emplace({name.attributePrefix->uri, name.local()}, &attribute);
        if (!isNew) {
            fail(Message::attributesOfOneName, attribute.at,
                 {before->second->name->text, name.text});
        }
    }
}

} // namespace tibxml::reader
