#pragma once

// Engine objects that answer as a test wants: for failures that the real engine never makes,
// and for the order of calls.

#include <TibXml/EnginePtr.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/IUnknown.h>
#include <TibXml/platform/Variant.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace fake {

/// What the objects of one test do and did. Functions are named without "get_".
struct Behaviour {
    /// Result codes by function; the others succeed.
    std::map<std::string, HRESULT> codes;

    /// The functions that were called, in order.
    std::vector<std::string> calls;

    /// Interfaces for which error information was asked.
    std::vector<IID> asked;

    /// Interfaces that are refused, with the code.
    std::vector<std::pair<IID, HRESULT>> refused;

    /// The last property that was set, with an integer value or none.
    std::wstring property;
    VARTYPE propertyKind = VT_EMPTY;
    SHORT propertyNumber = 0;

    /// Whether the next `Release` throws, which no proper object does.
    bool releaseThrows = false;

    /// Notes a call. After a failure there is error information: "no <function>".
    HRESULT answer(char const* function) {
        calls.emplace_back(function);
        auto const found = codes.find(function);
        HRESULT const code = found == codes.end() ? S_OK : found->second;
        if (FAILED(code)) leaveErrorInfo(function);
        return code;
    }

    bool called(std::string const& function) const {
        for (auto const& call : calls) {
            if (call == function) return true;
        }
        return false;
    }

    static void leaveErrorInfo(std::string const& function) {
        ICreateErrorInfo* info = nullptr;
        void* readable = nullptr;
        CreateErrorInfo(&info);
        std::wstring words = L"no " + std::wstring(function.begin(), function.end());
        info->SetDescription(words.data());
        info->QueryInterface(IID_IErrorInfo, &readable);
        SetErrorInfo(0, static_cast<IErrorInfo*>(readable));
        static_cast<IErrorInfo*>(readable)->Release();
        info->Release();
    }
};

/// How many of these objects there are.
inline std::size_t objects = 0;

/// The functions of `IUnknown`, and error information for every interface that is asked for. Not
/// the platform's own template for them: its `Release` could not throw.
template <class Interface>
class Object : public Interface, public ISupportErrorInfo {
public:
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;

    Behaviour& behaviour() { return *behaviour_; }

    HRESULT QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        for (auto const& [refused, code] : behaviour_->refused) {
            if (iid == refused) return code;
        }
        *object = find<Interface>(iid);
        if (*object == nullptr) return E_NOINTERFACE;
        ++references_;
        return S_OK;
    }

    ULONG AddRef() override { return ++references_; }

    ULONG Release() override {
        if (std::exchange(behaviour_->releaseThrows, false)) throw 1;
        ULONG const left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT InterfaceSupportsErrorInfo(REFIID iid) override {
        behaviour_->asked.push_back(iid);
        return S_OK;
    }

protected:
    explicit Object(std::shared_ptr<Behaviour> behaviour) : behaviour_{std::move(behaviour)} {
        ++objects;
    }

    virtual ~Object() { --objects; }

    HRESULT answer(char const* function) { return behaviour_->answer(function); }

    /// Answers by an out-pointer: the value on success, nothing otherwise.
    template <class Value>
    HRESULT give(char const* function, Value* out, Value value) {
        HRESULT const code = answer(function);
        *out = SUCCEEDED(code) ? value : Value{};
        return code;
    }

    template <class Given>
    HRESULT giveObject(char const* function, Given** out, Given* object) {
        HRESULT const code = answer(function);
        *out = nullptr;
        if (FAILED(code)) return code;
        if (object == nullptr) return code == S_OK ? S_FALSE : code;
        object->AddRef();
        *out = object;
        return code;
    }

    HRESULT giveText(char const* function, BSTR* out, wchar_t const* text) {
        HRESULT const code = answer(function);
        *out = SUCCEEDED(code) ? SysAllocString(text) : nullptr;
        return code;
    }

private:
    /// The object by the identifier of its own interface or of one that this extends.
    template <class Level>
    void* find(REFIID iid) {
        if (iid == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
        if (iid == tibxml::platform::iidOf<Level>()) {
            return static_cast<Level*>(static_cast<Interface*>(this));
        }
        if constexpr (std::is_same_v<Level, IUnknown>) {
            return nullptr;
        } else {
            return find<typename tibxml::platform::InterfaceTraits<Level>::Base>(iid);
        }
    }

    std::shared_ptr<Behaviour> behaviour_;
    ULONG references_ = 1;
};

class List final : public Object<IXMLDOMNodeList> {
public:
    explicit List(std::shared_ptr<Behaviour> shared) : Object{std::move(shared)} {}

    std::vector<WXmlNodePtr> nodes;

    HRESULT get_item(LONG index, IXMLDOMNode** node) override {
        auto const at = static_cast<std::size_t>(index);
        IXMLDOMNode* const found = at < nodes.size() ? nodes[at].GetInterfacePtr() : nullptr;
        return giveObject("item", node, found);
    }

    HRESULT get_length(LONG* length) override {
        return give("length", length, static_cast<LONG>(nodes.size()));
    }
};

class Map final : public Object<IXMLDOMNamedNodeMap> {
public:
    explicit Map(std::shared_ptr<Behaviour> shared) : Object{std::move(shared)} {}

    /// What every look-up finds, and what is at each index.
    WXmlNodePtr named;
    std::vector<WXmlNodePtr> attributes;

    HRESULT getNamedItem(BSTR, IXMLDOMNode** attribute) override {
        return giveObject("getNamedItem", attribute, named.GetInterfacePtr());
    }

    HRESULT setNamedItem(IXMLDOMNode* attribute, IXMLDOMNode** result) override {
        return giveObject("setNamedItem", result, attribute);
    }

    HRESULT removeNamedItem(BSTR, IXMLDOMNode** result) override {
        return giveObject("removeNamedItem", result, named.GetInterfacePtr());
    }

    HRESULT get_item(LONG index, IXMLDOMNode** attribute) override {
        std::string const function = "item " + std::to_string(index);
        return giveObject(function.c_str(), attribute,
                          attributes[static_cast<std::size_t>(index)].GetInterfacePtr());
    }

    HRESULT get_length(LONG* length) override {
        return give("length", length, static_cast<LONG>(attributes.size()));
    }
};

/// A node that implements one of the interfaces that extend `IXMLDOMNode`, or that itself.
template <class Interface>
class NodeOf : public Object<Interface> {
public:
    DOMNodeType type = NODE_ELEMENT;
    wchar_t const* name = L"name";
    wchar_t const* text = L"text";
    wchar_t const* markup = L"<xml/>";
    _variant_t typedValue;
    WXmlNodePtr parent;
    WXmlNodePtr selected;
    EnginePtr<IXMLDOMNodeList> children;
    EnginePtr<IXMLDOMNodeList> selectedNodes;
    EnginePtr<IXMLDOMNamedNodeMap> attributes;
    EnginePtr<IXMLDOMDocument> owner;

    HRESULT get_nodeName(BSTR* out) override { return this->giveText("nodeName", out, name); }

    HRESULT get_nodeType(DOMNodeType* out) override { return this->give("nodeType", out, type); }

    HRESULT get_parentNode(IXMLDOMNode** out) override {
        return this->giveObject("parentNode", out, parent.GetInterfacePtr());
    }

    HRESULT get_childNodes(IXMLDOMNodeList** out) override {
        return this->giveObject("childNodes", out, children.GetInterfacePtr());
    }

    HRESULT get_attributes(IXMLDOMNamedNodeMap** out) override {
        return this->giveObject("attributes", out, attributes.GetInterfacePtr());
    }

    HRESULT insertBefore(IXMLDOMNode*, VARIANT, IXMLDOMNode**) override {
        return this->answer("insertBefore");
    }

    HRESULT removeChild(IXMLDOMNode*, IXMLDOMNode**) override {
        return this->answer("removeChild");
    }

    HRESULT appendChild(IXMLDOMNode*, IXMLDOMNode**) override {
        return this->answer("appendChild");
    }

    HRESULT get_ownerDocument(IXMLDOMDocument** out) override {
        return this->giveObject("ownerDocument", out, owner.GetInterfacePtr());
    }

    HRESULT cloneNode(VARIANT_BOOL, IXMLDOMNode**) override { return this->answer("cloneNode"); }

    HRESULT get_text(BSTR* out) override { return this->giveText("text", out, text); }

    HRESULT put_text(BSTR written) override {
        HRESULT const code = this->answer("put text");
        writtenText = written == nullptr ? L"(null)" : written;
        return code;
    }

    HRESULT get_nodeTypedValue(VARIANT* out) override {
        HRESULT const code = this->answer("nodeTypedValue");
        VariantInit(out);
        return SUCCEEDED(code) ? VariantCopy(out, &typedValue) : code;
    }

    HRESULT put_nodeTypedValue(VARIANT value) override {
        VariantCopy(&typedValue, &value);
        return this->answer("put nodeTypedValue");
    }

    HRESULT get_dataType(VARIANT* out) override {
        VariantInit(out);
        return this->answer("dataType");
    }

    HRESULT put_dataType(BSTR) override { return this->answer("put dataType"); }

    HRESULT get_xml(BSTR* out) override { return this->giveText("xml", out, markup); }

    HRESULT transformNode(IXMLDOMNode*, BSTR* out) override {
        return this->giveText("transformNode", out, L"");
    }

    HRESULT selectNodes(BSTR expression, IXMLDOMNodeList** out) override {
        writtenText = expression;
        return this->giveObject("selectNodes", out, selectedNodes.GetInterfacePtr());
    }

    HRESULT selectSingleNode(BSTR expression, IXMLDOMNode** out) override {
        writtenText = expression;
        return this->giveObject("selectSingleNode", out, selected.GetInterfacePtr());
    }

    HRESULT transformNodeToObject(IXMLDOMNode* stylesheet, VARIANT output) override {
        HRESULT const code = this->answer("transformNodeToObject");
        passedStylesheet = stylesheet;
        passedOutput = output;
        return code;
    }

    /// The last text or expression that was passed in.
    std::wstring writtenText;

    /// What was passed for the last transformation; the stylesheet is not kept alive.
    IXMLDOMNode* passedStylesheet = nullptr;
    _variant_t passedOutput;

protected:
    explicit NodeOf(std::shared_ptr<Behaviour> shared) : Object<Interface>{std::move(shared)} {}
};

class Node final : public NodeOf<IXMLDOMNode> {
public:
    explicit Node(std::shared_ptr<Behaviour> shared) : NodeOf{std::move(shared)} {}
};

class Element final : public NodeOf<IXMLDOMElement> {
public:
    explicit Element(std::shared_ptr<Behaviour> shared) : NodeOf{std::move(shared)} {}

    std::wstring attribute;

    HRESULT setAttribute(BSTR attributeName, VARIANT value) override {
        HRESULT const code = answer("setAttribute");
        if (SUCCEEDED(code)) attribute = attributeName + std::wstring{L"="} + value.bstrVal;
        return code;
    }
};

class Attribute final : public NodeOf<IXMLDOMAttribute> {
public:
    explicit Attribute(std::shared_ptr<Behaviour> shared) : NodeOf{std::move(shared)} {
        type = NODE_ATTRIBUTE;
    }

    _variant_t value;

    HRESULT get_name(BSTR* out) override { return giveText("name", out, name); }

    HRESULT get_value(VARIANT* out) override {
        HRESULT const code = answer("value");
        VariantInit(out);
        return SUCCEEDED(code) ? VariantCopy(out, &value) : code;
    }

    HRESULT put_value(VARIANT) override { return answer("put value"); }
};

class ParseError final : public Object<IXMLDOMParseError> {
public:
    explicit ParseError(std::shared_ptr<Behaviour> shared) : Object{std::move(shared)} {}

    LONG code = 0;

    HRESULT get_errorCode(LONG* out) override { return give("errorCode", out, code); }

    HRESULT get_url(BSTR* out) override { return giveText("url", out, L""); }

    HRESULT get_reason(BSTR* out) override { return giveText("reason", out, L""); }

    HRESULT get_srcText(BSTR* out) override { return giveText("srcText", out, L""); }

    HRESULT get_line(LONG* out) override { return give("line", out, LONG{0}); }

    HRESULT get_linepos(LONG* out) override { return give("linepos", out, LONG{0}); }

    HRESULT get_filepos(LONG* out) override { return give("filepos", out, LONG{0}); }
};

class Schemas final : public Object<IXMLDOMSchemaCollection2> {
public:
    explicit Schemas(std::shared_ptr<Behaviour> shared) : Object{std::move(shared)} {}

    HRESULT add(BSTR namespaceURI, VARIANT schema) override {
        std::wstring const uri = namespaceURI == nullptr ? L"(null)" : namespaceURI;
        behaviour().calls.emplace_back(uri.empty() ? "for no namespace" : "for a namespace");
        bool const isObject = schema.vt == VT_UNKNOWN || schema.vt == VT_DISPATCH;
        behaviour().calls.emplace_back(isObject && schema.punkVal != nullptr ? "an object"
                                                                             : "none");
        return answer("add");
    }

    HRESULT get(BSTR, IXMLDOMNode** out) override {
        return giveObject("get", out, static_cast<IXMLDOMNode*>(nullptr));
    }

    HRESULT remove(BSTR) override { return answer("remove"); }

    HRESULT get_length(LONG* out) override { return give("length", out, LONG{0}); }

    HRESULT get_namespaceURI(LONG, BSTR* out) override {
        return giveText("namespaceURI", out, L"");
    }

    HRESULT addCollection(IXMLDOMSchemaCollection*) override { return answer("addCollection"); }

    HRESULT validate() override { return answer("validate schemas"); }

    HRESULT put_validateOnLoad(VARIANT_BOOL validates) override {
        return answer(validates == VARIANT_FALSE ? "put validateOnLoad false"
                                                 : "put validateOnLoad other");
    }

    HRESULT get_validateOnLoad(VARIANT_BOOL* out) override {
        return give("validateOnLoad", out, VARIANT_TRUE);
    }
};

class Document final : public NodeOf<IXMLDOMDocument3> {
public:
    explicit Document(std::shared_ptr<Behaviour> shared) : NodeOf{std::move(shared)} {}

    EnginePtr<IXMLDOMElement> root;
    WXmlNodePtr created;
    EnginePtr<IXMLDOMAttribute> createdAttribute;
    WXmlNodePtr imported;
    VARIANT_BOOL loads = VARIANT_TRUE;

    /// What was passed in last.
    _variant_t value;
    _variant_t createdType;
    std::wstring createdName;
    std::wstring createdNamespace;

    HRESULT get_documentElement(IXMLDOMElement** out) override {
        return giveObject("documentElement", out, root.GetInterfacePtr());
    }

    HRESULT putref_documentElement(IXMLDOMElement* element) override {
        HRESULT const code = answer("putref documentElement");
        if (SUCCEEDED(code)) root = EnginePtr<IXMLDOMElement>{element};
        return code;
    }

    HRESULT createNode(VARIANT kind, BSTR nodeName, BSTR space, IXMLDOMNode** out) override {
        createdType = kind;
        createdName = nodeName == nullptr ? L"(null)" : nodeName;
        createdNamespace = space == nullptr ? L"(null)" : space;
        return giveObject("createNode", out, created.GetInterfacePtr());
    }

    HRESULT createAttribute(BSTR, IXMLDOMAttribute** out) override {
        return giveObject("createAttribute", out, createdAttribute.GetInterfacePtr());
    }

    HRESULT load(VARIANT source, VARIANT_BOOL* isSuccessful) override {
        value = source;
        return give("load", isSuccessful, loads);
    }

    HRESULT loadXML(BSTR source, VARIANT_BOOL* isSuccessful) override {
        value = _variant_t{source};
        return give("loadXML", isSuccessful, loads);
    }

    HRESULT save(VARIANT destination) override {
        value = destination;
        return answer("save");
    }

    HRESULT get_parseError(IXMLDOMParseError** out) override {
        *out = nullptr;
        return answer("parseError");
    }

    HRESULT get_preserveWhiteSpace(VARIANT_BOOL* out) override {
        return give("preserveWhiteSpace", out, VARIANT_FALSE);
    }

    HRESULT put_preserveWhiteSpace(VARIANT_BOOL preserves) override {
        return answer(preserves == VARIANT_TRUE ? "put preserveWhiteSpace true"
                                                : "put preserveWhiteSpace other");
    }

    /// What `validate` answers with.
    EnginePtr<IXMLDOMParseError> error;

    HRESULT get_schemas(VARIANT* out) override {
        VariantInit(out);
        return answer("schemas");
    }

    HRESULT putref_schemas(VARIANT schemas) override {
        bool const isObject = schemas.vt == VT_UNKNOWN || schemas.vt == VT_DISPATCH;
        return answer(isObject ? "putref schemas" : "putref other");
    }

    HRESULT validate(IXMLDOMParseError** out) override {
        return giveObject("validate", out, error.GetInterfacePtr());
    }

    HRESULT setProperty(BSTR propertyName, VARIANT propertyValue) override {
        behaviour().property = propertyName;
        behaviour().propertyKind = propertyValue.vt;
        behaviour().propertyNumber = propertyValue.vt == VT_I2 ? propertyValue.iVal : SHORT{0};
        return answer("setProperty");
    }

    HRESULT getProperty(BSTR, VARIANT* out) override {
        VariantInit(out);
        return answer("getProperty");
    }

    HRESULT importNode(IXMLDOMNode*, VARIANT_BOOL deep, IXMLDOMNode** out) override {
        value = _variant_t{deep == VARIANT_TRUE};
        return giveObject("importNode", out, imported.GetInterfacePtr());
    }
};

/// A new object, owned by what is returned, and a plain pointer to arrange it by.
template <class Made, class Interface>
EnginePtr<Interface> make(std::shared_ptr<Behaviour> const& behaviour, Made*& object) {
    object = new Made{behaviour};
    return EnginePtr<Interface>{object, false};
}

} // namespace fake
