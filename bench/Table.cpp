#include "Table.h"

#include <cstdio>
#include <string>

namespace bench {

std::string formatted(char const* format, double value) {
    std::array<char, 32> text{};
    (void)std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string inUnit(double value, Unit unit) {
    if (value == absent) return "-";
    if (unit == Unit::bytes) return formatted("%.1f B", value);
    if (value < 1e-6) return formatted("%.0f ns", value * 1e9);
    if (value < 1e-3) return formatted("%.2f us", value * 1e6);
    return formatted("%.2f ms", value * 1e3);
}

namespace {

std::string ratioTo(Row const& row, Library peer) {
    if (row.values[peer] == absent) return "-";
    return formatted("%.2f", row.values[peer] / row.values[tibxml]);
}

std::string targetText(Row const& row) {
    std::string text;
    if (row.targets.pugixml > 0) text += formatted("pugixml %.4g ", row.targets.pugixml);
    if (row.targets.libxml2 > 0) text += formatted("libxml2 %.4g ", row.targets.libxml2);
    return text.empty() ? text : text + (isReached(row) ? "reached" : "MISSED");
}

constexpr char const* lineFormat = "%-50s %11s %11s %11s %9s %9s  %s\n";

} // namespace

bool isReached(Row const& row) {
    return row.values[pugixml] >= row.targets.pugixml * row.values[tibxml] &&
           row.values[libxml2] >= row.targets.libxml2 * row.values[tibxml];
}

void printHeading() {
    std::printf(lineFormat, "operation", libraryNames[tibxml], libraryNames[pugixml],
                libraryNames[libxml2], "pugixml/", "libxml2/", "at least");
    std::printf(lineFormat, "", "", "", "", "TibXml", "TibXml", "");
}

void printRow(Row const& row) {
    std::printf(lineFormat, row.name.c_str(), inUnit(row.values[tibxml], row.unit).c_str(),
                inUnit(row.values[pugixml], row.unit).c_str(),
                inUnit(row.values[libxml2], row.unit).c_str(), ratioTo(row, pugixml).c_str(),
                ratioTo(row, libxml2).c_str(), targetText(row).c_str());
    (void)std::fflush(stdout);
}

} // namespace bench
