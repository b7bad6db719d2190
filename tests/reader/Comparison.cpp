#include "Comparison.h"

#include <algorithm>

#include "Peer.h"
#include "Trace.h"

namespace tibxml::reader::test {

namespace {

// The XML declaration, or what starts like one, whatever the width of its characters.
std::string declarationOf(std::string_view document) {
    std::string start;
    for (char const c : document.substr(0, 400))
        if (c > 0) start += c;
    if (!start.starts_with("<?xml")) return {};
    return start.substr(0, start.find("?>"));
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

constexpr KnownDifference known[] = {
    {"[2] Char: NUL is none; the peer takes it for the end of the document", holdsNul},
    {"[26] VersionNum: '1.' [0-9]+; the peer takes 1. too", hasVersionWithoutMinorNumber},
    {"[32] SDDecl: begins with S; the peer does without it", lacksBlankBeforeStandalone},
    {"[4.3.3] UTF-32, least significant byte first: refused by the peer", isLittleEndianUtf32},
};

bool isKnown(std::string_view document, Entry entry) {
    return std::any_of(std::begin(known), std::end(known), [&](KnownDifference const& difference) {
        return difference.isAbout(document, entry);
    });
}

Trace tree(std::string_view document, Entry entry, WhiteSpace whiteSpace) {
    return entry == Entry::bytes ? traceTree(Bytes{document}, whiteSpace)
                                 : traceTreeOfText(document, whiteSpace);
}

Trace sax(std::string_view document, Entry entry) {
    return entry == Entry::bytes ? traceSax(Bytes{document}) : traceSaxOfText(document);
}

// Of a text that an error cuts off any piece may have come, and before an error at the very start
// the start of the document may have been told or not.
std::string_view comparable(std::string_view lines) noexcept {
    if (lines.starts_with("(\n")) lines.remove_prefix(2);
    if (lines.empty()) return lines;
    std::size_t const last = lines.rfind('\n', lines.size() - 2) + 1;
    return lines[last] == '"' ? lines.substr(0, last) : lines;
}

// The peer does not tell a declaration of the prefix xml, which says what holds anyway.
std::string withoutXml(std::string lines) {
    constexpr std::string_view line = "#xml=http://www.w3.org/XML/1998/namespace\n";
    for (std::size_t at = lines.find(line); at != std::string::npos; at = lines.find(line, at))
        lines.erase(at, line.size());
    return lines;
}

class Difference {
public:
    void verdict(char const* what, Trace const& ours, PeerTraces const& theirs) {
        if (ours.isAccepted == theirs.isAccepted) return;
        said_.append(what).append(ours.isAccepted ? ": accepted" : ": refused");
        said_.append(" (").append(ours.error.reason).append("), by the peer ");
        said_.append(theirs.isAccepted ? "accepted" : "refused (" + theirs.reason + ")") += '\n';
    }

    void lines(char const* what, std::string_view ours, std::string_view theirs) {
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
    bool const mayDiffer = isKnown(document, entry);
    bool const isExpected = mayDiffer && preserved.isAccepted != theirs.isAccepted;
    PeerTraces const expected =
        isExpected ? PeerTraces{preserved.isAccepted, {}, {}, {}, {}} : theirs;
    found.verdict("tree", preserved, expected);
    found.verdict("tree without white space", dropped, expected);
    found.verdict("events", events, expected);
    if (isExpected || (mayDiffer && !theirs.isAccepted)) return std::move(found).said();
    found.lines("tree", withoutXml(preserved.lines), theirs.preserved);
    found.lines("tree without white space", withoutXml(dropped.lines), theirs.dropped);
    if (theirs.isAccepted) {
        found.lines("events", events.lines, theirs.sax);
    } else {
        found.lines("events up to the error", comparable(events.lines), comparable(theirs.sax));
    }
    return std::move(found).said();
}

} // namespace tibxml::reader::test
