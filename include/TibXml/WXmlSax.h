#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/Stream.h>

#include <memory>
#include <type_traits>
#include <vector>

class WXmlSaxImpl;

/// Characters that a callback gets, `length` of them and no NUL after them. They belong to the
/// parser and are valid during the callback only.
struct WXmlSaxText {
    wchar_t const* text;
    int length;
};

/// One attribute of an element that starts, with the same rule: its local name (without a prefix)
/// and its value.
struct WXmlSaxAttribute {
    wchar_t const* name;
    int nameLength;
    wchar_t const* value;
    int valueLength;
};

/// A place for a callback: a function, and what is passed to it first. It is empty when both are
/// null, as at first; a context without a function is not allowed and counts as empty.
///
/// The function answers true to go on and false to stop the parse. It may throw: that stops the
/// parse, and the exception arrives at the code that started it.
template <class... Arguments>
struct WXmlSaxCallback {
    void* context = nullptr;
    bool (*function)(void* context, Arguments... arguments) = nullptr;

    bool IsEmpty() const noexcept { return context == nullptr && function == nullptr; }

    void Clear() noexcept { *this = {}; }

    /// Calls an object, such as a lambda with captures, with the arguments and takes its result.
    /// The object is referred to, not copied, and nothing is allocated: it has to stay where it is
    /// as long as this callback may be called. So a temporary one is refused.
    template <class Callable>
    void Bind(Callable& callable) noexcept {
        static_assert(std::is_invocable_r_v<bool, Callable&, Arguments...>,
                      "the object takes other arguments, or does not answer a truth value");
        static_assert(std::is_object_v<Callable>, "a plain function is put into `function`");
        context = const_cast<std::remove_const_t<Callable>*>(std::addressof(callable));
        function = [](void* bound, Arguments... arguments) -> bool {
            return (*static_cast<Callable*>(bound))(arguments...);
        };
    }

    template <class Callable>
    void Bind(Callable const&& temporary) = delete;
};

/// Streams through a document without building a tree: what is in it goes to callbacks, in its
/// order, and any of them can stop the parse. Memory does not grow with the document.
///
/// Elements and attributes are reported by their local names; prefixes, namespaces, comments and
/// processing instructions are not told, and namespace declarations are not among the attributes.
/// Documents are read as strictly as `WXmlDoc` reads them: well-formed XML 1.0 with namespaces,
/// without a document type declaration, at most 256 elements inside each other.
///
/// An object can parse any number of times, one parse at a time, whatever way the one before ended.
/// It cannot be copied. Destroying it within a callback ends the parse with that callback.
///
/// Threads: an object belongs to one thread at a time; different objects are independent.
class TIBXML_API WXmlSax {
public:
    /// All callbacks empty. Throws `std::bad_alloc`.
    WXmlSax();
    WXmlSax(WXmlSax const&) = delete;
    WXmlSax& operator=(WXmlSax const&) = delete;
    virtual ~WXmlSax();

    /// The first event.
    WXmlSaxCallback<> OnStartDocument;

    /// The last event, when the document was well-formed to its end and no callback stopped the
    /// parse.
    WXmlSaxCallback<> OnEndDocument;

    /// An element starts: its local name and its attributes in source order, none for an element
    /// without attributes. The vector is valid during the callback only, as the texts are.
    WXmlSaxCallback<WXmlSaxText const*, std::vector<WXmlSaxAttribute> const*> OnStartElement;

    /// An element ends: its local name.
    WXmlSaxCallback<WXmlSaxText const*> OnEndElement;

    /// A piece of the text inside the root element, never empty: white space between elements and
    /// CDATA sections are text too, line ends are LF. One text may come in several pieces, cut
    /// anywhere but within a character.
    WXmlSaxCallback<WXmlSaxText const*> OnCharacters;

    /// Parse a file (a path, a `file:` URL, or a path with `%XX` in it, tried in this order), a
    /// text up to its NUL whatever encoding it declares, and a stream from its current position to
    /// its end.
    ///
    /// True when the whole document was read and no callback stopped it. False when a callback
    /// answered false, for malformed input, a source that is missing or fails, and null; events up
    /// to there were reported. The reason is the thread's error information: `GetErrorInfo` gives
    /// it, beginning with the line and column ("3:14: ...") where the document is at fault.
    ///
    /// They throw what a callback or the stream throws, once the parse has been ended, and
    /// `std::bad_alloc` or
    /// `_com_error` with `E_OUTOFMEMORY` when a text cannot be copied.
    bool ParseFile(wchar_t const* path);
    bool ParseString(wchar_t const* text);
    bool ParseIStream(IStream* stream);

private:
    WXmlSaxImpl* implementation;
};
