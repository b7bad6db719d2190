#include "Layers.h"

#include <filesystem>
#include <utility>

#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlValueAccessor.h>

#include "Documents.h"
#include "Select.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

// Declarations stay: the name may need one.
CString emptyRootLike(WXmlNode const& root) {
    WXmlNode const copy = root.Clone(false);
    std::vector<CString> names;
    copy.GetAttributes(names);
    for (CString const& name : names)
        if (!name.view().starts_with(L"xmlns")) copy.Attribute(CString{L"@"} + name).Delete();
    return copy.GetXML();
}

WXmlDoc loadUser(std::string const& file, WXmlDoc const& defaults) {
    std::error_code error;
    bool const isMissing = file != "-" && !std::filesystem::exists(file, error) && !error;
    if (!isMissing) return loadDocument(file);
    return documentFrom(emptyRootLike(defaults.GetRootNode()));
}

} // namespace

Layers::Layers(std::string const& defaultsFile, std::string userFile,
               std::vector<std::string> const& namespaces)
    : userFile_{std::move(userFile)},
      defaults_{loadDocument(defaultsFile)},
      user_{loadUser(userFile_, defaults_)} {
    useNamespaces(defaults_, namespaces);
    useNamespaces(user_, namespaces);
}

void Layers::saveUser() const {
    saveDocument(user_, userFile_);
}

} // namespace tibxml::tool
