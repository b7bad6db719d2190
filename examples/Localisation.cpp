// Shows a menu in the language of a map of strings, and finds out what was chosen from its text.
#include <cstdio>
#include <string>

#include <TibXml/TibXml.h>
#include <TibXml/tibutils/DataEncoding.h>

namespace {

// A program that has no translation of a string shows the key.
CString textFor(WXmlStringMap const& strings, CString const& key) {
    CString text;
    return strings.GetLocStringFromNTString(L"menu", key, text) ? text : key;
}

void print(CString const& text) {
    std::printf("%s\n", TibUtils::DataEncoding::Utf8Encode(text).c_str());
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/strings.xml";
    WXmlStringMap strings;
    if (!strings.Load(file.c_str())) return 1;

    for (wchar_t const* key : {L"open", L"save", L"print", L"quit"})
        print(textFor(strings, key));

    // The texts that were shown can be turned back into keys.
    CString chosen;
    if (strings.GetNTStringFromLocString(L"menu", L"Speichern", chosen))
        print(L"chosen: " + chosen);
    return 0;
}
