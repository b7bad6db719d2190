// Tells a handler what the reader tells.
#pragma once

#include <TibXml/engine/ISAXContentHandler.h>

#include "ComPtr.h"
#include "SaxAttributes.h"
#include "SaxLocator.h"

namespace tibxml::com {

class SaxForwarder final : public reader::SaxEvents {
public:
    // The handler may be null: then nobody is told. Throws std::bad_alloc.
    SaxForwarder(ComPtr<ISAXContentHandler> handler, ComPtr<SaxLocator> locator);

    // The failing code with which the handler stopped the reading, or else a success.
    HRESULT result() const noexcept { return result_; }

    bool start(reader::SaxPlace const& place) override;
    bool startDocument() override;
    bool endDocument() override;
    bool startPrefixMapping(std::wstring_view prefix, std::wstring_view uri) override;
    bool endPrefixMapping(std::wstring_view prefix) override;
    bool startElement(reader::SaxName const& name,
                      std::span<reader::SaxAttribute const> attributes) override;
    bool endElement(reader::SaxName const& name) override;
    bool characters(std::wstring_view text) override;
    bool processingInstruction(std::wstring_view target, std::wstring_view data) override;

private:
    template <class Call>
    bool tell(Call call);

    ComPtr<ISAXContentHandler> handler_;
    ComPtr<SaxLocator> locator_;
    ComPtr<SaxAttributes> attributes_;
    HRESULT result_ = S_OK;
};

} // namespace tibxml::com
