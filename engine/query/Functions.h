// The function library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Expression.h"

namespace tibxml::query {

using Arguments = std::vector<ExpressionPtr>;

// What a function gives.
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

// Null for an unknown name.
Function const* findFunction(std::string_view name) noexcept;

// The call of a function with arguments that fit it. `xmlLang` is the resolved number of the name
// xml:lang, which only lang() looks at.
ExpressionPtr makeCall(Function const& function, Arguments arguments, std::uint32_t xmlLang);

// The bodies, by what they give.
namespace function {

bool toBoolean(Context const&, Arguments const&);
bool negate(Context const&, Arguments const&);
bool alwaysTrue(Context const&, Arguments const&);
bool alwaysFalse(Context const&, Arguments const&);
bool startsWith(Context const&, Arguments const&);
bool contains(Context const&, Arguments const&);

double toNumber(Context const&, Arguments const&);
double count(Context const&, Arguments const&);
double sum(Context const&, Arguments const&);
double floor(Context const&, Arguments const&);
double ceiling(Context const&, Arguments const&);
double round(Context const&, Arguments const&);
double stringLength(Context const&, Arguments const&);

std::string_view toString(Context const&, Arguments const&, std::string&);
std::string_view concat(Context const&, Arguments const&, std::string&);
std::string_view substringBefore(Context const&, Arguments const&, std::string&);
std::string_view substringAfter(Context const&, Arguments const&, std::string&);
std::string_view substring(Context const&, Arguments const&, std::string&);
std::string_view normalizeSpace(Context const&, Arguments const&, std::string&);
std::string_view translate(Context const&, Arguments const&, std::string&);
std::string_view localName(Context const&, Arguments const&, std::string&);
std::string_view namespaceUri(Context const&, Arguments const&, std::string&);
std::string_view qualifiedName(Context const&, Arguments const&, std::string&);

} // namespace function

} // namespace tibxml::query
