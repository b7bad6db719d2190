// The attributes of one element after the other, as a handler sees them.
#pragma once

#include <span>

#include <TibXml/engine/ISAXAttributes.h>
#include <TibXml/platform/ComObject.h>

#include <com/Measures.h>
#include <reader/SaxReader.h>

namespace tibxml::com {

// One object for a whole parse: what it shows is replaced for each element.
class SaxAttributes final : public platform::ComObject<ISAXAttributes> {
public:
    SaxAttributes() = default;

    // Shows these until the next call.
    void show(std::span<reader::SaxAttribute const> attributes) noexcept {
        attributes_ = attributes;
    }

    HRESULT getLength(int* length) noexcept override;
    HRESULT getURI(int index, wchar_t const** uri, int* uriLength) noexcept override;
    HRESULT getLocalName(int index, wchar_t const** local, int* localLength) noexcept override;
    HRESULT getQName(int index, wchar_t const** qualified, int* qualifiedLength) noexcept override;
    HRESULT getName(int index, wchar_t const** uri, int* uriLength, wchar_t const** local,
                    int* localLength, wchar_t const** qualified,
                    int* qualifiedLength) noexcept override;
    HRESULT getIndexFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                             int localLength, int* index) noexcept override;
    HRESULT getIndexFromQName(wchar_t const* qualified, int qualifiedLength,
                              int* index) noexcept override;
    HRESULT getType(int index, wchar_t const** type, int* typeLength) noexcept override;
    HRESULT getTypeFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                            int localLength, wchar_t const** type,
                            int* typeLength) noexcept override;
    HRESULT getTypeFromQName(wchar_t const* qualified, int qualifiedLength, wchar_t const** type,
                             int* typeLength) noexcept override;
    HRESULT getValue(int index, wchar_t const** value, int* valueLength) noexcept override;
    HRESULT getValueFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                             int localLength, wchar_t const** value,
                             int* valueLength) noexcept override;
    HRESULT getValueFromQName(wchar_t const* qualified, int qualifiedLength, wchar_t const** value,
                              int* valueLength) noexcept override;

private:
    ~SaxAttributes() override = default;

    // Answers with a text of the attribute at an index.
    template <class TextOf>
    HRESULT answer(int index, wchar_t const** text, int* length, TextOf textOf) const noexcept;

    // Answers a look-up: the index of the first attribute that is the one.
    template <class IsTheOne>
    HRESULT find(int* index, IsTheOne isTheOne) const noexcept;

    LiveObject live_;
    std::span<reader::SaxAttribute const> attributes_;
};

} // namespace tibxml::com
