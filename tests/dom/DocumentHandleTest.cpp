#include "EngineTest.h"

#include <type_traits>
#include <utility>

namespace {

static_assert(sizeof(WXmlDoc) == 3 * sizeof(void*), "with the table of functions and the flag");
static_assert(std::is_base_of_v<IBackupRestorable, WXmlDoc>);
static_assert(std::has_virtual_destructor_v<WXmlDoc>);
static_assert(!std::has_virtual_destructor_v<IBackupRestorable>);
static_assert(std::is_nothrow_move_constructible_v<WXmlDoc>);
static_assert(std::is_nothrow_move_assignable_v<WXmlDoc>);
static_assert(!std::is_constructible_v<WXmlDoc, wchar_t const*>, "a path is not a flag");
static_assert(!std::is_constructible_v<WXmlDoc, IXMLDOMDocument3*>, "a document is not a flag");
static_assert(!std::is_constructible_v<WXmlDoc, WXmlNodePtr>, "a node is not a flag");
static_assert(!std::is_constructible_v<WXmlDoc, EnginePtr<IXMLDOMDocument> const&>);
static_assert(!std::is_constructible_v<WXmlDoc, EnginePtr<IXMLDOMDocument2>&>);
static_assert(std::is_constructible_v<WXmlDoc, WXmlDocPtr&>);
static_assert(std::is_constructible_v<WXmlDoc, WXmlDocPtr>);
static_assert(std::is_constructible_v<WXmlDoc, std::nullptr_t>);

// Finds out, by loading white space, what the handle's own flag is.
bool preservesWhiteSpace(WXmlDoc& document) {
    EXPECT_TRUE(document.LoadFromString(L"<a> <b/> </a>"));
    return document.GetRootNode().GetNumChildren() == 3;
}

TEST(DocumentHandle, IsEmptyAtFirst) {
    WXmlDoc const document;
    EXPECT_FALSE(document.IsLoaded());
}

TEST(DocumentHandle, TakesAnEngineDocumentByAReferenceOfItsOwn) {
    auto const behaviour = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    auto const pointer = fake::make<fake::Document, IXMLDOMDocument3>(behaviour, engine);
    {
        WXmlDoc const document{pointer};
        EXPECT_EQ(engine->AddRef(), 3U);
        EXPECT_EQ(engine->Release(), 2U);
    }
    EXPECT_EQ(engine->AddRef(), 2U);
    engine->Release();
}

static_assert(noexcept(std::declval<WXmlDoc const&>().EngineDocument()));

TEST(DocumentHandle, GivesItsEngineDocumentWithAReferenceOfItsOwn) {
    auto const behaviour = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    auto const pointer = fake::make<fake::Document, IXMLDOMDocument3>(behaviour, engine);
    WXmlDocPtr given;
    {
        WXmlDoc const document{pointer};
        given = document.EngineDocument();
    }
    EXPECT_EQ(given, pointer);
    EXPECT_EQ(engine->AddRef(), 3U);
    engine->Release();
    EXPECT_TRUE(behaviour->calls.empty()) << "the document itself is not asked";
}

TEST(DocumentHandle, HasNoEngineDocumentWhileItIsEmpty) {
    WXmlDoc document;
    EXPECT_FALSE(document.EngineDocument());
    EXPECT_TRUE(document.LoadFromString(L"<a/>"));
    EXPECT_TRUE(document.EngineDocument());
    document.ReleaseDocument();
    EXPECT_FALSE(document.EngineDocument());
}

TEST(DocumentHandle, HasNoEngineDocumentAfterItWasMovedFrom) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDocPtr const engine = document.EngineDocument();
    WXmlDoc const target{std::move(document)};
    // NOLINTNEXTLINE(bugprone-use-after-move): what is left is tested
    EXPECT_FALSE(document.EngineDocument());
    EXPECT_EQ(target.EngineDocument(), engine);
}

TEST(DocumentHandle, SharesItsEngineDocumentWithCopiesAndWithWhatIsDoneThroughIt) {
    WXmlDoc const document = loaded(L"<a/>");
    WXmlDoc const copy = document; // NOLINT(performance-unnecessary-copy-initialization)
    WXmlDocPtr const engine = document.EngineDocument();
    EXPECT_EQ(copy.EngineDocument(), engine);
    EXPECT_TRUE(WXmlDoc{engine} == document);
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    EXPECT_EQ(engine->loadXML(_bstr_t{L"<b/>"}, &isLoaded), S_OK);
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "b");
}

TEST(DocumentHandle, ALoadMakesANewEngineDocument) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDocPtr const before = document.EngineDocument();
    EXPECT_TRUE(document.LoadFromString(L"<b/>"));
    EXPECT_NE(document.EngineDocument(), before);
    EXPECT_EQ(utf8(WXmlDoc{before}.GetRootNode().GetName()), "a");
}

TEST(DocumentHandle, AnEmptyPointerMakesAnEmptyHandle) {
    WXmlDoc const document{WXmlDocPtr{}};
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_TRUE(document == WXmlDoc{});
}

TEST(DocumentHandle, CopiesShareTheDocument) {
    WXmlDoc const document = loaded(L"<a/>");
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): what copies are is tested
    WXmlDoc const copy = document;
    copy.GetRootNode().Value().SetString(L"seen");
    EXPECT_EQ(utf8(document.GetRootNode().Value().GetString()), "seen");
    EXPECT_TRUE(copy == document);
    EXPECT_FALSE(copy != document);
}

TEST(DocumentHandle, CopyAssignmentSharesTheDocument) {
    WXmlDoc const document = loaded(L"<a/>");
    WXmlDoc other = loaded(L"<b/>");
    other = document;
    EXPECT_TRUE(other == document);
    other = document;
    EXPECT_TRUE(other == document);
}

TEST(DocumentHandle, AssigningToItselfDoesNothing) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc& same = document;
    document = same;
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "a");
    document = std::move(same);
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "a");
}

TEST(DocumentHandle, LoadingDetachesTheLoadingHandleOnly) {
    WXmlDoc a = loaded(L"<a/>");
    WXmlDoc const b = a;
    EXPECT_TRUE(a.LoadFromString(L"<other/>"));
    EXPECT_TRUE(a != b);
    EXPECT_EQ(utf8(b.GetRootNode().GetName()), "a");
    EXPECT_EQ(utf8(a.GetRootNode().GetName()), "other");
}

TEST(DocumentHandle, TheSameContentInTwoDocumentsIsNotEqual) {
    EXPECT_FALSE(loaded(L"<a/>") == loaded(L"<a/>"));
    EXPECT_TRUE(loaded(L"<a/>") != loaded(L"<a/>"));
}

TEST(DocumentHandle, EmptyHandlesAreEqualAndDifferFromOthers) {
    EXPECT_TRUE(WXmlDoc{} == WXmlDoc{});
    EXPECT_FALSE(loaded(L"<a/>") == WXmlDoc{});
    EXPECT_FALSE(WXmlDoc{} == loaded(L"<a/>"));
}

TEST(DocumentHandle, DifferentInterfacesOfOneDocumentAreEqual) {
    WXmlDoc const document = loaded(L"<a/>");
    EXPECT_TRUE(document.GetRootNode().GetOwnerDocument() == document);
}

TEST(DocumentHandle, MovingTakesTheDocument) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc const copy = document;
    WXmlDoc moved = std::move(document);
    EXPECT_TRUE(moved == copy);
    WXmlDoc assigned = loaded(L"<b/>");
    assigned = std::move(moved);
    EXPECT_TRUE(assigned == copy);
}

TEST(DocumentHandle, WhatWasMovedFromCanBeAssignedTo) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc taker = std::move(document);
    document = loaded(L"<b/>"); // NOLINT(bugprone-use-after-move): allowed
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "b");
    WXmlDoc again = std::move(document);
    document = taker; // NOLINT(bugprone-use-after-move): allowed
    EXPECT_TRUE(document == taker);
}

TEST(DocumentHandle, WhatWasMovedFromIsJustEmptyInWhateverIsDoneToIt) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc const taker = std::move(document);
    // NOLINTBEGIN(bugprone-use-after-move): not promised, but nothing may crash
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_TRUE(document == WXmlDoc{});
    document.ReleaseDocument();
    EXPECT_TRUE(WXmlDoc{document} == WXmlDoc{});
    EXPECT_TRUE(document.LoadFromString(L"<b/>"));
    // NOLINTEND(bugprone-use-after-move)
}

TEST(DocumentHandle, SwapExchangesDocumentsAndFlags) {
    WXmlDoc keeping{true};
    WXmlDoc dropping{false};
    EXPECT_TRUE(keeping.LoadFromString(L"<keeping/>"));
    keeping.Swap(dropping);
    EXPECT_FALSE(keeping.IsLoaded());
    EXPECT_EQ(utf8(dropping.GetRootNode().GetName()), "keeping");
    EXPECT_FALSE(preservesWhiteSpace(keeping));
    EXPECT_TRUE(preservesWhiteSpace(dropping));
}

TEST(DocumentHandle, TheFlagTravelsWithCopies) {
    WXmlDoc keeping{true};
    WXmlDoc copy = keeping;
    EXPECT_TRUE(preservesWhiteSpace(copy));
    WXmlDoc assigned{false};
    assigned = keeping;
    EXPECT_TRUE(preservesWhiteSpace(assigned));
    keeping = WXmlDoc{WXmlDocPtr{}};
    EXPECT_FALSE(preservesWhiteSpace(keeping));
}

TEST(DocumentHandle, TheFlagIsCopiedEvenWhenTheDocumentsAreTheSame) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc keeping{true};
    WXmlDoc shared{true};
    shared = document;
    EXPECT_FALSE(preservesWhiteSpace(shared));
    WXmlDoc both{false};
    both = keeping;
    EXPECT_TRUE(preservesWhiteSpace(both));
}

TEST(DocumentHandle, MoveConstructionLeavesTheFlagFalse) {
    WXmlDoc keeping{true};
    WXmlDoc moved = std::move(keeping);
    EXPECT_TRUE(preservesWhiteSpace(moved));
    keeping.Swap(moved); // NOLINT(bugprone-use-after-move): shows the flag that was left
    EXPECT_FALSE(preservesWhiteSpace(moved));
}

TEST(DocumentHandle, MoveAssignmentExchangesTheFlags) {
    WXmlDoc keeping{true};
    WXmlDoc dropping{false};
    dropping = std::move(keeping);
    EXPECT_TRUE(preservesWhiteSpace(dropping));
    EXPECT_FALSE(preservesWhiteSpace(keeping)); // NOLINT(bugprone-use-after-move): the flag is left
}

TEST(DocumentHandle, ADocumentOfTheEngineDoesNotPreserveWhiteSpaceOnTheNextLoad) {
    WXmlDoc document{WXmlDocPtr{}};
    EXPECT_FALSE(preservesWhiteSpace(document));
}

TEST(DocumentHandle, ReleasingMakesItEmptyAndLeavesCopiesAlone) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc const copy = document;
    document.ReleaseDocument();
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_TRUE(copy.IsLoaded());
    document.ReleaseDocument();
    EXPECT_TRUE(document == WXmlDoc{});
}

TEST(DocumentHandle, ADocumentThatDoesNotLetGoIsKept) {
    auto const behaviour = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    WXmlDoc document{fake::make<fake::Document, IXMLDOMDocument3>(behaviour, engine)};
    WXmlDoc const copy = document;
    behaviour->releaseThrows = true;
    document.ReleaseDocument();
    EXPECT_TRUE(document == copy);
    document.ReleaseDocument();
    EXPECT_TRUE(document == WXmlDoc{});
}

TEST(DocumentHandle, AFailureToTellTheIdentityIsRaised) {
    auto const behaviour = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    WXmlDoc const document{fake::make<fake::Document, IXMLDOMDocument3>(behaviour, engine)};
    behaviour->refused = {{IID_IUnknown, E_UNEXPECTED}};
    EXPECT_EQ(codeOf([&] { return document == WXmlDoc{}; }), E_UNEXPECTED);
    EXPECT_TRUE(document == WXmlDoc{document}) << "the same pointer needs no identity";
}

} // namespace
