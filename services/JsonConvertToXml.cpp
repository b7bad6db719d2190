#include <TibXml/JsonConversion.h>
#include <TibXml/tibutils/Json.h>

#include <cstddef>
#include <string>
#include <vector>

using TibUtils::Variant;
using TibUtils::Json::Array;
using TibUtils::Json::Object;

namespace {

/// The value of a member if it is there and of this kind, else null.
template <class Kind>
Kind const* member(Object const& object, wchar_t const* name) {
    return object.HasValue(name) ? object.GetValue(name).TryGet<Kind>() : nullptr;
}

CString const* tagOf(Variant const& value) {
    auto const* const object = value.TryGet<Object>();
    return object == nullptr ? nullptr : member<CString>(*object, L"tag");
}

void appendAttributes(std::wstring& xml, Object const& attributes) {
    for (std::size_t i = 0; i < attributes.GetSize(); ++i) {
        Variant const& value = attributes.GetValue(i);
        if (!value.Is<CString>()) continue;
        xml.append(1, L' ').append(attributes.GetValueName(i).view()).append(1, L'=');
        xml += TibUtils::Json::ValueToString(value, 0).view();
    }
}

/// An element whose end tag is still to be written. The stack of them is this one and not the
/// program's, which deep values would exhaust.
struct OpenElement {
    CString const* tag;
    Array const* children; ///< null for none
    std::size_t next;

    bool hasNext() const noexcept { return children != nullptr && next < children->GetSize(); }
};

OpenElement begin(std::wstring& xml, Variant const& value, CString const& tag) {
    auto const& object = value.Get<Object>();
    xml.append(1, L'<').append(tag.view());
    if (auto const* const attributes = member<Object>(object, L"attributes"))
        appendAttributes(xml, *attributes);
    xml += L'>';
    return {&tag, member<Array>(object, L"children"), 0};
}

void append(std::wstring& xml, Variant const& value, CString const& tag) {
    std::vector<OpenElement> open{begin(xml, value, tag)};
    while (!open.empty()) {
        OpenElement& element = open.back();
        if (element.hasNext()) {
            Variant const& child = element.children->GetValue(element.next++);
            if (CString const* const childTag = tagOf(child))
                open.push_back(begin(xml, child, *childTag));
        } else {
            xml.append(L"</").append(element.tag->view()).append(1, L'>');
            open.pop_back();
        }
    }
}

} // namespace

bool JsonConvertToXml(Variant const& value, CString& xml) {
    CString const* const tag = tagOf(value);
    if (tag == nullptr) return false;
    std::wstring text;
    append(text, value, *tag);
    xml.Append(text);
    return true;
}
