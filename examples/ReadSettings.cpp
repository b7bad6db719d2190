// Reads typed settings by path from a file, each with what to do when it is missing.
#include <cstdio>
#include <string>

#include <TibXml/TibXml.h>

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/settings.xml";
    WXmlDoc const settings = WXmlDoc::CreateFromFile(file.c_str());
    if (!settings.IsLoaded()) return 1;
    WXmlNode const root = settings.GetRootNode();

    // A setting that must be there: GetNode answers whether it is.
    WXmlNode window;
    if (root.GetNode(L"window[@id='main']", window)) {
        CPoint const position = window.GetNode(L"position").Value().GetPoint();
        std::printf("window at %d,%d\n", static_cast<int>(position.x),
                    static_cast<int>(position.y));
        std::printf("visible: %s\n", window.Attribute(L"@visible").GetBool(true) ? "yes" : "no");
    }

    // A setting that may be missing: a path to nothing gives an empty node, which gives the
    // default.
    int const minutes = root.GetNodeNoThrow(L"autosave/minutes").Value().GetInt(5);
    int const copies = root.GetNodeNoThrow(L"autosave/copies").Value().GetInt(3);
    std::printf("saves every %d minutes, keeps %d copies\n", minutes, copies);
    return 0;
}
