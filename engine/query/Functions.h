// The function library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Expression.h"

namespace tibxml::query {

using Arguments = std::vector<ExpressionPtr>;

/// What a function gives.
using BooleanBody = bool (*)(Context const&, Arguments const&);
using NumberBody = double (*)(Context const&, Arguments const&);
using StringBody = std::string_view (*)(Context const&, Arguments const&, std::string& storage);

struct Function {
    enum class Special : std::uint8_t { none, position, last, id, lang };

    std::string_view name;
    std::size_t fewest; // arguments
    std::size_t most;
    BooleanBody boolean = nullptr;
    NumberBody number = nullptr;
    StringBody string = nullptr;
    bool takesNodes = false;     // the first argument must be nodes
    bool defaultsToNode = false; // the context node stands in for a missing argument
    Special special = Special::none;
};

inline constexpr std::size_t anyNumber = static_cast<std::size_t>(-1);

/// Null for an unknown name.
Function const* findFunction(std::string_view name) noexcept;

/// The call of a function with arguments that fit it. `xmlLang` is the resolved number of the name
/// xml:lang, which only lang() looks at.
ExpressionPtr makeCall(Function const& function, Arguments arguments, std::uint32_t xmlLang);

} // namespace tibxml::query
