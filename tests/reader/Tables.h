// Documents with the verdict that the standards give on them, written as data: data/*.txt, one file
// for each chapter. Line by line:
//
//   # a remark
//   [66] CharRef: …       a heading; what is said below it holds until the next one
//   in <a b='…'/>         the following rows are put in the place of the …; several of these in a
//                         row: once into each
//   as UTF-16 marked      the following documents are encoded, once in each byte order; so is
//   UTF-32
//   + <a/>                a row that is well-formed
//   - <a>¦<b/             a row that is refused, with the place where the reader finds it out
//   +chars 41-5A 5F       rows of one character each, for both ends of a range
//   -chars 40             the place is marked in the lines with "in" above
//
// Rows end with their line. \n \r \t \s (a blank) \\ \xE4 (a byte) \u{20AC} (a character) stand for
// what they say.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace tibxml::reader::test {

struct Place {
    long line = 1;
    long column = 1;

    bool operator==(Place const&) const = default;
};

std::ostream& operator<<(std::ostream& out, Place const& place);

// Where a text ends that starts a document: in lines and characters from 1, without the mark.
Place placeAfter(std::string_view utf8) noexcept;

struct TableRow {
    std::string origin; // file, line and heading
    std::string document;
    bool isAccepted = false;
    Place place;        // when it is refused
    bool isUtf8 = true; // or the document is in another encoding, or says so
};

// All rows of a file below data/. Throws std::runtime_error for a line that means nothing.
std::vector<TableRow> readTable(std::string const& file);

// The same from the text of one.
std::vector<TableRow> parseTable(std::string const& name, std::string_view text);

// Of the tables in which libxml2 gives the same verdicts.
std::vector<std::string> const& tableNames();

// And those in which it does not.
std::vector<std::string> allTableNames();

} // namespace tibxml::reader::test
