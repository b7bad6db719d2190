// What stylesheets may open: regular files of this machine, by absolute path.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <libxml/xmlIO.h>

namespace tibxml::transform {

// What stands for the file of a URL or path; null when it cannot be opened.
xmlParserInputBuffer* openLocalFile(char const* url, xmlCharEncoding encoding) noexcept;

// The URL of an absolute path, and the absolute path that a URL or path means; nothing for any
// other. Throw std::bad_alloc.
std::string urlOf(std::string_view path);
std::optional<std::string> localPath(std::string_view url);

} // namespace tibxml::transform
