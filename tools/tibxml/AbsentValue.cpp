#include "AbsentValue.h"

#include "Text.h"

namespace tibxml::tool {

Failure absentValue(std::string const& file, std::string const& place,
                    WXmlValueAccessor const& value, ValueType const& type) {
    if (!value.Exists()) return failure(ExitStatus::notFound, file + ": nothing at " + place);
    return failure(ExitStatus::notFound, file + ": " + place + " is not " + type.description +
                                             ": '" + excerpt(value.GetString(L"")) + "'");
}

} // namespace tibxml::tool
