// What a reader says about a document, in lines of text that can be compared: one line for each
// event, whether it came as an event or lies in a tree.
//
//   ?version="1.0"         the XML declaration
//   #p=u                   the declaration of a namespace, before the element
//   <{u}p:a                the start of an element
//   @{u}p:b=v              its attributes
//   "text                  [cdata   !comment   ?target data
//   |                      white space that only laid the document out and was dropped
//   >                      the end of the element
//
// Line ends within are written as \n.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

#include <reader/Reader.h>
#include <reader/SaxReader.h>

namespace tibxml::reader::test {

// Gives at most `step` bytes at a time, and fails after `failAfter` bytes.
class Bytes final : public ByteSource {
public:
    static constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

    explicit Bytes(std::string_view bytes, std::size_t step = never, std::size_t failAfter = never)
        : bytes_{bytes},
          step_{step},
          failAfter_{failAfter} {}

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override;

private:
    std::string_view bytes_;
    std::size_t step_;
    std::size_t failAfter_;
    std::size_t done_ = 0;
};

// Writes the lines. Pieces of text in a row become one.
class TraceWriter {
public:
    void line(char kind, std::string_view text);
    void line(char kind, std::string_view uri, std::string_view qualified,
              std::string_view value = {});
    void text(std::string_view piece);
    void endText();

    std::string const& lines() const noexcept { return lines_; }

private:
    void append(std::string_view text);

    std::string lines_;
    bool isInText_ = false;
};

struct Trace {
    bool isAccepted = false;
    std::string lines; // for a tree that is refused: none
    ReadError error;
};

// What all readers have to agree on of the events of a document that is refused: of a text that the
// error cuts off any piece may have come, and before an error in the first bytes the document may
// have started or not.
std::string_view upToTheError(std::string_view lines) noexcept;

enum class WhiteSpace { preserved, dropped };

Trace traceTree(Bytes source, WhiteSpace whiteSpace);
Trace traceTreeOfText(std::string_view utf8, WhiteSpace whiteSpace);

// With the places of the starts of elements, if asked for: @line:column.
enum class Places { left, told };

Trace traceSax(Bytes source, Places places = Places::left);
Trace traceSaxOfText(std::string_view utf8, Places places = Places::left);

// The same when the reader looks at `windowSize` bytes at a time.
Trace traceTreeInSteps(Bytes source, std::size_t windowSize, WhiteSpace whiteSpace);
Trace traceSaxInSteps(Bytes source, std::size_t windowSize, Places places = Places::left);

} // namespace tibxml::reader::test
