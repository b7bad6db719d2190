#include <tree/NamespaceScope.h>

#include <algorithm>
#include <utility>

namespace tibxml::tree {

std::string_view NamespaceScope::uriOf(std::string_view prefix) const noexcept {
    auto const found = std::find_if(bindings_.rbegin(), bindings_.rend(),
                                    [=](Binding const& b) { return b.prefix == prefix; });
    return found != bindings_.rend() ? found->uri : std::string_view{};
}

std::string_view NamespaceScope::prefixFor(std::string_view uri) const noexcept {
    auto const found = std::find_if(bindings_.rbegin(), bindings_.rend(), [&](Binding const& b) {
        return b.uri == uri && !b.prefix.empty() && uriOf(b.prefix) == uri;
    });
    return found != bindings_.rend() ? found->prefix : std::string_view{};
}

std::string_view NamespaceScope::unusedPrefix() {
    for (std::size_t number = 0;; ++number) {
        if (number == madePrefixes_.size()) {
            std::string made = "ns" + std::to_string(number + 1);
            madePrefixes_.push_back(std::make_unique<std::string>(std::move(made)));
        }
        if (uriOf(*madePrefixes_[number]).empty()) return *madePrefixes_[number];
    }
}

void NamespaceScope::declare(Binding binding) {
    bindings_.push_back(binding);
    if (binding.prefix.empty()) hasDefault_ = !binding.uri.empty();
    suiting_ = nullptr;
}

void NamespaceScope::cutBack(std::size_t size) noexcept {
    if (size == bindings_.size()) return;
    bindings_.erase(bindings_.begin() + static_cast<std::ptrdiff_t>(size), bindings_.end());
    hasDefault_ = !uriOf({}).empty();
    suiting_ = nullptr;
}

bool NamespaceScope::declaredSince(std::size_t size, std::string_view prefix) const noexcept {
    return std::any_of(bindings_.begin() + static_cast<std::ptrdiff_t>(size), bindings_.end(),
                       [=](Binding const& b) { return b.prefix == prefix; });
}

} // namespace tibxml::tree
