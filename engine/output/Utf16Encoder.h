// UTF-16 in either byte order.
#pragma once

#include <string>
#include <string_view>

#include "Encoder.h"

namespace tibxml::output {

class Utf16Encoder final : public Encoder {
public:
    enum class Order { littleEndian, bigEndian };

    // With a mark, the first bytes say which order it is.
    Utf16Encoder(Sink& bytes, Order order, bool mark) noexcept
        : bytes_{bytes},
          order_{order},
          markMissing_{mark} {}

    void write(std::string_view piece) override;

    void finish() override {}

private:
    void appendCharacter(char32_t character);
    void appendUnit(unsigned unit);

    Sink& bytes_;
    Order order_;
    bool markMissing_;
    std::string units_; // of one piece; kept for its storage
};

} // namespace tibxml::output
