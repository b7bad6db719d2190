#include <reader/SaxReader.h>

#include "Run.h"
#include "WideEvents.h"

namespace tibxml::reader {

namespace {

class ParsePlace final : public SaxPlace {
public:
    ParsePlace(Window& window, Grammar const& grammar, ReadError const& error) noexcept
        : window_{window},
          grammar_{grammar},
          error_{error} {}

    long line() const noexcept override { return error_.code != 0 ? error_.line : place().line; }

    long column() const noexcept override {
        return error_.code != 0 ? error_.column : place().column;
    }

private:
    Place place() const noexcept {
        return grammar_.here() != nullptr ? window_.placeOf(grammar_.here()) : Place{};
    }

    Window& window_;
    Grammar const& grammar_;
    ReadError const& error_;
};

bool readEvents(SaxEvents& events, Window& window, ReadError& error) {
    error = {};
    WideEvents consumer{events};
    Parser<WideEvents> parser{window, consumer};
    ParsePlace const place{window, parser, error};
    if (!events.start(place)) return false;
    try {
        if (!run(parser, window, error)) return false;
        consumer.endDocument();
        return true;
    } catch (ReadingStopped const&) {
        return false;
    }
}

} // namespace

bool readSax(SaxEvents& events, Input const& input, ReadError& error) {
    return withWindow(input, [&](Window& window) { return readEvents(events, window, error); });
}

} // namespace tibxml::reader
