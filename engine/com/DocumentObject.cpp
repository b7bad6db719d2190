#include "DocumentObject.h"

#include <utility>

#include <tree/Cloning.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>

#include "ComPtr.h"
#include "DocumentFile.h"
#include "Insertion.h"
#include "NodeHandle.h"
#include "NodeOperations.h"
#include "ParseErrorObject.h"
#include "SchemaCache.h"
#include "Sources.h"
#include "Text.h"

namespace tibxml::com {

DocumentObject::DocumentObject() {
    auto const storage = tree::DocumentRef::adopt(tree::Document::create());
    attach(*storage, storage->node());
    setOwner(ComPtr<DocumentObject>::adopt(this));
}

DocumentObject::~DocumentObject() {
    detach();
    disown().detach();
}

HRESULT DocumentObject::create(REFIID iid, void** object) noexcept {
    return guarded(IID_IUnknown, [&] {
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
        auto const document = ComPtr<DocumentObject>::adopt(new DocumentObject);
        return document->QueryInterface(iid, object);
    });
}

void DocumentObject::startAfresh() {
    replaceContent(tree::DocumentRef::adopt(tree::Document::create()));
}

void DocumentObject::replaceContent(tree::DocumentRef const& fresh) {
    fresh->setPreservesWhiteSpace(storage().preservesWhiteSpace());
    leaveBehind(*this);
    storage().lifetimes().clear();
    detach();
    attach(*fresh, fresh->node());
    parseError_ = {};
    origin_ = {};
    stylesheet_.reset();
}

std::shared_ptr<transform::Stylesheet const> DocumentObject::asStylesheet() {
    bool const isUnchanged = stylesheet_ != nullptr && stylesheetSerial_ == storage().serial() &&
                             stylesheetVersion_ == storage().version();
    if (isUnchanged) return stylesheet_;
    stylesheet_.reset();
    stylesheet_ = std::make_shared<transform::Stylesheet const>(storage(), origin_.location);
    stylesheetSerial_ = storage().serial();
    stylesheetVersion_ = storage().version();
    return stylesheet_;
}

HRESULT DocumentObject::get_documentElement(IXMLDOMElement** element) noexcept {
    return replyObject(IID_IXMLDOMDocument, element, [&] {
        return static_cast<IXMLDOMElement*>(wrapBeside(*this, storage().documentElement()));
    });
}

HRESULT DocumentObject::putref_documentElement(IXMLDOMElement* element) noexcept {
    return guarded(IID_IXMLDOMDocument, [&] { return setRoot(*this, *handleOf(element)), S_OK; });
}

HRESULT DocumentObject::createNode(VARIANT type, BSTR name, BSTR namespaceURI,
                                   IXMLDOMNode** node) noexcept {
    return reply(IID_IXMLDOMDocument, node, [&] {
        LONG const kind = integerIn(type, E_INVALIDARG);
        return wrapNew(*this, storage(),
                       newNode(storage(), kind, viewOf(name), viewOf(namespaceURI)));
    });
}

HRESULT DocumentObject::createAttribute(BSTR name, IXMLDOMAttribute** attribute) noexcept {
    return reply(IID_IXMLDOMDocument, attribute, [&] {
        tree::Node* const node = newNode(storage(), NODE_ATTRIBUTE, viewOf(name), {});
        return static_cast<IXMLDOMAttribute*>(wrapNew(*this, storage(), node));
    });
}

template <class Open>
HRESULT DocumentObject::loadBy(VARIANT_BOOL* isSuccessful, Open open) noexcept {
    if (isSuccessful == nullptr) return E_POINTER;
    *isSuccessful = VARIANT_FALSE;
    return guarded(IID_IXMLDOMDocument, [&] {
        startAfresh();
        // Apart from this object, which a stream of the caller's may use while it is being read.
        auto const fresh = tree::DocumentRef::adopt(tree::Document::create());
        fresh->setPreservesWhiteSpace(storage().preservesWhiteSpace());
        Origin origin;
        reader::ReadError error;
        bool const done = open(origin, error, [&](reader::Input const& input) {
            return reader::read(*fresh, input, error);
        });
        if (done) {
            replaceContent(fresh);
        } else {
            startAfresh();
        }
        parseError_ = std::move(error);
        origin_ = std::move(origin);
        if (!done) return S_FALSE;
        loadedSerial_ = fresh->serial();
        loadedVersion_ = fresh->version();
        *isSuccessful = VARIANT_TRUE;
        return S_OK;
    });
}

HRESULT DocumentObject::load(VARIANT source, VARIANT_BOOL* isSuccessful) noexcept {
    if (isSuccessful == nullptr) return E_POINTER;
    *isSuccessful = VARIANT_FALSE;
    if (!isSource(source)) return E_INVALIDARG;
    return loadBy(isSuccessful, [&](Origin& origin, reader::ReadError& error, Reading const& read) {
        if (source.vt != VT_BSTR) return readStream(source.punkVal, error, read);
        origin.path = pathOf(source.bstrVal);
        return readFile(origin.path, origin.location, error, read);
    });
}

bool DocumentObject::isAsLoaded() const noexcept {
    return !origin_.path.empty() && storage().serial() == loadedSerial_ &&
           storage().version() == loadedVersion_;
}

void DocumentObject::loadSchema(VARIANT const& path) {
    VARIANT_BOOL isSuccessful = VARIANT_FALSE;
    if (HRESULT const result = load(path, &isSuccessful); FAILED(result))
        throw Failure{result, "the schema cannot be loaded"};
    if (isSuccessful == VARIANT_FALSE) {
        std::string const line =
            parseError_.line > 0 ? ":" + std::to_string(parseError_.line) : std::string{};
        throw Failure{E_FAIL, origin_.path + line + ": " + parseError_.reason};
    }
}

HRESULT DocumentObject::loadXML(BSTR text, VARIANT_BOOL* isSuccessful) noexcept {
    return loadBy(isSuccessful, [&](Origin& /*none*/, reader::ReadError& /*none*/,
                                    Reading const& read) { return read(inputOf(text)); });
}

HRESULT DocumentObject::save(VARIANT destination) noexcept {
    if (!isSource(destination)) return E_INVALIDARG;
    return guarded(IID_IXMLDOMDocument, [&] {
        if (destination.vt == VT_BSTR) {
            saveToFile(storage(), pathOf(destination.bstrVal));
        } else {
            saveToStream(storage(), destination.punkVal);
        }
        return S_OK;
    });
}

HRESULT DocumentObject::get_parseError(IXMLDOMParseError** error) noexcept {
    return reply(IID_IXMLDOMDocument, error, [&] {
        std::vector<reader::ReadError> errors;
        if (parseError_.code != 0) errors.push_back(parseError_);
        return newParseError(std::move(errors), origin_.path);
    });
}

HRESULT DocumentObject::get_preserveWhiteSpace(VARIANT_BOOL* preserves) noexcept {
    return reply(IID_IXMLDOMDocument, preserves,
                 [&] { return storage().preservesWhiteSpace() ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT DocumentObject::put_preserveWhiteSpace(VARIANT_BOOL preserves) noexcept {
    storage().setPreservesWhiteSpace(preserves != VARIANT_FALSE);
    return S_OK;
}

void DocumentObject::setNamespaces(VARIANT const& value) {
    namespaces_ = {}; // no prefix may mean what is not declared, if the new ones are refused
    namespaces_ = query::Namespaces::parse(viewOf(stringIn(value, E_FAIL)));
}

HRESULT DocumentObject::setProperty(BSTR name, VARIANT value) noexcept {
    return guarded(IID_IXMLDOMDocument2, [&] {
        std::wstring_view const property = viewOf(name);
        if (property == L"SelectionNamespaces") {
            setNamespaces(value);
        } else if (property == L"NewParser") {
            newParser_ = integerIn(value, E_FAIL) != 0;
        } else if (property == L"AllowDocumentFunction") {
            allowDocumentFunction_ = integerIn(value, E_FAIL) != 0;
        } else if (property != L"SelectionLanguage" ||
                   viewOf(stringIn(value, E_FAIL)) != L"XPath") {
            throw Failure{E_FAIL, "there is no such property or no such value"};
        }
        return S_OK;
    });
}

HRESULT DocumentObject::getProperty(BSTR name, VARIANT* value) noexcept {
    return reply(IID_IXMLDOMDocument2, value, [&] {
        std::wstring_view const property = viewOf(name);
        VARIANT result{};
        if (property == L"SelectionNamespaces") {
            result.bstrVal = toBstr(std::wstring_view{namespaces_.text()});
            result.vt = VT_BSTR;
        } else if (property == L"SelectionLanguage") {
            result = stringVariant("XPath");
        } else if (property == L"NewParser" || property == L"AllowDocumentFunction") {
            bool const isSet = property == L"NewParser" ? newParser_ : allowDocumentFunction_;
            result.vt = VT_BOOL;
            result.boolVal = isSet ? VARIANT_TRUE : VARIANT_FALSE;
        } else {
            throw Failure{E_FAIL, "there is no such property"};
        }
        return result;
    });
}

HRESULT DocumentObject::importNode(IXMLDOMNode* node, VARIANT_BOOL deep,
                                   IXMLDOMNode** copy) noexcept {
    return reply(IID_IXMLDOMDocument3, copy, [&] {
        ComPtr<NodeHandle> const original = handleOf(node);
        if (original->node()->is(tree::NodeKind::document))
            throw Failure{E_FAIL, "a document cannot be imported"};
        auto const depth =
            deep != VARIANT_FALSE ? tree::CloneDepth::deep : tree::CloneDepth::shallow;
        return wrapNew(*this, storage(),
                       tree::clone(storage(), original->storage(), original->node(), depth));
    });
}

DocumentObject* DocumentObject::clone(bool deep) {
    auto copy = ComPtr<DocumentObject>::adopt(new DocumentObject);
    copy->storage().setPreservesWhiteSpace(storage().preservesWhiteSpace());
    copy->namespaces_ = namespaces_;
    copy->newParser_ = newParser_;
    copy->allowDocumentFunction_ = allowDocumentFunction_;
    copy->schemas_ = schemas_;
    tree::Node* child = deep ? node()->firstChild() : nullptr;
    for (; child != nullptr; child = child->next) {
        tree::appendChild(copy->storage(), copy->node(),
                          tree::clone(copy->storage(), storage(), child, tree::CloneDepth::deep));
    }
    return copy.detach();
}

} // namespace tibxml::com
