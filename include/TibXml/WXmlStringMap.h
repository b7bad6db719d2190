#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

#include <map>
#include <memory>

class WXmlDoc;

/// Translates between fixed strings of a program, the keys, and their localised forms, within
/// contexts. The pairs are in an XML document:
///
///     <stringMap>
///       <context name="menu">
///         <string nonTranslatableString="open" locString="Öffnen"/>
///       </context>
///     </stringMap>
///
/// The name of the root element and all other content do not count. The first of several strings
/// with one key counts; contexts of one name are one context.
///
/// Localised forms are looked up in the document and remembered; keys are found among what is
/// remembered, and nowhere else. Every load forgets it all.
///
/// Copies share one document, whichever of them loads it, and remember for themselves. It lives as
/// long as any of them.
///
/// Threads: a map and its copies belong to one thread at a time, for looking up too.
class TIBXML_API WXmlStringMap {
public:
    /// A map without a document.
    WXmlStringMap();
    WXmlStringMap(WXmlStringMap const& other);
    WXmlStringMap& operator=(WXmlStringMap const& other);
    virtual ~WXmlStringMap();

    /// Loads a file; one that does not exist is an empty map. False when it cannot be read or is
    /// not well-formed: nothing is found then. Throws `std::bad_alloc`.
    bool Load(CString const& path);

    /// Loads the text of a document. False when it is not well-formed: nothing is found then.
    bool LoadFromString(CString const& text);

    /// Makes `locString` the localised form of the key `ntString`. False, with `locString` left as
    /// it was, when the context does not have the key, when its string has no localised form, and
    /// for contexts and keys with an apostrophe.
    ///
    /// Throws the integer 1 (an `int`) when nothing was ever loaded, `_com_error` when the engine
    /// fails, and `std::bad_alloc`.
    bool GetLocStringFromNTString(CString const& context, CString const& ntString,
                                  CString& locString) const;

    /// Makes `ntString` the key whose localised form is `locString`, the smallest of several. Only
    /// what `GetLocStringFromNTString` has found since the last load is known. False, with
    /// `ntString` left as it was, when there is none, and for every context with a ":".
    bool GetNTStringFromLocString(CString const& context, CString const& locString,
                                  CString& ntString) const;

private:
    WXmlDoc& GetXmlDoc() const noexcept;
    bool Find(CString const& context, CString const& ntString, CString& locString) const;

    std::shared_ptr<WXmlDoc> document;

    // Localised forms by context, ":" and key.
    mutable std::map<CString, CString> cache;
};
