#pragma once

#include <xpath/token_redef.h>
#include <xpath/xpath_stream.h>

#include <memory>
#include <string_view>

// The stream a path object is parsed with: it wants the tokens only and ignores grammar actions.
class ParseToXPathElements : public TinyXPath::xpath_stream {
public:
    explicit ParseToXPathElements(std::string_view utf8) : xpath_stream(utf8) {
        adopt(std::make_unique<TinyXPath::token_redef>(*this));
    }

    void action(int, int, int, int) override {}

    int question(int, int, int, int) override { return 0; }
};
