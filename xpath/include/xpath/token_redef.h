#pragma once

#include <xpath/token_syntax_decoder.h>

namespace TinyXPath {

class xpath_stream;

// The decoder of a stream: hands its actions on to the stream which owns it.
class token_redef : public token_syntax_decoder {
public:
    explicit token_redef(xpath_stream& owner) noexcept : stream(owner) {}

    void action(int rule, int alternative, int parts) override;
    int question(int rule, int alternative, int parts) override;

private:
    xpath_stream& stream;
};

} // namespace TinyXPath
