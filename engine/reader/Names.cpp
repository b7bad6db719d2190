#include "Names.h"

#include <algorithm>
#include <new>

#include <TibXml/platform/Utf.h>
#include <reader/CharacterScan.h>
#include <tree/Text.h>

#include "Messages.h"

namespace tibxml::reader {

namespace {

// What no prefix stands for, so that a name that was never resolved is not taken for one that was.
Uri const unresolved;

void checkPart(std::string_view name, std::string_view part) {
    char const* const end = part.data() + part.size();
    char const* const fault = findNameFault(part.data(), end);
    if (fault == end && !part.empty()) return;
    if (fault == end || *fault == ':') fail(Message::colonInName, fault, {name});
    failAtCharacter(fault, end, Message::characterNotInName);
}

} // namespace

char const* findNameFault(char const* p, char const* end) noexcept {
    bool isFirst = true;
    while (p != end) {
        auto const [code, length] =
            platform::firstUtf8Character({p, static_cast<std::size_t>(end - p)});
        auto const c = static_cast<wchar_t>(code);
        if (length == 0 || !(isFirst ? tree::isNameStart(c) : tree::isNamePart(c))) break;
        isFirst = false;
        p += length;
    }
    return p;
}

Names::Names() : slots_(firstSlots) {}

QualifiedName& Names::add(QualifiedName::Key key, char const* p, std::size_t length) {
    QualifiedName name{};
    name.key = key;
    name.text = {p, length};
    name.elementUri = name.attributeUri = &unresolved;
    classify(name);
    auto* const text = static_cast<char*>(arena_.newPermanent(length, 1));
    std::memcpy(text, p, length);
    name.text = {text, length};
    if (++count_ > slots_.size() / 2) grow();
    auto* const stored =
        new (arena_.newPermanent(sizeof name, alignof(QualifiedName))) QualifiedName{name};
    std::size_t slot = hashOf(key, text, length);
    while (slots_[slot & mask_] != nullptr)
        ++slot;
    slots_[slot & mask_] = stored;
    return *stored;
}

void Names::classify(QualifiedName& name) {
    std::size_t const colon = name.text.find(':');
    if (colon != std::string_view::npos) {
        name.prefixLength = static_cast<std::uint32_t>(colon);
        return classifyPrefixed(name);
    }
    checkPart(name.text, name.text);
    name.use = NameUse::fresh;
    name.elementPrefix = &defaultPrefix_;
    name.attributePrefix = &noPrefix_;
    if (name.text != "xmlns") return;
    name.use = NameUse::declaresDefault;
    name.declared = &defaultPrefix_;
    name.attributePrefix = &xmlnsPrefix_;
}

void Names::classifyPrefixed(QualifiedName& name) {
    std::string_view const local = name.text.substr(name.prefixLength + 1);
    checkPart(name.text, name.text.substr(0, name.prefixLength));
    checkPart(name.text, local);
    Prefix& own = prefix(name.prefix());
    name.elementPrefix = name.attributePrefix = &own;
    name.use = name.text == "xml:space" ? NameUse::space : NameUse::prefixed;
    if (&own != &xmlnsPrefix_) return;
    name.use = NameUse::declaresPrefix;
    name.declared = &prefix(local);
}

Prefix& Names::prefix(std::string_view text) {
    if (text == xmlPrefix_.text) return xmlPrefix_;
    if (text == xmlnsPrefix_.text) return xmlnsPrefix_;
    return prefixes_.find(text);
}

void Names::grow() {
    std::vector<QualifiedName*> larger(slots_.size() * 2);
    mask_ = larger.size() - 1;
    for (QualifiedName* const name : slots_) {
        if (name == nullptr) continue;
        std::size_t slot = hashOf(name->key, name->text.data(), name->text.size());
        while (larger[slot & mask_] != nullptr)
            ++slot;
        larger[slot & mask_] = name;
    }
    slots_ = std::move(larger);
}

namespace {

// Whether the declaration says of the prefix xml what holds anyway.
bool isOfXml(QualifiedName const& name, std::string_view value, char const* at) {
    if (name.declared->text != "xml") return false;
    if (value != tree::xmlNamespace) fail(Message::prefixXmlRebound, at);
    return true;
}

void check(QualifiedName const& name, std::string_view value, char const* at) {
    if (name.declared->text == "xmlns") fail(Message::prefixXmlnsDeclared, at);
    if (value == tree::xmlNamespace) fail(Message::namespaceOfXml, at, {name.text});
    if (value == tree::xmlnsNamespace) fail(Message::namespaceOfXmlns, at, {name.text});
    if (value.empty() && name.use == NameUse::declaresPrefix)
        fail(Message::emptyPrefixDeclaration, at, {name.text});
}

} // namespace

void NamespaceScopes::declare(QualifiedName const& name, std::string_view value, char const* at,
                              std::size_t depth) {
    if (isOfXml(name, value, at)) return;
    check(name, value, at);
    Prefix& prefix = *name.declared;
    bindings_.push_back({&prefix, prefix.uri, depth});
    prefix.uri = value.empty() ? &names_.none() : &names_.uri(value);
}

void NamespaceScopes::endLast() noexcept {
    bindings_.back().prefix->uri = bindings_.back().before;
    bindings_.pop_back();
}

} // namespace tibxml::reader
