#include "Declaration.h"

#include <algorithm>
#include <string_view>

#include <tree/Text.h>

#include "Messages.h"
#include <reader/CharacterScan.h>

namespace tibxml::reader {

namespace {

constexpr std::string_view start = "<?xml";

bool isVersion(std::string_view text) noexcept {
    return text.size() > 2 && text.starts_with("1.") &&
           std::all_of(text.begin() + 2, text.end(), tree::isDigit<char>);
}

bool isLetter(char c) noexcept {
    return (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
}

bool isEncodingName(std::string_view text) noexcept {
    return !text.empty() && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return isLetter(c) || tree::isDigit(c) || c == '.' || c == '_' || c == '-';
           });
}

// Goes over the declaration's parts. Once the text has ended nothing is found any more.
class DeclarationText {
public:
    DeclarationText(char const* p, char const* end) noexcept : p_{p}, end_{end} {}

    char const* here() const noexcept { return p_; }

    bool hasEnded() const noexcept { return hasEnded_; }

    bool skipBlanks() noexcept {
        char const* const before = p_;
        while (p_ != end_ && tree::isBlank(*p_))
            ++p_;
        return p_ != before;
    }

    bool skip(std::string_view word) noexcept {
        std::string_view const rest{p_, static_cast<std::size_t>(end_ - p_)};
        if (rest.starts_with(word)) {
            p_ += word.size();
            return true;
        }
        hasEnded_ = hasEnded_ || word.starts_with(rest) || mayBeCut(p_, end_);
        return false;
    }

    void expect(std::string_view word) {
        if (!skip(word) && !hasEnded()) failAtCharacter(p_, end_, Message::badDeclaration, {word});
    }

    // What stands after '=', in quotes.
    std::string_view value() {
        skipBlanks();
        expect("=");
        skipBlanks();
        hasEnded_ = hasEnded_ || p_ == end_ || mayBeCut(p_, end_);
        if (hasEnded_) return {};
        char const quote = *p_;
        if (quote != '"' && quote != '\'')
            failAtCharacter(p_, end_, Message::badDeclaration, {"a quote"});
        char const* const begin = p_ + 1;
        p_ = std::find(begin, end_, quote);
        std::string_view const text{begin, static_cast<std::size_t>(p_ - begin)};
        hasEnded_ = p_ == end_;
        if (!hasEnded_) ++p_;
        return text;
    }

private:
    char const* p_;
    char const* end_;
    bool hasEnded_ = false; // in front of what was looked for
};

void append(std::string& content, std::string_view name, std::string_view value) {
    if (!content.empty()) content += ' ';
    content.append(name).append("=\"").append(value).append("\"");
}

// The name and value of a part that comes next, if it does and is as `isValid` wants it.
template <class Condition>
bool readPart(DeclarationText& text, std::string_view name, std::string& content, Message message,
              Condition isValid) {
    if (!text.skip(name)) return false;
    std::string_view const value = text.value();
    if (text.hasEnded()) return false;
    if (!isValid(value)) fail(message, value.data(), {value});
    append(content, name, value);
    return true;
}

void readParts(DeclarationText& text, std::string& content) {
    text.skipBlanks();
    bool const hasVersion = readPart(text, "version", content, Message::badVersion, isVersion);
    if (text.hasEnded()) return;
    if (!hasVersion) fail(Message::declarationWithoutVersion, text.here());
    bool mayGoOn = text.skipBlanks();
    if (mayGoOn && readPart(text, "encoding", content, Message::badEncodingName, isEncodingName))
        mayGoOn = text.skipBlanks();
    auto const isYesOrNo = [](std::string_view value) { return value == "yes" || value == "no"; };
    if (mayGoOn && readPart(text, "standalone", content, Message::badStandalone, isYesOrNo))
        text.skipBlanks();
}

} // namespace

bool isDeclaration(char const* p) noexcept {
    return std::string_view{p, start.size()} == start &&
           (tree::isBlank(p[start.size()]) || p[start.size()] == '?');
}

char const* readDeclaration(char const* p, char const* end, std::string& content) {
    content.clear();
    DeclarationText text{p + start.size(), end};
    readParts(text, content);
    if (text.hasEnded()) return nullptr;
    text.expect("?>");
    return text.hasEnded() ? nullptr : text.here();
}

} // namespace tibxml::reader
