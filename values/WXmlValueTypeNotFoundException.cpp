#include <TibXml/WXmlValueAccessor.h>

using tibxml::engine::EngineString;

using Exception = WXmlValueTypeNotFoundException;

// Without memory for the name the engine's exception is thrown in the place of this one.
Exception::WXmlValueTypeNotFoundException(wchar_t const* typeName)
    : typeName_{EngineString{typeName}.toCString()} {}

Exception::WXmlValueTypeNotFoundException(Exception const& other) noexcept = default;

Exception::WXmlValueTypeNotFoundException(Exception&& other) noexcept = default;

Exception& Exception::operator=(Exception const& other) noexcept = default;

Exception& Exception::operator=(Exception&& other) noexcept = default;

Exception::~WXmlValueTypeNotFoundException() = default;

CString const& Exception::GetMessageW() const noexcept {
    return typeName_;
}
