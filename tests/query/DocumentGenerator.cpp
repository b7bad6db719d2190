#include "DocumentGenerator.h"

namespace tibxml::query::test {

namespace {

constexpr char const* elementNames[] = {"a", "b", "c", "d", "e", "p:a", "p:b", "q:a"};
constexpr char const* words[] = {"x", "y", "xy z", "1", "2", "10", "-3", "2.5", " 7 ", "\xC3\xA4"};

} // namespace

std::string DocumentGenerator::makeWithNamespaces(int elements) {
    declares_ = true;
    return make(elements);
}

std::string DocumentGenerator::make(int elements) {
    left_ = elements;
    std::string out{"<?xml version='1.0'?>"};
    misc(out);
    out += "<root xmlns:p='urn:p' xmlns:q='urn:q' n='0'>";
    while (left_ > 0)
        content(out, 1);
    out += "</root>";
    misc(out);
    return out;
}

void DocumentGenerator::element(std::string& out, int depth) {
    --left_;
    std::string const name = elementNames[pick(8)];
    out += '<' + name;
    if (declares_) declarations(out);
    attributes(out);
    out += '>';
    int const parts = pick(depth < 6 ? 6 : 2);
    for (int i = 0; i < parts; ++i)
        content(out, depth + 1);
    out += "</" + name + '>';
}

void DocumentGenerator::content(std::string& out, int depth) {
    switch (pick(10)) {
    case 0:
    case 1: out += words[pick(10)]; break;
    case 2: cdata(out); break;
    case 3: misc(out); break;
    default:
        if (depth < 9 && left_ > 0) element(out, depth);
    }
}

// The peer makes one node of two sections in a row.
void DocumentGenerator::cdata(std::string& out) {
    if (out.ends_with("]]>")) return;
    out.append("<![CDATA[").append(words[pick(10)]).append("]]>");
}

void DocumentGenerator::attributes(std::string& out) {
    constexpr char const* names[] = {"id", "n", "k", "p:k"};
    for (char const* name : names)
        if (pick(3) == 0) out.append(" ").append(name).append("='").append(words[pick(9)]) += '\'';
    if (pick(12) == 0) out += pick(2) == 0 ? " xml:lang='en-GB'" : " xml:lang='de'";
}

void DocumentGenerator::declarations(std::string& out) {
    constexpr char const* prefixes[] = {"p", "q", "s", "longer"};
    constexpr char const* uris[] = {"urn:p", "urn:q", "urn:other",
                                    "urn:a-long-name-of-a-namespace"};
    for (char const* prefix : prefixes) {
        if (pick(6) == 0)
            out.append(" xmlns:").append(prefix).append("='").append(uris[pick(4)]) += '\'';
    }
    constexpr char const* defaults[] = {"urn:p", "urn:default"};
    if (pick(6) == 0) out.append(" xmlns='").append(defaults[pick(2)]) += '\'';
}

void DocumentGenerator::misc(std::string& out) {
    switch (pick(3)) {
    case 0: out.append("<!--").append(words[pick(6)]).append("-->"); break;
    case 1: out.append("<?t ").append(words[pick(6)]).append("?>"); break;
    default: out.append("<?u v?>"); break;
    }
}

} // namespace tibxml::query::test
