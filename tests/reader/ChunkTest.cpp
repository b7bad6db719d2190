// The same events and the same tree however small the pieces are in which a document comes.
#include "Tables.h"
#include "Trace.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace tibxml::reader::test {

namespace {

constexpr std::size_t largestChunk = 64;

std::string resultOf(Trace const& trace) {
    ReadError const& error = trace.error;
    if (trace.isAccepted) return trace.lines;
    return std::string{upToTheError(trace.lines)} + error.reason + " " +
           std::to_string(error.line) + ":" + std::to_string(error.column) + " " +
           std::to_string(error.offset) + " " + std::to_string(error.code);
}

// Not printed when they differ, because they may be megabytes.
void expectSame(std::string const& chunked, std::string const& whole, std::string const& what,
                std::size_t size) {
    EXPECT_TRUE(chunked == whole) << what << " in pieces of " << size << ":\n"
                                  << chunked.substr(0, 2000) << "\ninstead of\n"
                                  << whole.substr(0, 2000);
}

void expectSameInChunks(std::string const& document, std::string const& what, std::size_t firstSize,
                        std::size_t step) {
    std::string const tree = resultOf(traceTree(Bytes{document}, WhiteSpace::dropped));
    std::string const events = resultOf(traceSax(Bytes{document}, Places::told));
    for (std::size_t size = firstSize; size <= largestChunk; size += step) {
        Bytes const pieces{document, size};
        expectSame(resultOf(traceTreeInSteps(pieces, size, WhiteSpace::dropped)), tree, what, size);
        expectSame(resultOf(traceSaxInSteps(pieces, size, Places::told)), events, what, size);
        if (testing::Test::HasFailure()) return;
    }
}

std::string contentOf(std::filesystem::path const& path) {
    std::ifstream in{path, std::ios::binary};
    return {std::istreambuf_iterator<char>(in), {}};
}

// With which it is refused.
std::string withoutDocumentType(std::string text) {
    std::size_t const begin = text.find("<!DOCTYPE");
    if (begin == std::string::npos) return text;
    std::size_t const close = text.find('>', begin);
    bool const hasSubset = text.find('[', begin) < close;
    return text.erase(begin, (hasSubset ? text.find("]>", begin) + 2 : close + 1) - begin);
}

// The documents that a folder's packages brought along: a number of them, spread over all.
std::vector<std::filesystem::path> someFilesBelow(std::filesystem::path const& folder) {
    std::vector<std::filesystem::path> files;
    if (!std::filesystem::is_directory(folder)) return files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator{folder})
        if (entry.is_regular_file() && entry.path().extension() == ".xml")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<std::filesystem::path> some;
    std::size_t const stride = std::max<std::size_t>(files.size() / 10, 1);
    for (std::size_t i = 0; i < files.size(); i += stride)
        some.push_back(files[i]);
    return some;
}

} // namespace

class Chunks : public testing::TestWithParam<std::string> {};

TEST_P(Chunks, OfEverySizeGiveTheSameForEachTable) {
    for (TableRow const& row : readTable(GetParam()))
        expectSameInChunks(row.document, row.origin + ": " + row.document, 1, 1);
}

INSTANTIATE_TEST_SUITE_P(Chapters, Chunks, testing::ValuesIn(tableNames()),
                         [](auto const& chapter) { return chapter.param; });

class ChunksOfFiles : public testing::TestWithParam<std::string> {};

// Of long documents only some sizes: what is in them comes often enough to be cut everywhere.
TEST_P(ChunksOfFiles, GiveTheSame) {
    std::vector<std::filesystem::path> const files = someFilesBelow(GetParam());
    if (files.empty()) GTEST_SKIP() << "not installed";
    for (std::filesystem::path const& file : files) {
        std::string const document = withoutDocumentType(contentOf(file));
        std::size_t const step = document.size() < 20'000 ? 1 : document.size() < 200'000 ? 9 : 31;
        expectSameInChunks(document, file.string(), 1, step);
    }
}

INSTANTIATE_TEST_SUITE_P(Packages, ChunksOfFiles,
                         testing::Values(TIBXML_EXAMPLES "/data", "/usr/share/X11/xkb/rules",
                                         "/usr/share/xml/iso-codes", "/usr/share/osinfo",
                                         "/usr/share/mime/packages"));

} // namespace tibxml::reader::test
