// Hands an element to a program that speaks JSON, changes it there, and takes it back as XML.
#include <cstdio>
#include <string>

#include <TibXml/TibXml.h>
#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/Json.h>

namespace {

using TibUtils::Variant;
namespace Json = TibUtils::Json;

// What another program might do: the object with one attribute more.
std::string withAttribute(std::string const& json, CString const& name, CString const& value) {
    Variant element = Json::Parse(json);
    auto& object = element.Get<Json::Object>();
    auto attributes = object.GetValue(L"attributes").Get<Json::Object>();
    attributes.AddValue(name, value);
    object.AddValue(L"attributes", attributes);
    return Json::Write(element);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/settings.xml";
    WXmlDoc const settings = WXmlDoc::CreateFromFile(file.c_str());
    if (!settings.IsLoaded()) return 1;

    Variant value;
    JsonConvertFromXml(settings.GetRootNode().GetNode(L"window[@id='palette']"), value);
    std::printf("%s\n", Json::Write(value, 2).c_str());

    CString xml;
    if (!JsonConvertToXml(Json::Parse(withAttribute(Json::Write(value), L"note", L"\"big\" & new")),
                          xml))
        return 1;
    std::printf("%s\n", TibUtils::DataEncoding::Utf8Encode(xml).c_str());

    WXmlNode const window = WXmlDoc::CreateFromString(xml).GetRootNode();
    CString const note = window.Attribute(L"@note").GetString();
    std::printf("%s\n", TibUtils::DataEncoding::Utf8Encode(note).c_str());
    return 0;
}
