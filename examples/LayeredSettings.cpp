// Keeps what a user changes in a document of its own, over defaults that are never changed.
#include <cstdio>
#include <string>

#include <TibXml/TibXml.h>

namespace {

void show(char const* when, WXmlCompositeNode const& autosave) {
    bool const isOn = autosave.ReadableAttribute(L"@enabled", false).GetBool(true);
    bool const isOnByDefault = autosave.ReadableAttribute(L"@enabled", true).GetBool(true);
    std::printf("%s: autosave is %s, by default %s\n", when, isOn ? "on" : "off",
                isOnByDefault ? "on" : "off");
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/settings.xml";
    WXmlDoc defaults = WXmlDoc::CreateFromFile(file.c_str());
    if (!defaults.IsLoaded()) return 1;

    // A user who has changed nothing has an empty root element.
    WXmlDoc user = WXmlDoc::CreateFromString(L"<settings/>");
    WXmlCompositeNode autosave(defaults, user, L"autosave");
    show("at first", autosave);

    // The element is made in the user's document as soon as something is written.
    autosave.WriteableAttribute(L"@enabled").SetBool(false);
    show("changed", autosave);
    std::printf("%ls\n", user.GetRootNode().GetXML().GetString());

    // What the user does not have is read from the defaults.
    WXmlNode keep;
    if (autosave.GetNode(L"keep", keep)) std::printf("keeps %d files\n", keep.Value().GetInt(0));

    autosave.Prune();
    show("reset", autosave);
    std::printf("%ls\n", user.GetRootNode().GetXML().GetString());
    return 0;
}
