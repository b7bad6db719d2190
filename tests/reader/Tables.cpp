#include "Tables.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <TibXml/platform/Utf.h>

namespace tibxml::reader::test {

namespace {

constexpr std::string_view placeMark = "\u00A6";
constexpr std::string_view gap = "\u2026";

std::string utf8Of(char32_t c) {
    std::string out;
    if (c < 0x80) return {static_cast<char>(c)};
    int const more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    unsigned const first = more == 1 ? 0xC0U : more == 2 ? 0xE0U : 0xF0U;
    out += static_cast<char>(first | (c >> (6 * more)));
    for (int i = more - 1; i >= 0; --i)
        out += static_cast<char>(0x80U | ((c >> (6 * i)) & 0x3FU));
    return out;
}

char32_t hexadecimal(std::string_view digits) {
    std::uint32_t value = 0;
    auto const [end, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (failure != std::errc{} || end != digits.data() + digits.size())
        throw std::runtime_error{"not a number: " + std::string{digits}};
    return value;
}

// What one escape after its backslash stands for; `rest` is moved after it.
std::string unescapedOne(std::string_view& rest) {
    char const kind = rest.empty() ? '\0' : rest.front();
    std::size_t length = 1;
    std::string out;
    constexpr std::string_view letters = "nrts\\";
    if (auto const letter = letters.find(kind); kind != '\0' && letter != std::string_view::npos) {
        out = std::string_view{"\n\r\t \\"}[letter];
    } else if (kind == 'x') {
        out = static_cast<char>(hexadecimal(rest.substr(1, 2)));
        length = 3;
    } else if (kind == 'u') {
        length = rest.find('}') + 1;
        out = utf8Of(hexadecimal(rest.substr(2, length - 3)));
    } else {
        throw std::runtime_error{"no escape: \\" + std::string{rest.substr(0, 1)}};
    }
    rest.remove_prefix(length);
    return out;
}

std::string unescaped(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        std::size_t const plain = std::min(text.find('\\'), text.size());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        text.remove_prefix(1);
        out += unescapedOne(text);
    }
    return out;
}

void replaceAll(std::string& text, std::string_view what, std::string_view with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

std::string encoded(std::string const& utf8, std::size_t unitSize, bool isLittle, bool isMarked) {
    std::wstring wide = isMarked ? L"\uFEFF" : L"";
    if (!platform::appendWide(wide, utf8)) throw std::runtime_error{"a row is not UTF-8"};
    std::string out;
    auto const put = [&](char32_t unit) {
        for (std::size_t i = 0; i != unitSize; ++i)
            out += static_cast<char>(unit >> (8 * (isLittle ? i : unitSize - 1 - i)));
    };
    for (wchar_t const w : wide) {
        auto const c = static_cast<char32_t>(w);
        if (unitSize == 4 || c < 0x10000) {
            put(c);
        } else {
            put(0xD7C0 + (c >> 10));
            put(0xDC00 + (c & 0x3FF));
        }
    }
    return out;
}

class TableParser {
public:
    explicit TableParser(std::string name) : name_{std::move(name)} {}

    void line(std::string_view text) {
        ++number_;
        if (text.empty() || text.starts_with('#')) return;
        if (text.starts_with('[')) return heading(text);
        if (text.starts_with("in ")) return context(text.substr(3));
        if (text.starts_with("as ")) return encoding(text.substr(3));
        if (text.starts_with("+ ") || text.starts_with("- "))
            return row(unescaped(text.substr(2)), text.front() == '+');
        if (text.starts_with("+chars ") || text.starts_with("-chars "))
            return characters(text.substr(7), text.front() == '+');
        throw std::runtime_error{origin() + ": a line that means nothing"};
    }

    std::vector<TableRow> take() { return std::move(rows_); }

private:
    std::string origin() const { return name_ + ":" + std::to_string(number_) + " " + heading_; }

    void heading(std::string_view text) {
        heading_ = text;
        contexts_.clear();
        unitSize_ = 1;
        isMarked_ = false;
    }

    void context(std::string_view text) {
        if (hasRows_) contexts_.clear();
        hasRows_ = false;
        contexts_.push_back(unescaped(text));
    }

    void encoding(std::string_view name) {
        unitSize_ = name.starts_with("UTF-16") ? 2 : 4;
        isMarked_ = name.ends_with("marked");
        isBig_ = !name.ends_with("LE");
        isLittle_ = !name.ends_with("BE");
    }

    void row(std::string const& text, bool isAccepted) {
        hasRows_ = true;
        if (contexts_.empty()) return document(text, isAccepted);
        for (std::string whole : contexts_) {
            replaceAll(whole, gap, text);
            document(std::move(whole), isAccepted);
        }
    }

    void characters(std::string_view ranges, bool isAccepted) {
        std::istringstream words{std::string{ranges}};
        for (std::string word; words >> word;) {
            std::size_t const dash = std::min(word.find('-'), word.size());
            std::string const first = word.substr(0, dash);
            std::string const last = word.substr(std::min(dash + 1, word.size()));
            row(utf8Of(hexadecimal(first)), isAccepted);
            if (!last.empty()) row(utf8Of(hexadecimal(last)), isAccepted);
        }
    }

    void document(std::string text, bool isAccepted) {
        std::size_t const place = text.find(placeMark);
        if (place == std::string::npos && !isAccepted)
            throw std::runtime_error{origin() + ": the place is not marked"};
        replaceAll(text, placeMark, "");
        TableRow made{origin(),
                      text,
                      isAccepted,
                      {},
                      unitSize_ == 1 && name_ != "encodings" && name_ != "messages"};
        if (!isAccepted) made.place = placeAfter(text.substr(0, place));
        if (unitSize_ == 1) return rows_.push_back(made);
        for (bool const isLittle : {false, true}) {
            if (!(isLittle ? isLittle_ : isBig_)) continue;
            made.document = encoded(text, unitSize_, isLittle, isMarked_);
            rows_.push_back(made);
        }
    }

    std::string name_;
    std::string heading_;
    std::vector<std::string> contexts_;
    std::vector<TableRow> rows_;
    int number_ = 0;
    bool hasRows_ = false;
    std::size_t unitSize_ = 1;
    bool isMarked_ = false;
    bool isBig_ = true;
    bool isLittle_ = true;
};

} // namespace

std::ostream& operator<<(std::ostream& out, Place const& place) {
    return out << place.line << ":" << place.column;
}

Place placeAfter(std::string_view utf8) noexcept {
    Place place;
    if (utf8.starts_with("\xEF\xBB\xBF")) utf8.remove_prefix(3);
    for (std::size_t i = 0; i != utf8.size(); ++i) {
        bool const isPair = utf8[i] == '\r' && i + 1 != utf8.size() && utf8[i + 1] == '\n';
        if (isPair) continue;
        if (utf8[i] == '\n' || utf8[i] == '\r') {
            place = {place.line + 1, 1};
        } else if ((static_cast<unsigned char>(utf8[i]) & 0xC0U) != 0x80U) {
            ++place.column;
        }
    }
    return place;
}

std::vector<TableRow> parseTable(std::string const& name, std::string_view text) {
    TableParser parser{name};
    std::istringstream lines{std::string{text}};
    for (std::string line; std::getline(lines, line);)
        parser.line(line);
    return parser.take();
}

std::vector<TableRow> readTable(std::string const& name) {
    std::ifstream file{std::string{TIBXML_READER_TABLES "/"} + name + ".txt"};
    if (!file) throw std::runtime_error{"there is no table " + name};
    std::ostringstream text;
    text << file.rdbuf();
    return parseTable(name, text.str());
}

std::vector<std::string> const& tableNames() {
    static std::vector<std::string> const names{"documents", "characters", "markup", "namespaces",
                                                "encodings"};
    return names;
}

std::vector<std::string> allTableNames() {
    std::vector<std::string> names = tableNames();
    names.push_back("strictness");
    return names;
}

} // namespace tibxml::reader::test
