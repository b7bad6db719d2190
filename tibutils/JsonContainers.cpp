#include "JsonContent.h"

#include <stdexcept>

namespace TibUtils::Json {
namespace {

std::size_t sizeOf(ContentPtr const& content) noexcept {
    return content.Get() == nullptr ? 0 : content.Get()->members.size();
}

Content::Member const& memberAt(ContentPtr const& content, std::size_t index) {
    if (index >= sizeOf(content)) throw std::out_of_range{"no JSON value at this index"};
    return content.Get()->members[index];
}

std::size_t placeOf(ContentPtr const& content, CString const& name) noexcept {
    return content.Get() == nullptr ? 0 : content.Get()->find(name);
}

} // namespace

std::size_t Object::GetSize() const noexcept {
    return sizeOf(content_);
}

bool Object::HasValue(CString const& name) const noexcept {
    return placeOf(content_, name) < GetSize();
}

Variant const& Object::GetValue(CString const& name) const {
    std::size_t const place = placeOf(content_, name);
    if (place >= GetSize()) throw std::out_of_range{"no JSON value of this name"};
    return content_.Get()->members[place].value;
}

Variant const& Object::GetValue(std::size_t index) const {
    return memberAt(content_, index).value;
}

CString const& Object::GetValueName(std::size_t index) const {
    return memberAt(content_, index).name;
}

void Object::AddValue(CString name, Variant value) {
    Content& content = content_.Writable();
    std::size_t const place = content.find(name);
    if (place == content.members.size()) {
        content.add(std::move(name), std::move(value));
    } else {
        // Into a value that is held no more when the old one goes, which may hold this object.
        std::swap(content.members[place].value, value);
    }
}

std::size_t Array::GetSize() const noexcept {
    return sizeOf(content_);
}

Variant const& Array::GetValue(std::size_t index) const {
    return memberAt(content_, index).value;
}

void Array::AddValue(Variant value) {
    content_.Writable().members.push_back({{}, std::move(value)});
}

} // namespace TibUtils::Json
