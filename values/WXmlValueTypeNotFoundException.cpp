#include <TibXml/WXmlValueAccessor.h>

using Exception = WXmlValueTypeNotFoundException;

Exception::WXmlValueTypeNotFoundException(wchar_t const* typeName) : typeName_{typeName} {}

Exception::WXmlValueTypeNotFoundException(Exception const& other) noexcept = default;

Exception::WXmlValueTypeNotFoundException(Exception&& other) noexcept = default;

Exception& Exception::operator=(Exception const& other) noexcept = default;

Exception& Exception::operator=(Exception&& other) noexcept = default;

Exception::~WXmlValueTypeNotFoundException() = default;

CString const& Exception::GetMessageW() const noexcept {
    return typeName_;
}
