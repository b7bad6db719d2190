#include <query/Namespaces.h>

#include <TibXml/platform/Utf.h>
#include <query/Query.h>
#include <tree/Name.h>
#include <tree/Text.h>

#include "TextHash.h"

namespace tibxml::query {

namespace {

using Binding = std::pair<std::string, std::string>;

std::string const xmlUri{tree::xmlNamespace};

// Reads one declaration after the other.
class Declarations {
public:
    explicit Declarations(std::wstring_view text) noexcept : text_{text} {}

    // Goes to the next declaration; false when there is none. Two declarations need white space
    // between them.
    bool more() {
        std::size_t const before = at_;
        skipBlanks();
        if (at_ == text_.size()) return false;
        if (at_ == before && at_ != 0) fail("expected white space");
        return true;
    }

    // The prefix is empty for a default declaration.
    Binding read() {
        start_ = at_;
        std::string prefix = readPrefix();
        skipBlanks();
        expect(L'=');
        skipBlanks();
        return {std::move(prefix), readUri()};
    }

    // Of the declaration that was read last.
    [[noreturn]] void failAtStart(std::string const& fault) const {
        throw QueryError{start_ + 1, fault};
    }

private:
    [[noreturn]] void fail(std::string const& fault) const { throw QueryError{at_ + 1, fault}; }

    wchar_t peek() const noexcept { return at_ < text_.size() ? text_[at_] : L'\0'; }

    void skipBlanks() noexcept {
        while (at_ < text_.size() && tree::isBlank(text_[at_]))
            ++at_;
    }

    void expect(wchar_t character) {
        if (peek() != character)
            fail(std::string{"expected '"} + static_cast<char>(character) + '\'');
        ++at_;
    }

    std::string readPrefix() {
        if (text_.substr(at_, 5) != L"xmlns") fail("expected 'xmlns'");
        at_ += 5;
        if (peek() != L':') return {};
        ++at_;
        if (!tree::isNameStart(peek())) fail("expected a prefix");
        std::size_t const first = at_;
        while (tree::isNamePart(peek()))
            ++at_;
        return narrow(text_.substr(first, at_ - first));
    }

    std::string readUri() {
        wchar_t const quote = peek();
        if (quote != L'\'' && quote != L'"') fail("expected a quoted namespace");
        std::size_t const first = at_ + 1;
        std::size_t const last = text_.find(quote, first);
        if (last == std::wstring_view::npos) fail("the quoted namespace is not closed");
        std::string uri = narrow(text_.substr(first, last - first));
        at_ = last + 1;
        return uri;
    }

    std::string narrow(std::wstring_view wide) const {
        std::string text;
        if (!platform::appendUtf8(text, wide)) fail("not a character");
        return text;
    }

    std::wstring_view text_;
    std::size_t at_ = 0;
    std::size_t start_ = 0;
};

// Null when a prefix may be bound to a namespace, else what is wrong.
char const* faultOf(Binding const& binding) noexcept {
    auto const& [prefix, uri] = binding;
    if (prefix == "xmlns") return "the prefix 'xmlns' cannot be declared";
    if (uri == tree::xmlnsNamespace) return "the namespace of 'xmlns' cannot be declared";
    if ((prefix == "xml") != (uri == tree::xmlNamespace)) return "'xml' keeps its own namespace";
    if (uri.empty() && !prefix.empty()) return "a prefix needs a namespace";
    return nullptr;
}

bool isDeclared(std::vector<Binding> const& bindings, std::string const& prefix) noexcept {
    for (Binding const& binding : bindings)
        if (binding.first == prefix) return true;
    return false;
}

} // namespace

Namespaces Namespaces::parse(std::wstring_view declarations) {
    Namespaces result;
    Declarations source{declarations};
    while (source.more()) {
        Binding binding = source.read();
        if (char const* fault = faultOf(binding)) source.failAtStart(fault);
        if (isDeclared(result.bindings_, binding.first)) source.failAtStart("declared twice");
        result.bindings_.push_back(std::move(binding));
    }
    result.text_ = declarations;
    result.hash_ = hashText(declarations);
    return result;
}

std::string const* Namespaces::uriOf(std::string_view prefix) const noexcept {
    if (prefix == "xml") return &xmlUri;
    if (prefix.empty()) return nullptr; // a default declaration has no effect
    for (Binding const& binding : bindings_)
        if (binding.first == prefix) return &binding.second;
    return nullptr;
}

} // namespace tibxml::query
