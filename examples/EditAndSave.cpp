// Changes settings in a file: values, new elements with all that leads to them, removals, copies.
#include <cstdio>
#include <string>

#include <TibXml/TibXml.h>

namespace {

void change(WXmlNode root) {
    // What is there is written over; what is missing is made, with all that leads to it.
    root.GetNode(L"autosave/minutes").Value().SetInt(15);
    root.EnsureDescendantExists(L"autosave/folder").Value().SetString(L"backups");
    root.EnsureDescendantExists(L"window[@id='tools']").Attribute(L"@visible").SetBool(true);

    // All that a path selects is taken out.
    root.DeleteNodes(L"recent/file[position() > 1]");

    // A copy is nowhere until it is put somewhere: in front of the first child here.
    WXmlNode copy = root.GetNode(L"window[@id='main']").Clone(true);
    copy.Attribute(L"@id").SetString(L"second");
    copy.Graft(root, 0);
}

void show(WXmlNode const& root) {
    for (WXmlNode const& window : root.GetNodes(L"window"))
        std::printf("window %ls\n", window.Attribute(L"@id").GetString(L"").GetString());
    std::printf("saves every %d minutes to %ls\n",
                root.GetNode(L"autosave/minutes").Value().GetInt(5),
                root.GetNode(L"autosave/folder").Value().GetString(L"").GetString());
    std::printf("recent files: %d\n", root.GetNodes(L"recent/file").Count());
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/settings.xml";
    WXmlDoc const settings = WXmlDoc::CreateFromFile(file.c_str());
    if (!settings.IsLoaded()) return 1;
    change(settings.GetRootNode());

    // The file is replaced as a whole or not at all.
    if (!settings.Save(L"changed.xml")) return 1;
    show(WXmlDoc::CreateFromFile(L"changed.xml").GetRootNode());
    return 0;
}
