#pragma once

// Transforms files by the library and by xsltproc, for comparing.

#include <TibXml/TibXml.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace transforming {

/// A folder of its own that goes with the object.
class Folder {
public:
    Folder();
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder();

    std::string path(std::string const& name) const { return path_ + "/" + name; }

    /// Writes a file and returns its path.
    std::string write(std::string const& name, std::string const& content) const;

private:
    std::string path_;
};

/// A stylesheet with this content, in which prefix "x" is not a namespace of XSLT but "urn:x".
std::string stylesheet(std::string const& content);

/// A document from a file with all its white space; it must load.
WXmlDoc loadFile(std::string const& path);

/// The canonical form of a document; "not well-formed" when it is none.
std::string canonical(std::string const& xml);

/// The canonical form of the result of a transformation; "failed" when it fails.
std::string ours(std::string const& stylesheetPath, std::string const& documentPath);
std::string xsltproc(std::string const& stylesheetPath, std::string const& documentPath);

/// What a program printed, and how it ended.
struct Run {
    std::string output;
    int status;
};

Run run(std::string const& command);

} // namespace transforming
