#pragma once

#include <string>
#include <vector>

#include <TibXml/WXmlCompositeNode.h>
#include <TibXml/WXmlDoc.h>

namespace tibxml::tool {

/// A document with defaults, and one with what a user changed, which need not be there yet: it is
/// an empty root element then, of the name that the defaults' has.
class Layers {
public:
    /// Paths in both may use the prefixes that were declared. Throws `Failure` when a file cannot
    /// be read or is not well-formed, and for a bad declaration.
    Layers(std::string const& defaultsFile, std::string userFile,
           std::vector<std::string> const& namespaces);

    WXmlDoc& defaults() noexcept { return defaults_; }

    WXmlDoc& user() noexcept { return user_; }

    /// Writes the user's document to its file. Throws `Failure`.
    void saveUser() const;

private:
    std::string userFile_;
    WXmlDoc defaults_;
    WXmlDoc user_;
};

} // namespace tibxml::tool
