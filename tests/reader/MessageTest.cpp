// The reasons that documents are refused for: each is given by a document, and stands in
// docs/errors.md in the words in which it is given.
#include "Reading.h"
#include "Tables.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace tibxml::reader::test {

namespace {

// The numbers of what no small document gives: a token longer than 1 GiB, which the large inputs
// have, and a declaration of 64 KiB, for which there is a test below.
constexpr unsigned tokenTooLong = 11;
constexpr unsigned longDeclaration = 62;

std::string contentOf(std::string const& path) {
    std::ifstream file{std::string{TIBXML_SOURCES "/"} + path};
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// Number and sentence of each line of the page's table: | 1 | `the document is empty` |
std::map<unsigned, std::string> pageRows() {
    std::map<unsigned, std::string> rows;
    std::istringstream page{contentOf("docs/errors.md")};
    for (std::string line; std::getline(page, line);) {
        std::size_t const open = line.find(" | `");
        std::size_t const close = line.rfind("` |");
        bool const isRow = line.starts_with("| ") && open < close && close != std::string::npos;
        if (!isRow || line.find_first_not_of("0123456789", 2) != open) continue;
        unsigned const number = static_cast<unsigned>(std::stoul(line.substr(2)));
        rows[number] = line.substr(open + 4, close - open - 4);
    }
    return rows;
}

// Those of the enumeration, whose lines are of the form "    noRoot = 2,".
std::set<unsigned> numbersInCode() {
    std::set<unsigned> numbers;
    std::istringstream header{contentOf("engine/reader/Messages.h")};
    for (std::string line; std::getline(header, line);) {
        std::size_t const sign = line.find(" = ");
        if (line.starts_with("    ") && line.ends_with(',') && sign != std::string::npos)
            numbers.insert(static_cast<unsigned>(std::stoul(line.substr(sign + 3))));
    }
    return numbers;
}

// With %1 and so on standing for anything.
bool isOfForm(std::string_view reason, std::string_view sentence) {
    std::size_t mark = sentence.find('%');
    if (mark == std::string_view::npos) return reason == sentence;
    if (!reason.starts_with(sentence.substr(0, mark))) return false;
    reason.remove_prefix(mark);
    for (; mark != std::string_view::npos; mark = sentence.find('%')) {
        sentence.remove_prefix(mark + 2);
        std::string_view const next = sentence.substr(0, sentence.find('%'));
        std::size_t const at = next.empty() ? reason.size() : reason.find(next, 1);
        if (at == std::string_view::npos || at == 0) return false;
        reason.remove_prefix(at + next.size());
    }
    return reason.empty();
}

unsigned numberOf(ReadError const& error) {
    return error.code - errorNotWellFormed;
}

// The number in the row's heading: "file:line [7] name".
unsigned numberOf(TableRow const& row) {
    return static_cast<unsigned>(std::stoul(row.origin.substr(row.origin.find('[') + 1)));
}

} // namespace

TEST(Messages, AreGivenAsThePageSays) {
    std::map<unsigned, std::string> const page = pageRows();
    for (TableRow const& row : readTable("messages")) {
        ReadError const error = readBytes(Bytes{row.document}).error;
        std::string const what = row.origin + ": " + row.document + ": " + error.reason;
        EXPECT_EQ(numberOf(error), numberOf(row)) << what;
        EXPECT_EQ((Place{error.line, error.column}), row.place) << what;
        ASSERT_EQ(page.count(numberOf(row)), 1U) << what;
        EXPECT_TRUE(isOfForm(error.reason, page.at(numberOf(row)))) << what;
    }
}

TEST(Messages, AllHaveDocumentsThatTheyAreGivenFor) {
    std::set<unsigned> given{tokenTooLong, longDeclaration};
    for (TableRow const& row : readTable("messages"))
        given.insert(numberOf(row));
    EXPECT_EQ(given, numbersInCode());
}

TEST(Messages, AreAllOnThePage) {
    std::set<unsigned> told;
    for (auto const& [number, sentence] : pageRows())
        told.insert(number);
    EXPECT_EQ(told, numbersInCode());
    EXPECT_GT(told.size(), 50U);
}

TEST(Messages, AreComparedAsAWhole) {
    EXPECT_TRUE(isOfForm("<b> is a second", "<%1> is a second"));
    EXPECT_TRUE(isOfForm("x in y", "%1 in %2"));
    EXPECT_FALSE(isOfForm("x in y", "%1 on %2"));
    EXPECT_FALSE(isOfForm("<b> is a second one", "<%1> is a second"));
    EXPECT_FALSE(isOfForm("<> is a second", "<%1> is a second"));
    EXPECT_FALSE(isOfForm("the end", "the end of %1"));
}

TEST(Messages, TellOfADeclarationThatDoesNotEnd) {
    std::string const document =
        "<?xml version='1.0'" + std::string(70'000, ' ') + "encoding='US-ASCII'?><a/>";
    ReadError const error = readBytes(Bytes{document}).error;
    EXPECT_EQ(numberOf(error), longDeclaration);
    EXPECT_EQ(error.reason, pageRows()[longDeclaration]);
}

} // namespace tibxml::reader::test
