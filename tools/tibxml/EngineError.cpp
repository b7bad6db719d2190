#include "EngineError.h"

#include "Text.h"

namespace tibxml::tool {

std::string describe(_com_error const& error) {
    _bstr_t const description = error.Description();
    if (description.length() > 0) return toUtf8({description, description.length()});
    return toUtf8(error.ErrorMessage());
}

} // namespace tibxml::tool
