// What libxslt and libxml2 say while this thread compiles or applies a stylesheet.
#pragma once

#include <string>
#include <string_view>

#include <libxslt/xsltInternals.h>

#include <libxml/LibxmlErrors.h>
#include <tree/Document.h>

namespace tibxml::transform {

/// Collects it instead of letting it be printed.
///
/// libxslt has one handler for the whole process for what it cannot tie to a transformation, such
/// as everything about compiling. While any of these lives that handler is one that hands what
/// other threads' own use of libxslt says on to the handler that was there before; afterwards that
/// is back in its place. libxml2's handler is the thread's own.
class TransformErrors {
public:
    /// `document` and `url` are those of the stylesheet, for naming places in it.
    TransformErrors(tree::Document const& document, std::string_view url);
    TransformErrors(TransformErrors const&) = delete;
    TransformErrors& operator=(TransformErrors const&) = delete;
    ~TransformErrors();

    /// Makes a context report here as well, in the same way.
    static void watch(xsltTransformContext& context) noexcept;

    /// In one line: where (in the stylesheet by a path, in what it imports by file and line), and
    /// what was said first; what the stylesheet itself said last if there was no error.
    std::string reason() const;

    /// The same for a fault that they did not report, in an element of a stylesheet.
    std::string reasonAt(xmlNode const& element, std::string_view words) const;

    /// Whether an instruction was to be run that libxslt does not know and that has no substitute,
    /// which libxslt says and ignores.
    bool missesInstruction() const noexcept { return missesInstruction_; }

    /// What the stylesheet itself said, a line for each message; only the first 64 KiB or so.
    std::string const& messages() const noexcept { return messages_; }

    /// Throws std::bad_alloc if libxml2 or libxslt ran out of memory meanwhile.
    void requireMemory() const;

private:
    friend struct TransformErrorEvents; // the functions that the libraries call

    // Text as it is, such as a message, or words of the libraries.
    void addPiece(std::string_view text, bool isText);
    void addLine(std::string line);
    void addMessage(std::string_view text);
    void addWords(std::string_view words);
    void addDetail(std::string_view text);
    void addParserError(xmlError const& error);
    std::string placeIn(std::string_view announcement) const;
    std::string placeOf(std::string_view file, std::size_t line, std::string_view element) const;
    std::string pathOfElement(std::size_t number) const;

    tree::Document const& document_;
    std::string url_;
    TransformErrors* outer_;
    bool announced_ = false; // the next piece is an error
    bool isOutOfMemory_ = false;
    bool missesInstruction_ = false;
    std::string place_;
    std::string errors_;
    std::string details_;
    std::string message_; // the last
    std::string messages_;
    libxml::LibxmlErrors libxmlErrors_;
};

/// For what the language forbids and libxslt only warns of: throws TransformError when a stylesheet
/// that has been compiled, with all that it includes and
/// imports, breaks one of these rules:
/// - instructions of XSLT have the names of version 1.0, unless the version there is another one;
/// - formats for numbers that are declared again are equal.
void requireRules(xsltStylesheet* style, TransformErrors const& errors);

} // namespace tibxml::transform
