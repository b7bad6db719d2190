#include "Memory.h"

#include <malloc.h>

#include "../Documents.h"
#include "../Settings.h"

namespace bench {

namespace {

double heapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

// What is taken while the document that `load` returns exists.
template <class Load>
double heapOf(Load load) {
    double const before = heapInUse();
    auto const document = load();
    return heapInUse() - before;
}

double nodeCount(std::string const& text) {
    WXmlNode const root = tibxmlDocument(text).GetRootNode();
    double count = 0;
    for (wchar_t const* path :
         {L"//*", L"//@*", L"//text()", L"//comment()", L"//processing-instruction()"})
        count += static_cast<double>(root.GetNodes(path).size());
    return count;
}

} // namespace

Row memoryPerNode() {
    std::string const& text = largeSettings();
    double const nodes = nodeCount(text);
    return {"heap bytes per node, 5 MB loaded",
            Unit::bytes,
            {heapOf([&] { return tibxmlDocument(text); }) / nodes,
             heapOf([&] { return pugixmlDocument(text); }) / nodes,
             heapOf([&] { return libxml2Document(text, libxml2Options()); }) / nodes},
            {0, 1 / 0.6}};
}

} // namespace bench
