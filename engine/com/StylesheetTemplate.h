// The engine object for a compiled stylesheet.
#pragma once

#include <memory>

#include <TibXml/engine/IXSLTemplate.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include <com/LiveObjects.h>
#include <transform/Stylesheet.h>

#include "ComPtr.h"
#include "DocumentObject.h"

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

} // namespace tibxml::com
