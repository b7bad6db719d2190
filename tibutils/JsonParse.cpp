#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/Json.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace TibUtils::Json {
namespace {

using Peer = nlohmann::json;

std::string withPlace(std::string const& reason, std::size_t line, std::size_t column) {
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason;
}

bool beginsCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

ParseError errorAt(std::string_view text, std::size_t offset, std::string const& reason) {
    std::string_view const before = text.substr(0, offset);
    std::string_view const lineBefore = before.substr(before.rfind('\n') + 1);
    auto const lines = std::count(before.begin(), before.end(), '\n');
    auto const characters = std::count_if(lineBefore.begin(), lineBefore.end(), beginsCharacter);
    return {reason, offset, static_cast<std::size_t>(lines) + 1,
            static_cast<std::size_t>(characters) + 1};
}

// The peer's message without its own name and place, and without the text that it read last, which
// goes further back than what is wrong.
std::string reasonIn(std::string message) {
    constexpr std::string_view lastRead = "; last read: '";
    for (std::string_view const end : {"] ", ": syntax error while parsing ", " - "}) {
        std::size_t const found = message.find(end);
        if (found != std::string::npos) message.erase(0, found + end.size());
    }
    std::size_t const read = message.find(lastRead);
    if (read == std::string::npos) return message;
    std::size_t const rest = message.rfind("'; expected ");
    return message.substr(0, read) +
           (rest > read && rest != std::string::npos ? message.substr(rest + 1) : "");
}

/// Where the peer has come to, which it does not give while all is well.
class Position {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = char const*;
    using reference = char const&;

    Position(char const* at, char const** reached) noexcept : at_{at}, reached_{reached} {}

    reference operator*() const noexcept { return *at_; }

    Position& operator++() noexcept {
        *reached_ = ++at_;
        return *this;
    }

    bool operator==(Position const& other) const noexcept { return at_ == other.at_; }

    bool operator!=(Position const& other) const noexcept { return at_ != other.at_; }

private:
    char const* at_;
    char const** reached_;
};

/// Takes the peer's events and makes values of them: its own values would not keep the order of
/// members, and would be a second copy of everything. Its functions are named as the peer wants.
class Builder {
public:
    explicit Builder(std::string_view text) noexcept : text_{text}, reached_{text.data()} {}

    Variant build() {
        // For the peer it would be the end, whatever comes after it.
        std::size_t const nul = text_.find('\0');
        if (nul != std::string_view::npos) throw errorAt(text_, nul, "NUL character");
        Position const first{text_.data(), &reached_};
        Position const last{text_.data() + text_.size(), &reached_};
        Peer::sax_parse(first, last, this);
        return std::move(result_);
    }

    bool null() { return add(NullType{}); }

    bool boolean(bool value) { return add(value); }

    bool number_integer(std::int64_t value) { return add(value); }

    bool number_unsigned(std::uint64_t value) { return add(value); }

    bool number_float(double value, std::string const&) { return add(value); }

    bool string(std::string& value) { return add(DataEncoding::Utf8Decode(value)); }

    // A kind of the peer's that no text has.
    bool binary(Peer::binary_t&) { return false; }

    bool start_object(std::size_t) { return open(Object{}); }

    bool start_array(std::size_t) { return open(Array{}); }

    bool end_object() { return close(); }

    bool end_array() { return close(); }

    bool key(std::string& name) {
        open_.back().name = DataEncoding::Utf8Decode(name);
        return true;
    }

    bool parse_error(std::size_t position, std::string const&, Peer::exception const& error) {
        throw errorAt(text_, position == 0 ? 0 : position - 1, reasonIn(error.what()));
    }

private:
    /// An object or array that has not ended, and the name of the value that comes next in it.
    struct Open {
        Variant container;
        CString name;
    };

    bool add(Variant value) {
        if (open_.empty()) {
            result_ = std::move(value);
        } else if (auto* const array = open_.back().container.TryGet<Array>()) {
            array->AddValue(std::move(value));
        } else {
            Open& object = open_.back();
            object.container.Get<Object>().AddValue(std::move(object.name), std::move(value));
        }
        return true;
    }

    bool open(Variant container) {
        if (open_.size() == MaxDepth) {
            auto const read = static_cast<std::size_t>(reached_ - text_.data());
            throw errorAt(text_, read - 1,
                          "objects and arrays deeper than " + std::to_string(MaxDepth));
        }
        open_.push_back({std::move(container), {}});
        return true;
    }

    bool close() {
        Variant container = std::move(open_.back().container);
        open_.pop_back();
        return add(std::move(container));
    }

    std::string_view text_;
    char const* reached_;
    std::vector<Open> open_;
    Variant result_;
};

} // namespace

ParseError::ParseError(std::string const& reason, std::size_t offset, std::size_t line,
                       std::size_t column)
    : std::runtime_error{withPlace(reason, line, column)},
      reasonAt_{withPlace({}, line, column).size()},
      offset_{offset},
      line_{line},
      column_{column} {}

ParseError::~ParseError() = default;

Variant Parse(std::string_view utf8) {
    return Builder{utf8}.build();
}

} // namespace TibUtils::Json
