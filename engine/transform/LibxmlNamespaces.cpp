#include "LibxmlDocument.h"

#include <string>

#include <libxml/LibxmlTypes.h>
#include <tree/Name.h>
#include <tree/Namespaces.h>

namespace tibxml::transform {

using libxml::allocated;
using libxml::bytes;
using libxml::view;

namespace {

xmlChar* copied(std::string_view text) {
    return allocated(xmlStrndup(bytes(text), static_cast<int>(text.size())));
}

} // namespace

void LibxmlNamespaces::open(xmlNode& copy, tree::Node const* element) {
    levels_.push_back(visible_.size());
    for (tree::Node const* a = element->firstAttribute(); a != nullptr; a = a->next) {
        if (a->name->declaresNamespace) declare(copy, tree::declaredPrefix(a), a->text());
    }
}

void LibxmlNamespaces::close() noexcept {
    visible_.resize(levels_.back());
    levels_.pop_back();
}

xmlNs* LibxmlNamespaces::find(std::string_view prefix) const noexcept {
    for (auto ns = visible_.rbegin(); ns != visible_.rend(); ++ns) {
        if (view((*ns)->prefix) == prefix) return *ns;
    }
    return nullptr;
}

xmlNs* LibxmlNamespaces::find(std::string_view prefix, std::string_view uri) const noexcept {
    xmlNs* const ns = find(prefix);
    return ns != nullptr && view(ns->href) == uri ? ns : nullptr;
}

// Like xmlNewNs, which would look for an equal declaration first and take a wide detour about
// "xml".
xmlNs* LibxmlNamespaces::declare(xmlNode& copy, std::string_view prefix, std::string_view uri) {
    visible_.reserve(visible_.size() + 1);
    xmlNs* const ns = allocated(xmlNewNs(nullptr, nullptr, nullptr));
    if (blocks_ != nullptr) blocks_->own(ns);
    xmlNs** last = &copy.nsDef;
    while (*last != nullptr)
        last = &(*last)->next;
    *last = ns;
    visible_.push_back(ns);
    ns->href = copied(uri);
    if (!prefix.empty()) ns->prefix = copied(prefix);
    return ns;
}

// Under another prefix when this one means something else on the very element.
xmlNs* LibxmlNamespaces::declareUnused(xmlNode& copy, std::string_view prefix,
                                       std::string_view uri) {
    xmlNs const* const ns = find(prefix);
    bool isTaken = false;
    for (xmlNs const* own = copy.nsDef; own != nullptr; own = own->next)
        isTaken = isTaken || own == ns;
    if (ns == nullptr || !isTaken) return declare(copy, prefix, uri);
    for (int number = 0;; ++number) {
        std::string const other = "ns" + std::to_string(number);
        if (xmlNs* const same = find(other, uri)) return same;
        if (find(other) == nullptr) return declare(copy, other, uri);
    }
}

xmlNs* LibxmlNamespaces::ofXml(xmlNode& copy) {
    return allocated(xmlSearchNs(&document_, &copy, bytes("xml")));
}

xmlNs* LibxmlNamespaces::ofElement(xmlNode& copy, tree::Name const& name) {
    if (name.uri.empty()) return nullptr;
    if (name.uri == tree::xmlNamespace) return ofXml(copy);
    if (xmlNs* const ns = find(name.prefix, name.uri)) return ns;
    return declareUnused(copy, name.prefix, name.uri);
}

xmlNs* LibxmlNamespaces::ofAttribute(xmlNode& copy, tree::Name const& name) {
    return ofElement(copy, name);
}

} // namespace tibxml::transform
