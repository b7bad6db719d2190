// Parses a document into a tree.
#pragma once

#include <string_view>

#include "Parser.h"
#include "TreeBuilder.h"

namespace tibxml::reader {

class TreeParser final : public Parser {
public:
    TreeParser(tree::Document& document, ByteSource& source, EncodingRule rule, ReadError& error);

private:
    friend struct TreeEvents; // the functions that libxml2 calls

    void readDeclaration();
    std::string_view encodingName() const noexcept;
    std::string_view startTagSource() const noexcept;
    bool isAllToNextTag(std::string_view piece) const noexcept;
    bool isReference(char const* text) const noexcept;

    TreeBuilder builder_;
};

} // namespace tibxml::reader
