#include "Memory.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "../Documents.h"
#include "../Settings.h"
#include "../load/Load.h"

namespace bench {

double anonymousMemory() {
    std::ifstream pages{"/proc/self/smaps_rollup"};
    for (std::string line; std::getline(pages, line);) {
        constexpr std::string_view field = "Anonymous:";
        if (line.starts_with(field)) return std::stod(line.substr(field.size())) * 1024;
    }
    throw std::runtime_error{"the system does not tell how much memory is in use"};
}

namespace {

// What is taken while the document that `load` returns exists.
template <class Load>
double memoryOf(Load load) {
    returnFreeMemory();
    double const before = anonymousMemory();
    auto const document = load();
    returnFreeMemory();
    return anonymousMemory() - before;
}

} // namespace

double nodeCount(std::string const& text) {
    WXmlNode const root = tibxmlDocument(text).GetRootNode();
    double count = 0;
    for (wchar_t const* path :
         {L"//*", L"//@*", L"//text()", L"//comment()", L"//processing-instruction()"})
        count += static_cast<double>(root.GetNodes(path).size());
    return count;
}

Row memoryPerNode() {
    std::string const& text = largeSettings();
    double const nodes = nodeCount(text);
    return {std::string{memoryRow},
            Unit::bytes,
            {memoryOf([&] { return tibxmlDocument(text); }) / nodes,
             memoryOf([&] { return pugixmlDocument(text); }) / nodes,
             memoryOf([&] { return libxml2Document(text, libxml2Options()); }) / nodes},
            {0, 1 / 0.6}};
}

} // namespace bench
