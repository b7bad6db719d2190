#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>
#include <TibXml/tibutils/Variant.h>

class WXmlNode;

// Elements as JSON values and back. An element is an object with up to three members:
// - "tag": a string, the qualified name;
// - "attributes": an object with a string for each attribute by its qualified name, namespace
//   declarations included; missing when there are none;
// - "children": an array of such objects, one for each child element in document order; missing
//   when there are no child nodes at all, empty when none of them is an element.
// Texts, comments and processing instructions do not travel.
//
// `TibUtils::Json` reads and writes such values as JSON text. Elements may lie as deep within each
// other as memory allows.
//
// Threads: as the node and the value, which belong to one thread at a time.

/// Appends the markup of an element to `xml`: attributes with the values that
/// `TibUtils::Json::ValueToString` gives them, and always an end tag. Names are written as they
/// are, so it is well-formed XML if they are good names. False, with `xml` left as it was, for a
/// value that is not an object with a string as its "tag".
///
/// What does not have the shape is left out: attributes that are not strings, children that are not
/// elements, "attributes" that are not an object and "children" that are not an array.
///
/// Throws `std::bad_alloc` and `std::length_error`, `xml` being as it was.
TIBXML_API bool JsonConvertToXml(TibUtils::Variant const& value, CString& xml);

/// Makes `value` the object that describes an element with all elements in it. Always true.
///
/// Throws `_com_error` when the engine fails, with `E_OUTOFMEMORY` or `std::bad_alloc` when there
/// is no memory for a part of it, with `E_POINTER` for an empty handle and for a node that is not
/// an element; `WXmlValueTypeNotFoundException` with "string" when the value of an attribute cannot
/// be read; the integer 0 (an `int`) when the engine gives no list of children. `value` is then an
/// object with those of "tag" and "attributes" that were had by then.
TIBXML_API bool JsonConvertFromXml(WXmlNode const& node, TibUtils::Variant& value);
