#include "NamespaceScopes.h"

#include "Failure.h"

namespace tibxml::reader {

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
