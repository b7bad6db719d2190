// Validates a file by a schema, before and after an edit that the schema does not allow.
#include <cstdio>
#include <string>

#include <TibXml/TibXml.h>

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const data(folder.begin(), folder.end());
    std::wstring const schema = data + L"/settings.xsd";
    WXmlDoc settings = WXmlDoc::CreateFromFile((data + L"/settings.xml").c_str());
    if (!settings.IsLoaded()) return 1;
    std::printf("as it is in the file: %s\n", settings.Validate(schema.c_str()) ? "valid" : "not");

    // The edit happens all the same: a schema is asked, it does not stand guard.
    WXmlNode const minutes = settings.GetRootNode().GetNode(L"autosave/minutes");
    minutes.Value().SetString(L"often");
    std::printf("with a word for a number: %s\n",
                settings.Validate(schema.c_str()) ? "valid" : "not");

    minutes.Value().SetInt(5);
    std::printf("with a number again: %s\n", settings.Validate(schema.c_str()) ? "valid" : "not");
    return 0;
}
