#include "Corpus.h"

#include <array>
#include <cstddef>

#include "Settings.h"
#include "strings/Strings.h"

namespace bench {

namespace {

constexpr std::size_t wantedSize = 5'000'000;
constexpr std::size_t nestingDepth = 100;
constexpr std::size_t sentencesPerParagraph = 6;

constexpr std::array<char const*, 12> attributeNames{"x",     "y",      "width",   "height",
                                                     "fill",  "stroke", "opacity", "layer",
                                                     "label", "font",   "size",    "visible"};

constexpr std::array<char const*, 15> words{"the",
                                            "reader",
                                            "gr\u00F6\u00DFer",
                                            "finds",
                                            "\u03BB\u03CC\u03B3\u03BF\u03C2",
                                            "a",
                                            "document",
                                            "pr\u00E8s",
                                            "\u0441\u043B\u043E\u0432\u043E",
                                            "with",
                                            "many",
                                            "pages",
                                            "\u65E5\u672C\u8A9E",
                                            "and",
                                            "more"};

std::string madeOf(std::string const& root, void (*appendPart)(std::string&, std::size_t)) {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + root + ">\n";
    out.reserve(wantedSize + wantedSize / 100);
    for (std::size_t i = 0; out.size() < wantedSize; ++i)
        appendPart(out, i);
    return out + "</" + root + ">\n";
}

void appendNest(std::string& out, std::size_t i) {
    for (std::size_t depth = 0; depth != nestingDepth; ++depth)
        out += "<group n=\"" + std::to_string((i + depth) % 1000) + "\">\n";
    out += "<leaf>value " + std::to_string(i) + "</leaf>\n";
    for (std::size_t depth = 0; depth != nestingDepth; ++depth)
        out += "</group>\n";
}

void appendRecord(std::string& out, std::size_t i) {
    out += "\t<shape id=\"" + std::to_string(i) + '"';
    for (std::size_t k = 0; k != attributeNames.size(); ++k) {
        out += std::string{" "} + attributeNames[k] + "=\"";
        out += k % 3 == 2 ? "a &lt; b" : "";
        out += std::to_string((i + 1) * (k + 3) % 9973) + '"';
    }
    out += "/>\n";
}

void appendWords(std::string& out, std::size_t first, std::size_t count) {
    for (std::size_t i = 0; i != count; ++i) {
        if (i != 0) out += ' ';
        out += words[(first + i * 7) % words.size()];
    }
}

void appendSentence(std::string& out, std::size_t i) {
    appendWords(out, i, 5 + i % 7);
    out += " <em>";
    appendWords(out, i + 3, 2);
    out += "</em>, ";
    appendWords(out, i + 5, 4 + i % 5);
    out += i % 4 == 1 ? " &amp; " : " ";
    out += "<a href=\"#p" + std::to_string(i) + "\">";
    appendWords(out, i + 8, 1);
    out += "</a>.\n";
}

void appendParagraph(std::string& out, std::size_t i) {
    if (i % 20 == 0) out += "<!-- page " + std::to_string(i / 20) + " -->\n";
    out += "<p>";
    for (std::size_t k = 0; k != sentencesPerParagraph; ++k)
        appendSentence(out, i * sentencesPerParagraph + k);
    out += "</p>\n";
}

std::string settingsDocument() {
    return largeSettings();
}

std::string stringMapDocument() {
    return stringMap({70, 1000});
}

std::string shortDocument() {
    return smallSettings();
}

} // namespace

std::string nestedGroups() {
    return madeOf("groups", appendNest);
}

std::string attributeRecords() {
    return madeOf("shapes", appendRecord);
}

std::string prose() {
    return madeOf("book", appendParagraph);
}

std::vector<CorpusDocument> const& corpus() {
    static std::vector<CorpusDocument> const all{
        {"settings", settingsDocument},    {"nested", nestedGroups},
        {"attributes", attributeRecords},  {"prose", prose},
        {"string map", stringMapDocument}, {"2 KB", shortDocument}};
    return all;
}

} // namespace bench
