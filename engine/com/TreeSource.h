// Reads an open source into a tree.
#pragma once

#include <reader/Reader.h>

#include "Sources.h"

namespace tibxml::com {

class TreeSource final : public SourceReader {
public:
    // The document must be empty.
    explicit TreeSource(tree::Document& document) noexcept : document_{document} {}

    bool readBytes(reader::ByteSource& source, reader::ReadError& error) override {
        return reader::read(document_, source, error);
    }

    bool readText(std::wstring_view text, reader::ReadError& error) override {
        return reader::readWide(document_, text, error);
    }

private:
    tree::Document& document_;
};

} // namespace tibxml::com
