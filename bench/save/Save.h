// Saving to a wide string.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "../Fingerprint.h"
#include "../Operation.h"

namespace bench {

ContenderPtr tibxmlSave(std::string const& document);
ContenderPtr pugixmlSave(std::string const& document);
ContenderPtr libxml2Save(std::string const& document);

// Everything from the root element on but white space: declarations and layouts differ.
inline std::uint64_t contentOf(std::wstring_view text) {
    Fingerprint print;
    print.addVisible(text.substr(text.find(L"<settings")));
    return print.value();
}

std::vector<Operation> saveOperations();

} // namespace bench
