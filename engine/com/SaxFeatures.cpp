#include "SaxFeatures.h"

#include <algorithm>
#include <string_view>

namespace tibxml::com {

namespace {

struct Feature {
    std::wstring_view name;
    bool isOn;
};

constexpr Feature features[] = {
    {L"exhaustive-errors", false},
    {L"http://xml.org/sax/features/external-general-entities", false},
    {L"http://xml.org/sax/features/external-parameter-entities", false},
    {L"http://xml.org/sax/features/namespace-prefixes", false},
    {L"http://xml.org/sax/features/namespaces", true},
    {L"normalize-line-breaks", true},
    {L"prohibit-dtd", true},
    {L"schema-validation", false},
};

} // namespace

std::optional<bool> saxFeature(wchar_t const* name) noexcept {
    if (name == nullptr) return {};
    auto const* const found =
        std::find_if(std::begin(features), std::end(features),
                     [=](Feature const& known) { return known.name == name; });
    return found != std::end(features) ? std::optional{found->isOn} : std::nullopt;
}

} // namespace tibxml::com
