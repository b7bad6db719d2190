// Documents read in the ways in which they come.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

#include <reader/Reader.h>
#include <tree/Document.h>

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

struct Reading {
    tree::DocumentRef document = tree::DocumentRef::adopt(tree::Document::create());
    ReadError error;
    bool done = false;

    tree::Node* top() const { return document->node(); }

    // The root element, which has to be there.
    tree::Node* root() const;
};

Reading readBytes(Bytes source, bool preserveWhiteSpace = false);
Reading readText(std::string_view utf8, bool preserveWhiteSpace = false);

// A line for the content of the document: <name a='v'>, "text", [cdata], <!comment>, <?target data>
// and </>; a mark for each dropped run of white space: | behind a node, ~ at the start of a parent.
std::string shape(Reading const& reading);

// What must hold after a failure: the reason is told and nothing of a tree shows.
void expectFailure(Reading const& reading, std::string_view what);

} // namespace tibxml::reader::test
