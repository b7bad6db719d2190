// Looks into a file by streaming and stops as soon as it knows enough: the titles of the windows,
// up to the first one that is hidden. The rest of the file is not even read.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <TibXml/TibXml.h>

namespace {

std::wstring_view view(WXmlSaxText const& text) {
    return {text.text, static_cast<std::size_t>(text.length)};
}

bool has(std::vector<WXmlSaxAttribute> const& attributes, std::wstring_view name,
         std::wstring_view value) {
    for (WXmlSaxAttribute const& attribute : attributes) {
        if (std::wstring_view(attribute.name, static_cast<std::size_t>(attribute.nameLength)) ==
                name &&
            std::wstring_view(attribute.value, static_cast<std::size_t>(attribute.valueLength)) ==
                value)
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/settings.xml";

    bool inTitle = false;
    bool foundHidden = false;
    std::wstring title;
    auto start = [&](WXmlSaxText const* name, std::vector<WXmlSaxAttribute> const* attributes) {
        inTitle = view(*name) == L"title";
        foundHidden = view(*name) == L"window" && has(*attributes, L"visible", L"false");
        return !foundHidden; // false stops the parse
    };
    auto characters = [&](WXmlSaxText const* piece) {
        if (inTitle) title += view(*piece); // a text may come in several pieces
        return true;
    };
    auto end = [&](WXmlSaxText const* name) {
        if (view(*name) == L"title") {
            std::printf("a title of %zu characters\n", title.size());
            title.clear();
            inTitle = false;
        }
        return true;
    };

    WXmlSax sax;
    sax.OnStartElement.Bind(start);
    sax.OnCharacters.Bind(characters);
    sax.OnEndElement.Bind(end);
    bool const wholeFile = sax.ParseFile(file.c_str());
    if (!wholeFile && !foundHidden) return 1; // missing or malformed
    std::printf("%s\n", foundHidden ? "stopped at a hidden window" : "no window is hidden");
    return 0;
}
