// Small stylesheets and documents over the whole language: the result has to be that of xsltproc.
#include "Pairs.h"
#include "Transforming.h"

#include <vector>

namespace transforming {

void PrintTo(Pair const& pair, std::ostream* stream) {
    *stream << pair.name;
}

namespace {

class Language : public testing::TestWithParam<Pair> {};

TEST_P(Language, GivesTheSameTree) {
    Pair const& pair = GetParam();
    Folder const folder;
    std::string const sheet = folder.write("style.xsl", stylesheet(pair.content));
    std::string const document = folder.write("document.xml", pair.document);
    std::string const expected = xsltproc(sheet, document);
    EXPECT_EQ(ours(sheet, document), expected);
    EXPECT_EQ(expected.front(), '<') << expected;
}

std::string nameOf(testing::TestParamInfo<Pair> const& tested) {
    return tested.param.name;
}

INSTANTIATE_TEST_SUITE_P(Templates, Language, testing::ValuesIn(templatePairs()), nameOf);
INSTANTIATE_TEST_SUITE_P(Construction, Language, testing::ValuesIn(constructionPairs()), nameOf);
INSTANTIATE_TEST_SUITE_P(Expressions, Language, testing::ValuesIn(expressionPairs()), nameOf);

} // namespace

} // namespace transforming
