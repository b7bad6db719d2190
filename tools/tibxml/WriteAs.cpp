#include "WriteAs.h"

#include "Failure.h"

namespace tibxml::tool {

void writeAs(ValueType const& type, WXmlValueAccessor& value, std::string const& text,
             std::string const& place) {
    try {
        if (type.write(value, text)) return;
    } catch (WXmlValueTypeNotFoundException const&) {
        throw failure(ExitStatus::failed, "there can be no value at " + place);
    }
    throw failure(ExitStatus::failed, "'" + text + "' is not " + type.description);
}

} // namespace tibxml::tool
