// What libxml2 may open while this lives: regular files of this machine, by absolute path.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <libxml/xmlIO.h>

namespace tibxml::transform {

// For this thread alone, whatever the process has set up for others.
class LocalFiles {
public:
    LocalFiles() noexcept;
    LocalFiles(LocalFiles const&) = delete;
    LocalFiles& operator=(LocalFiles const&) = delete;
    ~LocalFiles();

private:
    xmlParserInputBufferCreateFilenameFunc old_;
};

// The URL of an absolute path, and the absolute path that a URL or path means; nothing for any
// other. Throw std::bad_alloc.
std::string urlOf(std::string_view path);
std::optional<std::string> localPath(std::string_view url);

} // namespace tibxml::transform
