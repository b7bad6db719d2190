// Memory runs out within the libraries that the engine calls: that is answered by a result and
// printed nowhere.
#include "Objects.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include <libxml/xmlmemory.h>
#include <malloc.h>

#include <TibXml/engine/IXMLDOMSchemaCollection.h>
#include <TibXml/platform/Variant.h>

#include "FailingAllocation.h"

namespace tibxml::com::test {

namespace {

void* take(std::size_t size) {
    return std::malloc(size);
}

// The other functions of the C library cannot be made to fail.
void* resize(void* block, std::size_t size) {
    void* const fresh = std::malloc(size);
    if (fresh == nullptr || block == nullptr) return fresh;
    std::memcpy(fresh, block, std::min(::malloc_usable_size(block), size));
    std::free(block);
    return fresh;
}

void giveBack(void* block) {
    std::free(block);
}

char* copyOf(char const* text) {
    std::size_t const size = std::strlen(text) + 1;
    auto* const copy = static_cast<char*>(std::malloc(size));
    if (copy != nullptr) std::memcpy(copy, text, size);
    return copy;
}

// Before main, so before anything uses libxml2.
bool const failsWithin = xmlMemSetup(giveBack, take, resize, copyOf) == 0;

// Runs a step with its first allocation failing, then its second, and so on until it gets through
// or has had so many of them.
template <class Step>
void expectSilence(std::size_t most, Step step) {
    ASSERT_TRUE(failsWithin);
    ASSERT_EQ(step(), S_OK); // whatever is made once is there
    testing::internal::CaptureStderr();
    std::size_t succeeding = 0;
    for (bool failed = true; failed && succeeding != most; ++succeeding) {
        FailingAllocation const failing{succeeding};
        static_cast<void>(step());
        failed = failing.happened();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_GT(succeeding, 5U);
}

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer's name

// Libxml2 itself loses the buffer of an input when it cannot make the input.
extern "C" [[gnu::visibility("default")]] char const* __lsan_default_suppressions() {
    return "leak:xmlAllocParserInputBuffer\n";
}

// NOLINTEND(bugprone-reserved-identifier)

TEST(LibraryMemory, WhenLoadingPrintsNothing) {
    Document const document = documentOf(L"<x/>");
    _bstr_t const text{L"<a b='1'><c xmlns='urn:c'>text &amp; more</c></a>"};
    expectSilence(1000, [&] {
        VARIANT_BOOL done = VARIANT_FALSE;
        return document->loadXML(text, &done);
    });
}

// Up to where the document is there as libxml2 wants it: libxslt cannot do without memory.
TEST(LibraryMemory, WhenPreparingATransformationPrintsNothing) {
    Document const document = documentOf(L"<a><b/></a>");
    Document const output = documentOf(L"<x/>");
    Document const stylesheet = documentOf(
        L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
        L"<xsl:template match='/'><out><xsl:value-of select='//b'/></out></xsl:template>"
        L"</xsl:stylesheet>");
    expectSilence(10, [&] {
        return document->transformNodeToObject(stylesheet.get(), variantOf(output.get()));
    });
}

} // namespace tibxml::com::test
