#include "NodeValue.h"

#include <algorithm>
#include <span>

#include <TibXml/platform/Base64.h>
#include <output/ReadableText.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>

#include "DeclarationRules.h"
#include "Failure.h"
#include "NodeOperations.h"
#include "Text.h"

namespace tibxml::com {

namespace {

void check(bool canBeWritten, char const* reason) {
    if (!canBeWritten) throw Failure{E_FAIL, reason};
}

void setComment(tree::Document& document, tree::Node* comment, std::string_view text) {
    check(text.find("--") == std::string_view::npos && !text.ends_with('-'),
          "a comment cannot hold \"--\" or end with \"-\"");
    tree::setText(document, comment, text);
}

void setInstruction(tree::Document& document, tree::Node* instruction, std::string_view text) {
    bool const startsBlank =
        !text.empty() && std::string_view{" \t\n"}.find(text.front()) != std::string_view::npos;
    check(text.find("?>") == std::string_view::npos && !startsBlank,
          "a processing instruction cannot hold \"?>\" or begin with white space");
    tree::setText(document, instruction, text);
}

void setValue(tree::Document& document, tree::Node* attribute, std::string_view value) {
    if (attribute->name->declaresNamespace && attribute->parent != nullptr) {
        check(!tree::isNamespaceNode(attribute), "a node of the namespace axis cannot be changed");
        checkDeclaration(attribute->parent, attribute, value);
    }
    tree::setText(document, attribute, value);
}

constexpr std::string_view dataTypes = "urn:schemas-microsoft-com:datatypes";
constexpr std::string_view base64 = "bin.base64";
constexpr VARTYPE byteArray = VT_ARRAY | VT_UI1;

bool equalsIgnoringCase(std::string_view a, std::string_view b) noexcept {
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

// The attribute that names the element's data type, under whatever prefix.
tree::Node* annotation(tree::Document& document, tree::Node const* element) noexcept {
    tree::Name const* const name = document.names().findExpanded("dt", dataTypes);
    return name != nullptr ? tree::findAttribute(element, name) : nullptr;
}

bool isBinary(NodeHandle& handle) noexcept {
    return binaryAnnotation(handle.storage(), handle.node()) != nullptr;
}

// A prefix for an element to declare: "dt", or that with a number where it means something else.
std::string freePrefix(tree::Node const* element) {
    std::string prefix = "dt";
    for (int number = 1; meaningAt(element, prefix); ++number)
        prefix = "dt" + std::to_string(number);
    return prefix;
}

void addAnnotation(tree::Document& document, tree::Node* element, std::string_view prefix) {
    tree::Name* const name = document.names().intern(prefix, "dt", dataTypes);
    tree::appendAttribute(document, element, tree::newAttribute(document, name, base64));
}

void annotate(tree::Document& document, tree::Node* element) {
    std::string const inScope{tree::prefixAt(element, dataTypes)};
    if (!inScope.empty() && meaningAt(element, inScope) == dataTypes)
        return addAnnotation(document, element, inScope);
    std::string const prefix = freePrefix(element);
    tree::Name* const name = document.names().intern("xmlns", prefix, tree::xmlnsNamespace);
    tree::Node* const declaration = tree::newAttribute(document, name, dataTypes);
    tree::appendAttribute(document, element, declaration);
    try {
        addAnnotation(document, element, prefix);
    } catch (...) {
        tree::unlink(document, declaration);
        tree::destroy(document, declaration);
        throw;
    }
}

VARIANT arrayVariant(std::span<BYTE const> bytes) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    void* data = nullptr;
    if (array == nullptr || FAILED(SafeArrayAccessData(array, &data))) throw std::bad_alloc{};
    std::copy(bytes.begin(), bytes.end(), static_cast<BYTE*>(data));
    SafeArrayUnaccessData(array);
    VARIANT value{};
    value.vt = byteArray;
    value.parray = array;
    return value;
}

// Base64 of an array of bytes of one dimension.
std::string encoded(SAFEARRAY* array) {
    void* data = nullptr;
    if (SafeArrayGetDim(array) != 1 || SafeArrayGetElemsize(array) != 1 ||
        FAILED(SafeArrayAccessData(array, &data)))
        throw Failure{E_INVALIDARG, "an array of bytes with one dimension is expected"};
    std::span<BYTE const> const bytes{static_cast<BYTE const*>(data),
                                      array->rgsabound[0].cElements};
    try {
        std::string text = platform::encodeBase64(bytes);
        SafeArrayUnaccessData(array);
        return text;
    } catch (...) {
        SafeArrayUnaccessData(array);
        throw;
    }
}

} // namespace

void setElementText(tree::Document& document, tree::Node* element, std::string_view text,
                    tree::Node* attribute) {
    tree::Node* const content =
        text.empty() ? nullptr : tree::newCharacterData(document, tree::NodeKind::text, text);
    try {
        document.lifetimes().removeChildren(element, attribute);
    } catch (...) {
        if (content != nullptr) tree::destroy(document, content);
        throw;
    }
    if (content != nullptr) tree::appendChild(document, element, content);
    element->flags &= static_cast<std::uint8_t>(~tree::breakInside);
}

void setContent(tree::Document& document, tree::Node* node, std::string_view text) {
    switch (node->kind) {
    case tree::NodeKind::element:
        return setElementText(document, node, text, binaryAnnotation(document, node));
    case tree::NodeKind::attribute: return setValue(document, node, text);
    case tree::NodeKind::comment: return setComment(document, node, text);
    case tree::NodeKind::processingInstruction: return setInstruction(document, node, text);
    case tree::NodeKind::text:
    case tree::NodeKind::cdata: return tree::setText(document, node, text);
    case tree::NodeKind::document:
    case tree::NodeKind::declaration: check(false, "this node has no text of its own to set");
    }
}

VARIANT dataType(NodeHandle& handle) {
    if (isBinary(handle)) return stringVariant(base64);
    VARIANT none{};
    none.vt = VT_NULL;
    return none;
}

void setDataType(NodeHandle& handle, BSTR name) {
    if (!handle.node()->is(tree::NodeKind::element))
        throw Failure{E_FAIL, "only elements have a data type"};
    XmlText const type{viewOf(name)};
    requireValid(type);
    if (!equalsIgnoringCase(type.view(), base64))
        throw Failure{E_FAIL, "there is no such data type"};
    tree::Document& document = handle.storage();
    if (tree::Node* const old = annotation(document, handle.node()))
        return tree::setText(document, old, base64);
    annotate(document, handle.node());
}

VARIANT typedValue(NodeHandle& handle) {
    std::string storage;
    // A blank more between two pieces of base64 means nothing.
    std::string_view const text = output::readableText(handle.storage(), handle.node(), storage);
    if (!isBinary(handle)) return stringVariant(text);
    auto const bytes = platform::decodeBase64(text);
    if (!bytes) throw Failure{E_FAIL, "the text is not base64"};
    return arrayVariant(*bytes);
}

void setTypedValue(NodeHandle& handle, VARIANT const& value) {
    bool const isReference = value.vt == (byteArray | VT_BYREF);
    if (value.vt != byteArray && !isReference)
        return setText(handle, stringIn(value, E_INVALIDARG));
    if (!isBinary(handle)) throw Failure{E_FAIL, "the node is not annotated as binary"};
    if (isReference && value.pparray == nullptr)
        throw Failure{E_INVALIDARG, "an array of bytes is expected"};
    SAFEARRAY* const array = isReference ? *value.pparray : value.parray;
    setElementText(handle.storage(), handle.node(), encoded(array), nullptr);
}

tree::Node* binaryAnnotation(tree::Document& document, tree::Node const* element) noexcept {
    tree::Node* const type = annotation(document, element);
    return type != nullptr && equalsIgnoringCase(type->text(), base64) ? type : nullptr;
}

} // namespace tibxml::com
