#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>
#include <TibXml/tibutils/Optional.h>

#include <cstdint>
#include <vector>

/// One step of a path.
struct XPathElement {
    /// Everything of the step outside its brackets, exactly as written: axis, node test, "@", "*",
    /// "..", spaces. May be empty.
    CString name;

    /// The step's predicates in order of appearance, each without its enclosing "[" and "]".
    std::vector<CString> filterClauses;
};

/// A location path. It is, at once, a string, which is what queries take, and a list of steps, so
/// that callers can take it apart and give it predicates without cutting strings.
///
/// A path does not validate: every string makes some path. All it knows is a leading run of "/" and
/// "." (the prefix), "/" between steps and "[" ... "]" around a filter clause. Quotes protect what
/// is inside them; nested brackets are not matched. A quote without its partner ends the steps
/// where it stands. A path is empty when it has no steps; the prefix does not count, so "/" and "."
/// are empty.
///
/// A path made from a string answers with just that string as long as it is not changed. Otherwise,
/// and always for paths made from parts of another, the string is put together from the steps:
/// literals get single quotes, empty steps at the end vanish, and so do all "/" at the end. What is
/// not a Unicode character (a lone surrogate) becomes U+FFFD in the steps.
///
/// A path is a value: copies are independent of each other. Everything but the moves may throw
/// `std::bad_alloc`; whatever throws leaves the path as it was.
///
/// Threads: one path belongs to one thread at a time. Even the const operations write to it,
/// because its steps and its string are only worked out when they are needed.
class TIBXML_API WXPath {
public:
    /// An empty path without a prefix.
    WXPath() noexcept;

    /// The path which a string spells. Null counts as the empty string.
    WXPath(wchar_t const* path);
    WXPath(CString path) noexcept;

    WXPath(WXPath const& other);

    /// The other path is empty afterwards, but keeps its prefix.
    WXPath(WXPath&& other) noexcept;

    WXPath& operator=(WXPath const& other);

    /// As the move constructor. Moving a path to itself leaves its steps alone, but its string is
    /// put together from them from now on.
    WXPath& operator=(WXPath&& other) noexcept;

    ~WXPath();

    /// The string form. The pointer and the reference are good until the path is changed, assigned
    /// to or destroyed.
    operator wchar_t const*() const;
    operator CString const&() const;
    CString const& ToString() const;

    /// Whether the path has no steps.
    bool IsEmpty() const;

    /// Parts of the path as paths of their own. The root (the first step only) and the parent (all
    /// steps but the last) keep the prefix, so they stay absolute; the leaf (the last step only)
    /// and the child of the root (all steps but the first) are relative. The parent of a path of
    /// one step is just its prefix, such as "/". Every part of an empty path is an empty path
    /// without prefix.
    WXPath GetRoot() const;
    WXPath GetLeaf() const;
    WXPath GetParentOfLeaf() const;
    WXPath GetChildOfRoot() const;

    /// Copies the filter clause number `index`, counted from 0, of the last step into `clause`.
    /// False, and an empty `clause`, when there is none.
    bool GetFilterClause(std::int32_t index, CString& clause) const;

    /// Adds a filter clause to the last step, after those it has. A clause which holds a "=" and
    /// begins with "../" is meant for the step before, once for each "../": it is added there
    /// without them;
    /// "./" is taken off, too. False, with nothing added, when the path is empty or has fewer steps
    /// than the clause goes back.
    bool AddFilterClause(CString clause);

    /// Removes the first filter clause of the last step which equals `clause` apart from upper and
    /// lower case. It is not a fault when there is none.
    void RemoveFilterClause(CString const& clause);

    /// Moves every clause which begins with "../" or "./" to the step which it is about, as
    /// `AddFilterClause` does: `a/b[../@x='1']/c` becomes `a[@x='1']/b/c`. A clause which goes back
    /// further than there are steps stays as it is. One which holds no "=" goes to the last step. A
    /// clause which is about its own step stays in its place and only loses the "./" before it.
    void Normalize();

    /// Escapes the five special characters of XML in `text`, in place: "&", "<", ">", "'" and the
    /// double quote. Decimal character references (`&#38;`) are spared, but for one after a ";"
    /// which ended nothing; all other references are escaped like any text.
    static void ReplaceXMLEntities(CString& text);

    /// Undoes the escaping of these five in place, "&amp;" first, so `&amp;lt;` comes back as "<".
    /// Character references stay as they are.
    static void UnReplaceXMLEntities(CString& text);

private:
    using Elements = std::vector<XPathElement>;

    /// How far the text of the path has been taken apart.
    enum class Decomposition : std::uint8_t {
        done,           ///< `prefix` and `elements` hold the path
        pending,        ///< the text is still to be taken apart
        prefixIsPending ///< only the text's prefix is wanted: the steps have been moved away
    };

    WXPath(CString const& prefix, Elements::const_iterator first, Elements::const_iterator last);

    bool AddFilterClause(std::uint64_t elementIndex, CString clause);
    void NormalizeElement(std::uint64_t elementIndex);
    void RebuildString() const;
    void InvalidateString() noexcept;

    Elements& Steps() const;
    CString const& Prefix() const;
    void Decompose() const;

    // Until the decomposition is done the text to be taken apart is `cachedString` or, without one,
    // `prefix`, and there are no elements.
    mutable TibUtils::optional<CString> cachedString;
    mutable CString prefix;
    mutable Elements elements;
    mutable Decomposition decomposition = Decomposition::done;
};
