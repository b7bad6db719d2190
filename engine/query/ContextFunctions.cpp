#include "ContextFunctions.h"

#include <algorithm>
#include <utility>

#include "AttributeLookup.h"

namespace tibxml::query {

namespace {

char lowered(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

bool isLanguageOrDialect(std::string_view actual, std::string_view wanted) noexcept {
    if (actual.size() < wanted.size()) return false;
    return equalIgnoringCase(actual.substr(0, wanted.size()), wanted) &&
           (actual.size() == wanted.size() || actual[wanted.size()] == '-');
}

} // namespace

Lang::Lang(std::uint32_t xmlLang, ExpressionPtr language) noexcept
    : xmlLang_{xmlLang},
      language_{std::move(language)} {
    dependLike(*language_);
}

bool Lang::boolean(Context const& context) const {
    tree::Name const* const name = context.evaluation.names[xmlLang_];
    if (name == nullptr) return false;
    std::string storage;
    std::string_view const wanted = language_->string(context, storage);
    for (tree::Node const* node = context.node; node != nullptr; node = node->parent) {
        if (tree::Node const* attribute = attributeNamed(node, name))
            return isLanguageOrDialect(attribute->text(), wanted);
    }
    return false;
}

} // namespace tibxml::query
