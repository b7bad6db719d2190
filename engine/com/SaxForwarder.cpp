#include "SaxForwarder.h"

#include <algorithm>
#include <utility>

namespace tibxml::com {

namespace {

int lengthOf(std::wstring_view text) noexcept {
    return static_cast<int>(text.size()); // the parser takes no longer names and values
}

using reader::SaxAttribute;

bool isText(wchar_t const* text, int length) noexcept {
    return length >= 0 && (text != nullptr || length == 0);
}

std::wstring_view viewOf(wchar_t const* text, int length) noexcept {
    return {text != nullptr ? text : L"", static_cast<std::size_t>(length)};
}

// Writes a text and its length to where they are wanted; each of the two may be null.
void give(std::wstring_view from, wchar_t const** text, int* length) noexcept {
    if (text != nullptr) *text = from.data();
    if (length != nullptr) *length = static_cast<int>(from.size());
}

std::wstring_view uriOf(SaxAttribute const& attribute) noexcept {
    return attribute.name->uri;
}

std::wstring_view localNameOf(SaxAttribute const& attribute) noexcept {
    return attribute.name->local;
}

std::wstring_view qualifiedNameOf(SaxAttribute const& attribute) noexcept {
    return attribute.name->qualified;
}

std::wstring_view typeOf(SaxAttribute const& /*attribute*/) noexcept {
    return L"CDATA";
}

std::wstring_view valueOf(SaxAttribute const& attribute) noexcept {
    return attribute.value;
}

} // namespace

SaxForwarder::SaxForwarder(ComPtr<ISAXContentHandler> handler, ComPtr<SaxLocator> locator)
    : handler_{std::move(handler)},
      locator_{std::move(locator)},
      attributes_{ComPtr<SaxAttributes>::adopt(new SaxAttributes)} {}

template <class Call>
bool SaxForwarder::tell(Call call) {
    if (!handler_) return true;
    result_ = call(*handler_);
    return SUCCEEDED(result_);
}

bool SaxForwarder::start(reader::SaxPlace const& place) {
    locator_->follow(place);
    return tell([&](auto& handler) { return handler.putDocumentLocator(locator_.get()); });
}

bool SaxForwarder::startDocument() {
    return tell([](auto& handler) { return handler.startDocument(); });
}

bool SaxForwarder::endDocument() {
    return tell([](auto& handler) { return handler.endDocument(); });
}

bool SaxForwarder::startPrefixMapping(std::wstring_view prefix, std::wstring_view uri) {
    return tell([&](auto& handler) {
        return handler.startPrefixMapping(prefix.data(), lengthOf(prefix), uri.data(),
                                          lengthOf(uri));
    });
}

bool SaxForwarder::endPrefixMapping(std::wstring_view prefix) {
    return tell(
        [&](auto& handler) { return handler.endPrefixMapping(prefix.data(), lengthOf(prefix)); });
}

bool SaxForwarder::startElement(reader::SaxName const& name,
                                std::span<reader::SaxAttribute const> attributes) {
    attributes_->show(attributes);
    bool const goesOn = tell([&](auto& handler) {
        return handler.startElement(name.uri.c_str(), lengthOf(name.uri), name.local.c_str(),
                                    lengthOf(name.local), name.qualified.c_str(),
                                    lengthOf(name.qualified), attributes_.get());
    });
    attributes_->show({}); // for a handler that keeps the object
    return goesOn;
}

bool SaxForwarder::endElement(reader::SaxName const& name) {
    return tell([&](auto& handler) {
        return handler.endElement(name.uri.c_str(), lengthOf(name.uri), name.local.c_str(),
                                  lengthOf(name.local), name.qualified.c_str(),
                                  lengthOf(name.qualified));
    });
}

bool SaxForwarder::characters(std::wstring_view text) {
    return tell([&](auto& handler) { return handler.characters(text.data(), lengthOf(text)); });
}

bool SaxForwarder::processingInstruction(std::wstring_view target, std::wstring_view data) {
    return tell([&](auto& handler) {
        return handler.processingInstruction(target.data(), lengthOf(target), data.data(),
                                             lengthOf(data));
    });
}

template <class TextOf>
HRESULT SaxAttributes::answer(int index, wchar_t const** text, int* length,
                              TextOf textOf) const noexcept {
    if (text == nullptr || length == nullptr) {
        give({}, text, length);
        return E_POINTER;
    }
    bool const isThere = index >= 0 && static_cast<std::size_t>(index) < attributes_.size();
    give(isThere ? textOf(attributes_[static_cast<std::size_t>(index)]) : std::wstring_view{}, text,
         length);
    return isThere ? S_OK : E_INVALIDARG;
}

template <class IsTheOne>
HRESULT SaxAttributes::find(int* index, IsTheOne isTheOne) const noexcept {
    if (index == nullptr) return E_POINTER;
    auto const found = std::find_if(attributes_.begin(), attributes_.end(), isTheOne);
    bool const isThere = found != attributes_.end();
    *index = isThere ? static_cast<int>(found - attributes_.begin()) : -1;
    return isThere ? S_OK : E_INVALIDARG;
}

HRESULT SaxAttributes::getLength(int* length) noexcept {
    if (length == nullptr) return E_POINTER;
    *length = static_cast<int>(attributes_.size());
    return S_OK;
}

HRESULT SaxAttributes::getURI(int index, wchar_t const** uri, int* uriLength) noexcept {
    return answer(index, uri, uriLength, uriOf);
}

HRESULT SaxAttributes::getLocalName(int index, wchar_t const** local, int* localLength) noexcept {
    return answer(index, local, localLength, localNameOf);
}

HRESULT SaxAttributes::getQName(int index, wchar_t const** qualified,
                                int* qualifiedLength) noexcept {
    return answer(index, qualified, qualifiedLength, qualifiedNameOf);
}

HRESULT SaxAttributes::getName(int index, wchar_t const** uri, int* uriLength,
                               wchar_t const** local, int* localLength, wchar_t const** qualified,
                               int* qualifiedLength) noexcept {
    HRESULT const uriResult = getURI(index, uri, uriLength);
    HRESULT const localResult = getLocalName(index, local, localLength);
    HRESULT const qualifiedResult = getQName(index, qualified, qualifiedLength);
    if (FAILED(uriResult)) return uriResult;
    return FAILED(localResult) ? localResult : qualifiedResult;
}

HRESULT SaxAttributes::getIndexFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                                        int localLength, int* index) noexcept {
    bool const isName = isText(uri, uriLength) && isText(local, localLength);
    return find(index, [=](SaxAttribute const& attribute) {
        return isName && attribute.name->local == viewOf(local, localLength) &&
               attribute.name->uri == viewOf(uri, uriLength);
    });
}

HRESULT SaxAttributes::getIndexFromQName(wchar_t const* qualified, int qualifiedLength,
                                         int* index) noexcept {
    bool const isName = isText(qualified, qualifiedLength);
    return find(index, [=](SaxAttribute const& attribute) {
        return isName && attribute.name->qualified == viewOf(qualified, qualifiedLength);
    });
}

HRESULT SaxAttributes::getType(int index, wchar_t const** type, int* typeLength) noexcept {
    return answer(index, type, typeLength, typeOf);
}

// Where there is no such attribute the index is -1, to which the answer is the same failure.

HRESULT SaxAttributes::getTypeFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                                       int localLength, wchar_t const** type,
                                       int* typeLength) noexcept {
    int index = -1;
    getIndexFromName(uri, uriLength, local, localLength, &index);
    return getType(index, type, typeLength);
}

HRESULT SaxAttributes::getTypeFromQName(wchar_t const* qualified, int qualifiedLength,
                                        wchar_t const** type, int* typeLength) noexcept {
    int index = -1;
    getIndexFromQName(qualified, qualifiedLength, &index);
    return getType(index, type, typeLength);
}

HRESULT SaxAttributes::getValue(int index, wchar_t const** value, int* valueLength) noexcept {
    return answer(index, value, valueLength, valueOf);
}

HRESULT SaxAttributes::getValueFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                                        int localLength, wchar_t const** value,
                                        int* valueLength) noexcept {
    int index = -1;
    getIndexFromName(uri, uriLength, local, localLength, &index);
    return getValue(index, value, valueLength);
}

HRESULT SaxAttributes::getValueFromQName(wchar_t const* qualified, int qualifiedLength,
                                         wchar_t const** value, int* valueLength) noexcept {
    int index = -1;
    getIndexFromQName(qualified, qualifiedLength, &index);
    return getValue(index, value, valueLength);
}

} // namespace tibxml::com
