#include "StylesheetTemplate.h"

#include <utility>

#include "Failure.h"
#include "StylesheetProcessor.h"
#include "Transformation.h"

namespace tibxml::com {

HRESULT StylesheetTemplate::create(REFIID iid, void** object) noexcept {
    return guarded(IID_IUnknown, [&] {
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
        auto const made = ComPtr<StylesheetTemplate>::adopt(new StylesheetTemplate);
        return made->QueryInterface(iid, object);
    });
}

HRESULT StylesheetTemplate::putref_stylesheet(IXMLDOMNode* stylesheet) noexcept {
    return guarded(IID_IXSLTemplate, [&] {
        CompiledDocument compiled;
        if (stylesheet != nullptr) {
            compiled.document = ComPtr<DocumentObject>{&documentOf(*handleOf(stylesheet))};
            compiled.stylesheet = compiled.document->asStylesheet();
        }
        compiled_ = std::move(compiled);
        return S_OK;
    });
}

HRESULT StylesheetTemplate::get_stylesheet(IXMLDOMNode** stylesheet) noexcept {
    return replyObject(IID_IXSLTemplate, stylesheet, [&]() -> IXMLDOMNode* {
        return ComPtr<DocumentObject>{compiled_.document}.detach();
    });
}

HRESULT StylesheetTemplate::createProcessor(IXSLProcessor** processor) noexcept {
    return reply(IID_IXSLTemplate, processor, [&]() -> IXSLProcessor* {
        if (!compiled_.stylesheet) throw Failure{E_FAIL, "there is no stylesheet"};
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): reply() handles it
        return new StylesheetProcessor{*this, compiled_};
    });
}

} // namespace tibxml::com
