#include <TibXml/WXmlStringMap.h>

#include <TibXml/WXPath.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/tibutils/SystemIOFile.h>

namespace {

constexpr wchar_t const* emptyMap = L"<?xml version='1.0'?><stringMap/>";

// An apostrophe would end the literal that it is put into. Mostly that makes a path which nothing
// can be found with; refusing all of them keeps the others from reaching more than one string.
bool fitsIntoPath(CString const& text) {
    return text.Find(L'\'') < 0;
}

WXPath pathTo(CString const& context, CString const& ntString) {
    return L"context[@name='" + context + L"']/string[@nonTranslatableString='" + ntString + L"']";
}

/// Whether a cached key is of a context. The first ":" ends the context, so one that holds a ":"
/// itself has no keys.
bool isOf(CString const& key, CString const& context) {
    return key.Find(L':') == context.GetLength() && key.view().starts_with(context.view());
}

} // namespace

WXmlStringMap::WXmlStringMap() : document{std::make_shared<WXmlDoc>(false)} {}

WXmlStringMap::WXmlStringMap(WXmlStringMap const& other) = default;

WXmlStringMap& WXmlStringMap::operator=(WXmlStringMap const& other) = default;

WXmlStringMap::~WXmlStringMap() = default;

WXmlDoc& WXmlStringMap::GetXmlDoc() const noexcept {
    return *document;
}

bool WXmlStringMap::Load(CString const& path) {
    cache.clear();
    if (!TibUtils::SystemIO::File::Exists(path)) return GetXmlDoc().LoadFromString(emptyMap);
    return GetXmlDoc().Load(path);
}

bool WXmlStringMap::LoadFromString(CString const& text) {
    cache.clear();
    return GetXmlDoc().LoadFromString(text);
}

bool WXmlStringMap::GetLocStringFromNTString(CString const& context, CString const& ntString,
                                             CString& locString) const {
    CString const key = context + L":" + ntString;
    auto const known = cache.find(key);
    if (known != cache.end()) {
        locString = known->second;
        return true;
    }
    CString found;
    if (!Find(context, ntString, found)) return false;
    cache.emplace(key, found);
    locString = found;
    return true;
}

bool WXmlStringMap::Find(CString const& context, CString const& ntString,
                         CString& locString) const {
    WXmlNode const root = GetXmlDoc().GetRootNode();
    WXmlNodeList strings;
    if (!fitsIntoPath(context) || !fitsIntoPath(ntString) ||
        !root.GetNodes(pathTo(context, ntString), strings))
        return false;
    try {
        locString = strings.Node(0).Attribute(L"@locString").GetString_throws();
        return true;
    } catch (WXmlValueTypeNotFoundException const&) {
        return false;
    }
}

bool WXmlStringMap::GetNTStringFromLocString(CString const& context, CString const& locString,
                                             CString& ntString) const {
    for (auto const& [key, value] : cache) {
        if (value != locString || !isOf(key, context)) continue;
        ntString = key.Mid(context.GetLength() + 1);
        return true;
    }
    return false;
}
