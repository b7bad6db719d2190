// The engine object for transformations by a compiled stylesheet.
#pragma once

#include <string>
#include <vector>

#include <TibXml/engine/IXSLTemplate.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>

#include <com/LiveObjects.h>
#include <transform/Stylesheet.h>

#include "ComPtr.h"
#include "NodeHandle.h"
#include "StylesheetTemplate.h"

namespace tibxml::com {

class StylesheetProcessor final : public platform::ComObject<IXSLProcessor, ISupportErrorInfo> {
public:
    StylesheetProcessor(IXSLTemplate& owner, CompiledDocument compiled);

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

    HRESULT put_input(VARIANT input) noexcept override;
    HRESULT get_input(VARIANT* input) noexcept override;
    HRESULT get_ownerTemplate(IXSLTemplate** owner) noexcept override;
    HRESULT setStartMode(BSTR mode, BSTR namespaceURI) noexcept override;
    HRESULT get_startMode(BSTR* mode) noexcept override;
    HRESULT get_startModeURI(BSTR* namespaceURI) noexcept override;
    HRESULT put_output(VARIANT output) noexcept override;
    HRESULT get_output(VARIANT* output) noexcept override;
    HRESULT transform(VARIANT_BOOL* isDone) noexcept override;
    HRESULT reset() noexcept override;
    HRESULT get_readyState(LONG* state) noexcept override;
    HRESULT addParameter(BSTR name, VARIANT value, BSTR namespaceURI) noexcept override;
    HRESULT addObject(IUnknown* object, BSTR namespaceURI) noexcept override;
    HRESULT get_stylesheet(IXMLDOMNode** stylesheet) noexcept override;

private:
    ~StylesheetProcessor() override = default;

    void run(std::string& messages);
    transform::Request request() const;
    std::string text(transform::TextEncoding encoding, std::string& messages) const;

    LiveObject live_;
    ComPtr<IXSLTemplate> owner_;
    CompiledDocument compiled_;
    ComPtr<NodeHandle> input_;
    ComPtr<IUnknown> output_;           // null for a string
    ComPtr<ISequentialStream> stream_;  // of the output, if it is one
    ComPtr<NodeHandle> targetDocument_; // the output, if it is a document
    std::vector<transform::Parameter> parameters_;
    transform::ExpandedName mode_;
    std::string result_; // when there is no output
    XslReadyState state_ = XSL_READYSTATE_UNINITIALIZED;
};

} // namespace tibxml::com
