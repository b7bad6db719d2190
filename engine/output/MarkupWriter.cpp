#include "MarkupWriter.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include <TibXml/platform/Utf.h>

namespace tibxml::output {

template <Place place>
void MarkupWriter::escaped(std::string_view text) {
    if (repertoire_ != nullptr) {
        escapedWithin<place>(*repertoire_, text);
        return;
    }
    for (;;) {
        std::size_t const plain = plainPrefix<place>(text);
        out_.append(text.substr(0, plain));
        if (plain == text.size()) return;
        out_.append(referenceFor(text[plain], place));
        text.remove_prefix(plain + 1);
    }
}

template <Place place>
void MarkupWriter::escapedWithin(Repertoire& repertoire, std::string_view text) {
    while (!text.empty()) {
        auto const [character, length] = platform::firstUtf8Character(text);
        std::string_view const known = referenceFor(text.front(), place);
        if (!known.empty()) {
            out_.append(known);
        } else if (repertoire.has(character)) {
            out_.append(text.substr(0, length));
        } else {
            reference(character);
        }
        text.remove_prefix(length);
    }
}

template void MarkupWriter::escaped<Place::text>(std::string_view);
template void MarkupWriter::escaped<Place::attributeValue>(std::string_view);

void MarkupWriter::reference(char32_t character) {
    std::array<char, 20> digits;
    auto const code = static_cast<std::uint32_t>(character);
    char const* const end = std::to_chars(digits.begin(), digits.end(), code).ptr;
    markup("&#");
    markup({digits.data(), static_cast<std::size_t>(end - digits.data())});
    markup(';');
}

void MarkupWriter::raw(std::string_view text, std::string_view where) {
    if (repertoire_ != nullptr) repertoire_->demand(text, where);
    out_.append(text);
}

// Puts the splitter before the last character of every `end` in the text.
void MarkupWriter::rawSplit(std::string_view text, std::string_view end, std::string_view splitter,
                            std::string_view where) {
    std::size_t found = text.find(end);
    while (found != std::string_view::npos) {
        std::size_t const head = found + end.size() - 1;
        raw(text.substr(0, head), where);
        markup(splitter);
        text.remove_prefix(head);
        found = text.find(end);
    }
    raw(text, where);
}

void MarkupWriter::comment(std::string_view text) {
    markup("<!--");
    rawSplit(text, "--", " ", "a comment");
    markup(text.ends_with('-') ? " -->" : "-->");
}

void MarkupWriter::processingInstruction(std::string_view target, std::string_view data) {
    markup("<?");
    name(target);
    if (!data.empty()) markup(' ');
    rawSplit(data, "?>", " ", "a processing instruction");
    markup("?>");
}

void MarkupWriter::cdata(std::string_view text) {
    markup("<![CDATA[");
    rawSplit(text, "]]>", "]]><![CDATA[", "a CDATA section");
    markup("]]>");
}

void MarkupWriter::declaration(std::string_view content) {
    markup("<?xml ");
    raw(content, "the XML declaration");
    markup("?>");
}

} // namespace tibxml::output
