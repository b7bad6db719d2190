// The engine objects for a compiled stylesheet and for transformations by it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <TibXml/engine/IXSLTemplate.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>
#include <com/Measures.h>
#include <transform/Stylesheet.h>

#include "ComPtr.h"
#include "DocumentObject.h"
#include "NodeHandle.h"

namespace tibxml::com {

// A stylesheet with the document that it was compiled from.
struct CompiledDocument {
    ComPtr<DocumentObject> document;
    std::shared_ptr<transform::Stylesheet const> stylesheet; // null when there is none
};

class StylesheetTemplate final : public platform::ComObject<IXSLTemplate, ISupportErrorInfo> {
public:
    // What CoCreateInstance calls.
    static HRESULT create(REFIID iid, void** object) noexcept;

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

    HRESULT putref_stylesheet(IXMLDOMNode* stylesheet) noexcept override;
    HRESULT get_stylesheet(IXMLDOMNode** stylesheet) noexcept override;
    HRESULT createProcessor(IXSLProcessor** processor) noexcept override;

private:
    StylesheetTemplate() = default;
    ~StylesheetTemplate() override = default;

    LiveObject live_;
    CompiledDocument compiled_;
};

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
