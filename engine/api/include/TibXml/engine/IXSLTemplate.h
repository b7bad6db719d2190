#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

class IXSLTemplate;

/// How far a processor is; the numbers of the platform's `READYSTATE`.
enum XslReadyState : std::int32_t {
    XSL_READYSTATE_UNINITIALIZED = 0, ///< there is no input yet
    XSL_READYSTATE_LOADED = 2,        ///< it can transform
    XSL_READYSTATE_INTERACTIVE = 3,   ///< it is transforming
    XSL_READYSTATE_COMPLETE = 4,      ///< it has transformed
};

inline constexpr IID IID_IXSLProcessor{
    0x2933BF92, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// One transformation by a compiled stylesheet, which can be run again, with the same input and
/// parameters or with others. Rules for pointers as for `IXMLDOMNode`.
class IXSLProcessor : public IUnknown {
public:
    /// What is transformed: an object variant with a document or an element of this engine, as for
    /// `IXMLDOMNode::transformNode`, or with a stream, which is read at once as `load` reads it.
    /// An empty or null variant takes the input away. `E_INVALIDARG` for anything else, `E_FAIL`
    /// for a stream that does not hold a document.
    virtual HRESULT put_input(VARIANT input) = 0;

    /// The node (for a stream, the document that was read) as an object variant; an empty one when
    /// there is none.
    virtual HRESULT get_input(VARIANT* input) = 0;

    /// The template that made this processor.
    virtual HRESULT get_ownerTemplate(IXSLTemplate** owner) = 0;

    /// The mode in which the first template is looked for; null or empty for none. `E_INVALIDARG`
    /// for what is not a name without a prefix.
    virtual HRESULT setStartMode(BSTR mode, BSTR namespaceURI = nullptr) = 0;

    /// Empty when there is none.
    virtual HRESULT get_startMode(BSTR* mode) = 0;
    virtual HRESULT get_startModeURI(BSTR* namespaceURI) = 0;

    /// Where the result goes: an object variant with a stream, to which it is written in the
    /// encoding of xsl:output, or with a document of this engine, whose content it replaces. An
    /// empty or null variant stands for a string, as if no output had been put. `E_INVALIDARG` for
    /// anything else.
    virtual HRESULT put_output(VARIANT output) = 0;

    /// The object that was put. Without one, the result of the last `transform` as a string, and an
    /// empty variant before that, after a failure and after `reset`.
    virtual HRESULT get_output(VARIANT* output) = 0;

    /// Transforms; `isDone` becomes true. `E_FAIL`, or what a stream answers when it is written to,
    /// with the reason as error information. Messages of xsl:message are the error information of
    /// a call that succeeds.
    virtual HRESULT transform(VARIANT_BOOL* isDone) = 0;

    /// Forgets the result. Input, output, mode and parameters stay.
    virtual HRESULT reset() = 0;

    /// One of `XslReadyState`.
    virtual HRESULT get_readyState(LONG* state) = 0;

    /// Gives an xsl:param at the top of the stylesheet a value: a string, a number (integers and
    /// double) or a boolean. It stays until it is given another one; an empty or null variant takes
    /// it away. A name that the stylesheet does not have is ignored. `E_INVALIDARG` for what is not
    /// a name without a prefix and for other kinds, nodes among them.
    virtual HRESULT addParameter(BSTR name, VARIANT value, BSTR namespaceURI = nullptr) = 0;

    /// `E_NOTIMPL`: stylesheets cannot call objects.
    virtual HRESULT addObject(IUnknown* object, BSTR namespaceURI) = 0;

    /// The stylesheet's document.
    virtual HRESULT get_stylesheet(IXMLDOMNode** stylesheet) = 0;

protected:
    ~IXSLProcessor() = default;
};

inline constexpr CLSID CLSID_XSLTemplate60{
    0x88D96A08, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

inline constexpr IID IID_IXSLTemplate{
    0x2933BF93, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A compiled stylesheet, from which any number of processors can be made. All of them belong to
/// one thread.
class IXSLTemplate : public IUnknown {
public:
    /// Compiles the stylesheet that a document holds; later changes to it change nothing here. Null
    /// takes the stylesheet away. `E_FAIL`, with the place as error information and the old
    /// stylesheet kept, when it does not compile; `E_INVALIDARG` for anything but documents of this
    /// engine.
    virtual HRESULT putref_stylesheet(IXMLDOMNode* stylesheet) = 0;

    /// The document; `S_FALSE` when there is none.
    virtual HRESULT get_stylesheet(IXMLDOMNode** stylesheet) = 0;

    /// A new processor for the stylesheet as it is now. `E_FAIL` when there is none.
    virtual HRESULT createProcessor(IXSLProcessor** processor) = 0;

protected:
    ~IXSLTemplate() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXSLProcessor> : InterfaceIs<IID_IXSLProcessor, IUnknown> {
};

template <>
struct tibxml::platform::InterfaceTraits<IXSLTemplate> : InterfaceIs<IID_IXSLTemplate, IUnknown> {};
