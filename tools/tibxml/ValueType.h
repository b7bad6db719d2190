#pragma once

#include <optional>
#include <span>
#include <string>

#include <TibXml/WXmlValueAccessor.h>

#include "Failure.h"

namespace tibxml::tool {

/// A type that values are read and written as.
struct ValueType {
    char const* name;

    /// How the type is called in a sentence: "an integer".
    char const* description;

    /// The value in the form in which it is printed; nothing when it does not read as the type.
    std::optional<std::string> (*read)(WXmlValueAccessor const& value);

    /// Writes a value in that form; false when the text is not of the type.
    bool (*write)(WXmlValueAccessor& value, std::string const& text);

    /// Printed as it is, without a line end after it.
    bool isBinary = false;
};

/// The types that there are; the first is the one that is meant when none is named.
std::span<ValueType const> valueTypes() noexcept;

/// The type of a name, which must be one of these.
ValueType const& valueType(std::string const& name) noexcept;

/// Writes a value of a type. Throws `Failure` when the text is not of the type, and when there can
/// be no value; `place` is what to call it.
void writeAs(ValueType const& type, WXmlValueAccessor& value, std::string const& text,
             std::string const& place);

/// Why a value does not read as a type: there is none, or it is something else. `place` is what to
/// call it.
Failure absentValue(std::string const& file, std::string const& place,
                    WXmlValueAccessor const& value, ValueType const& type);

} // namespace tibxml::tool
