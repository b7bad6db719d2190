#include "RandomDocument.h"

#include <algorithm>
#include <stdexcept>

#include <TibXml/platform/Utf.h>

namespace tibxml::reader::test {

namespace {

constexpr std::string_view elementNames[] = {
    "a", "b", "c", "item", "p:a", "p:b", "q:a", "\u00E4", "a1-.", "longer-name-than-sixteen"};
constexpr std::string_view attributeNames[] = {
    "b",   "c",         "d",        "id",     "p:b",
    "q:b", "xml:space", "xml:lang", "\u00E4", "longer-name-than-sixteen"};
constexpr std::string_view namespaceNames[] = {"u", "v", "u", "urn:\u00E4", "a b", "x&amp;y", ""};
constexpr std::string_view pieces[] = {
    "x",     "text",  " ",      "  ",        "\n",         "\r\n",
    "\r",    "\t",    "\u00E4", "\u20AC",    "\U0001F600", "&lt;",
    "&amp;", "&gt;",  "&quot;", "&apos;",    "&#32;",      "&#10;",
    "&#13;", "&#x9;", "&#228;", "&#x1F600;", "]",          "]]",
    ">",     "-",     "?",      "/",         "=",          "0123456789abcdefghijklmnopqrstuvw"};
constexpr std::string_view tokens[] = {"<",
                                       ">",
                                       "/>",
                                       "</",
                                       "<a",
                                       "<a>",
                                       "</a>",
                                       "<p:a>",
                                       " b='1'",
                                       "='",
                                       "'",
                                       "\"",
                                       "=",
                                       "&",
                                       ";",
                                       "&#",
                                       "&#x",
                                       "&amp;",
                                       "&x;",
                                       "&#0;",
                                       "&#xD800;",
                                       "<!--",
                                       "-->",
                                       "--",
                                       "<![CDATA[",
                                       "]]>",
                                       "]]",
                                       "<?",
                                       "?>",
                                       "<?p ",
                                       "<?xml",
                                       "<!DOCTYPE a>",
                                       "<!",
                                       ":",
                                       "xmlns=",
                                       " xmlns=''",
                                       " xmlns:p='v'",
                                       " xmlns:p=''",
                                       " xml:space='preserve'",
                                       "\r",
                                       "\n",
                                       " ",
                                       "\t",
                                       "\xC3",
                                       "\xA4",
                                       "\xE2\x82",
                                       "\xF0\x9F\x98",
                                       "\xED\xA0\x80",
                                       "\xC0\x80",
                                       "\xEF\xBF\xBE",
                                       "\xEF\xBB\xBF",
                                       "\xF4\x90\x80\x80",
                                       "\x01",
                                       "\x7F",
                                       "\xC2\x85",
                                       "\xE2\x80\xA8",
                                       "<?xml version='1.0'?>",
                                       " version='1.0'",
                                       " encoding='utf-8'",
                                       " standalone='yes'",
                                       "<p:x xmlns:p='u' xmlns:q='u' p:b='' q:b=''/>",
                                       " xmlns:xml='u'",
                                       " xmlns:xmlns='u'"};

} // namespace

std::string RandomDocument::wellFormed() {
    out_.clear();
    if (once(3)) declaration();
    misc();
    element(0);
    misc();
    return out_;
}

void RandomDocument::declaration() {
    out_ += once(2) ? "<?xml version='1.0'" : "<?xml version = \"1.1\"";
    if (once(2)) out_ += " encoding='utf-8'";
    if (once(4)) out_ += once(2) ? " standalone='yes'" : "\nstandalone=\"no\" ";
    out_ += "?>";
}

void RandomDocument::misc() {
    if (once(6)) blanks();
    if (once(8)) out_ += "<!-- top\r\n-->";
    if (once(8)) out_ += "<?top?>";
    if (once(6)) blanks();
}

void RandomDocument::blanks() {
    constexpr std::string_view kinds[] = {" ", "\n", "\t", "\r\n", "\r", "                       "};
    do {
        out_ += one(kinds);
    } while (once(3));
}

void RandomDocument::element(int depth) {
    std::string const name{one(elementNames)};
    out_ += '<' + name;
    attributes(depth);
    if (once(6)) blanks();
    if (once(4)) {
        out_ += "/>";
        return;
    }
    out_ += '>';
    for (std::uint32_t parts = pick(depth < 4 ? 5 : 2); parts != 0; --parts)
        content(depth);
    out_ += "</" + name;
    if (once(8)) blanks();
    out_ += '>';
}

// The root declares the prefixes, so that most names mean something.
void RandomDocument::attributes(int depth) {
    if (depth == 0) out_ += once(2) ? " xmlns:p='u' xmlns:q='v'" : " xmlns:q='w'\nxmlns:p=\"x\"";
    while (once(3))
        attribute();
    if (once(8)) out_.append(" xmlns='").append(one(namespaceNames)) += '\'';
    if (depth != 0 && once(8)) out_.append(" xmlns:p='").append(one(namespaceNames)) += '\'';
    if (once(8)) attribute();
}

void RandomDocument::attribute() {
    std::string_view const name = one(attributeNames);
    blanks();
    out_.append(name).append(once(6) ? " = \"" : "=\"");
    if (name == "xml:space") {
        out_ += once(2) ? "preserve" : "default";
    } else {
        text();
    }
    out_ += '"';
}

void RandomDocument::content(int depth) {
    switch (pick(8)) {
    case 0:
    case 1: text(); break;
    case 2: blanks(); break;
    case 3: out_ += once(3) ? "<![CDATA[]]>" : "<![CDATA[ <c>&x; ]] \r\n]]>"; break;
    case 4: out_ += once(2) ? "<!-- c - d -->" : "<!---->"; break;
    case 5: out_ += once(2) ? "<?t  some data ?>" : "<?\u00E4?>"; break;
    default: element(depth + 1);
    }
}

void RandomDocument::text() {
    do {
        out_ += one(pieces);
    } while (!once(4));
}

std::string RandomDocument::broken(std::string document) {
    for (std::uint32_t times = 1 + pick(3); times != 0; --times)
        breakOnce(document);
    return document;
}

void RandomDocument::breakOnce(std::string& document) {
    auto const size = static_cast<std::uint32_t>(document.size());
    if (size == 0) return;
    std::size_t const at = pick(size);
    std::size_t const length = std::min<std::size_t>(1 + pick(12), size - at);
    switch (pick(6)) {
    case 0: document[at] = static_cast<char>(document[at] ^ (1 << pick(8))); break;
    case 1: document[at] = document[pick(size)]; break;
    case 2: document.erase(at, length); break;
    case 3: document.insert(at, document.substr(pick(size), length)); break;
    case 4: document.insert(at, one(tokens)); break;
    default:
        if (once(4)) {
            document.resize(at);
        } else {
            document.replace(at, length, one(tokens));
        }
    }
}

std::string RandomDocument::inSomeEncoding(std::string const& document) {
    std::wstring wide;
    platform::appendWide(wide, document);
    bool const isLittle = once(2);
    std::string out = isLittle ? "\xFF\xFE" : "\xFE\xFF";
    if (once(2)) return "\xEF\xBB\xBF" + document;
    auto const put = [&](unsigned unit) {
        char const low = static_cast<char>(unit & 0xFFU);
        char const high = static_cast<char>(unit >> 8U);
        (out += isLittle ? low : high) += isLittle ? high : low;
    };
    for (wchar_t const w : wide) {
        auto const c = static_cast<unsigned>(w);
        if (c < 0x10000) {
            put(c);
        } else {
            put(0xD7C0 + (c >> 10U));
            put(0xDC00 + (c & 0x3FFU));
        }
    }
    return out;
}

} // namespace tibxml::reader::test
