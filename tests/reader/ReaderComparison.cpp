#include "ReaderComparison.h"

#include <algorithm>

#include "Peer.h"
#include "Trace.h"

namespace tibxml::reader::test {

namespace {

// The XML declaration, or what starts like one, in whatever encoding.
std::string declarationOf(std::string_view document) {
    std::string start{document.substr(0, 400)};
    std::erase_if(start, [](char c) { return c == '\0' || c >= 0x7F || c < 0; });
    return start.starts_with("<?xml") ? start.substr(0, start.find("?>")) : std::string{};
}

// Of UTF-8, UTF-16 or UTF-32, as far as the start shows it.
std::size_t unitSizeOf(std::string_view document) noexcept {
    using namespace std::string_view_literals;
    auto const startsWithOneOf = [&](auto... starts) {
        return (document.starts_with(starts) || ...);
    };
    if (startsWithOneOf("<\0\0\0"sv, "\0\0\0<"sv)) return 4;
    return startsWithOneOf("<\0"sv, "\0<"sv, "\xFF\xFE"sv, "\xFE\xFF"sv) ? 2 : 1;
}

bool holdsNul(std::string_view document, Entry) {
    std::size_t const size = unitSizeOf(document);
    for (std::size_t at = 0; at + size <= document.size(); at += size)
        if (document.substr(at, size).find_first_not_of('\0') == std::string_view::npos)
            return true;
    return false;
}

bool hasVersionWithoutMinorNumber(std::string_view document, Entry) {
    std::string const declaration = declarationOf(document);
    return declaration.find("'1.'") != std::string_view::npos ||
           declaration.find("\"1.\"") != std::string_view::npos;
}

bool lacksBlankBeforeStandalone(std::string_view document, Entry) {
    std::string const declaration = declarationOf(document);
    return declaration.find("'standalone") != std::string_view::npos ||
           declaration.find("\"standalone") != std::string_view::npos;
}

bool isLittleEndianUtf32(std::string_view document, Entry) {
    using namespace std::string_view_literals;
    return document.starts_with("<\0\0\0"sv);
}

// The peer looks at the first bytes even where the encoding is given.
bool isTextThatLooksEncoded(std::string_view document, Entry entry) {
    bool const isEbcdic = document.starts_with("\x4C\x6F\xA7\x94");
    return entry == Entry::text && (isEbcdic || unitSizeOf(document) != 1);
}

constexpr KnownDifference known[] = {
    {"[2] Char: NUL is none; the peer takes it for the end of the document", holdsNul, false},
    {"[26] VersionNum: '1.' [0-9]+; the peer takes 1. too", hasVersionWithoutMinorNumber, false},
    {"[32] SDDecl: begins with S; the peer does without it", lacksBlankBeforeStandalone, false},
    {"[4.3.3] UTF-32, least significant byte first: refused by the peer", isLittleEndianUtf32,
     true},
    {"[2] Char: what is given as UTF-8 is no UTF-16, whatever it looks like",
     isTextThatLooksEncoded, false},
};

KnownDifference const* knownAbout(std::string_view document, Entry entry) {
    auto const* const found =
        std::find_if(std::begin(known), std::end(known), [&](KnownDifference const& difference) {
            return difference.isAbout(document, entry);
        });
    return found != std::end(known) ? found : nullptr;
}

Trace tree(std::string_view document, Entry entry, WhiteSpace whiteSpace) {
    return entry == Entry::bytes ? traceTree(Bytes{document}, whiteSpace)
                                 : traceTreeOfText(document, whiteSpace);
}

Trace sax(std::string_view document, Entry entry) {
    return entry == Entry::bytes ? traceSax(Bytes{document}) : traceSaxOfText(document);
}

// The peer passes over the declaration of what holds anyway.
std::string withoutDeclarationsOfXml(std::string lines) {
    for (std::string_view const line : {"#xml=http://www.w3.org/XML/1998/namespace\n", "~xml\n"}) {
        std::size_t at = 0;
        while ((at = lines.find(line, at)) != std::string::npos) {
            if (at == 0 || lines[at - 1] == '\n') {
                lines.erase(at, line.size());
            } else {
                ++at;
            }
        }
    }
    return lines;
}

// Other encodings the peer converts by blocks, ahead of its events: it may find a wrong byte before
// it has told what stands in front of that.
bool isConverted(std::string_view document, Entry entry) {
    if (entry == Entry::text) return false;
    std::string declaration = declarationOf(document);
    std::transform(declaration.begin(), declaration.end(), declaration.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    bool const namesAnother = declaration.find("encoding") != std::string::npos &&
                              declaration.find("utf-8") == std::string::npos;
    return unitSizeOf(document) != 1 || namesAnother;
}

class Difference {
public:
    void verdict(char const* what, Trace const& ours, PeerTraces const& theirs) {
        if (ours.isAccepted == theirs.isAccepted) return;
        said_.append(what).append(ours.isAccepted ? ": accepted" : ": refused");
        said_.append(" (").append(ours.error.reason).append("), by the peer ");
        said_.append(theirs.isAccepted ? "accepted" : "refused (" + theirs.reason + ")") += '\n';
    }

    void lines(char const* what, std::string const& all, std::string_view theirs) {
        std::string const ours = withoutDeclarationsOfXml(all);
        if (ours == theirs) return;
        said_.append(what).append(":\n").append(ours).append("by the peer:\n").append(theirs);
    }

    std::string said() && { return std::move(said_); }

private:
    std::string said_;
};

} // namespace

std::span<KnownDifference const> knownDifferences() {
    return known;
}

std::string difference(std::string_view document, Entry entry) {
    PeerTraces const theirs = askPeer(document, entry == Entry::text);
    Trace const preserved = tree(document, entry, WhiteSpace::preserved);
    Trace const dropped = tree(document, entry, WhiteSpace::dropped);
    Trace const events = sax(document, entry);
    Difference found;
    KnownDifference const* const rule =
        preserved.isAccepted && theirs.isAccepted ? nullptr : knownAbout(document, entry);
    PeerTraces expected = theirs;
    if (rule != nullptr) expected.isAccepted = preserved.isAccepted && rule->mayBeAccepted;
    found.verdict("tree", preserved, expected);
    found.verdict("tree without white space", dropped, expected);
    found.verdict("events", events, expected);
    if (rule != nullptr) return std::move(found).said();
    found.lines("tree", preserved.lines, theirs.preserved);
    found.lines("tree without white space", dropped.lines, theirs.dropped);
    if (theirs.isAccepted) {
        found.lines("events", events.lines, theirs.sax);
    } else if (!isConverted(document, entry)) {
        found.lines("events up to the error", std::string{upToTheError(events.lines)},
                    upToTheError(theirs.sax));
    }
    return std::move(found).said();
}

} // namespace tibxml::reader::test
