// How schemas reach the file system.
#pragma once

#include <validation/Schema.h>

namespace tibxml::com {

class SchemaFiles final : public validation::Files {
public:
    // By the same rules as loading a document does.
    std::string find(std::string const& path) override;
    bool open(std::string const& found,
              std::function<void(reader::ByteSource&)> const& use) override;
};

} // namespace tibxml::com
