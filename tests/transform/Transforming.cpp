#include "Transforming.h"

#include <TibXml/tibutils/DataEncoding.h>

#include <libxml/c14n.h>
#include <libxml/parser.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace transforming {

Folder::Folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "transformXXXXXX").native();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error{"no temporary folder"};
    path_ = pattern;
}

Folder::~Folder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::string Folder::write(std::string const& name, std::string const& content) const {
    std::filesystem::path const file = path(name);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream{file, std::ios::binary} << content;
    return file.native();
}

std::string stylesheet(std::string const& content) {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
           "xmlns:x='urn:x' exclude-result-prefixes='x'>" +
           content + "</xsl:stylesheet>";
}

WXmlDoc loadFile(std::string const& path) {
    WXmlDoc document{true};
    EXPECT_TRUE(document.Load(TibUtils::DataEncoding::Utf8Decode(path))) << path;
    return document;
}

std::string canonical(std::string const& xml) {
    constexpr int options = XML_PARSE_NOENT | XML_PARSE_HUGE | XML_PARSE_NOERROR;
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> const document{
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "result", nullptr, options),
        xmlFreeDoc};
    if (!document) return "not well-formed: " + xml;
    xmlChar* text = nullptr;
    int const size = xmlC14NDocDumpMemory(document.get(), nullptr, XML_C14N_1_0, nullptr, 1, &text);
    if (size < 0) return "no canonical form";
    std::string result{reinterpret_cast<char const*>(text), static_cast<std::size_t>(size)};
    xmlFree(text);
    return result;
}

std::string ours(std::string const& stylesheetPath, std::string const& documentPath) {
    WXmlDoc sheet = loadFile(stylesheetPath);
    WXmlDoc document = loadFile(documentPath);
    if (!document.ApplyXSLT(sheet)) return "failed";
    return canonical(TibUtils::DataEncoding::Utf8Encode(document.SaveToString().view()));
}

Run run(std::string const& command) {
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return {"", -1};
    std::string output;
    std::array<char, 4096> buffer{};
    while (std::size_t const count = std::fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), count);
    int const status = ::pclose(pipe);
    return {output, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

std::string xsltproc(std::string const& stylesheetPath, std::string const& documentPath) {
    Run const done =
        run("xsltproc --nonet '" + stylesheetPath + "' '" + documentPath + "' 2> /dev/null");
    return done.status == 0 ? canonical(done.output) : "failed";
}

} // namespace transforming
