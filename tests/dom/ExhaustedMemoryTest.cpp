// Every allocation on the road from a text to a value and back fails in turn: each call then fails
// in its own way or gives the whole result, and nothing leaks.
#include "EngineTest.h"
#include "FailingAllocation.h"

#include <cstdlib>
#include <filesystem>
#include <limits>
#include <new>
#include <string>

namespace {

/// Whether a call either gave the right result or raised an error because memory ran out.
template <class Call>
bool gaveOrRaised(FailingAllocation const& failing, Call const& call) {
    try {
        return call();
    } catch (std::bad_alloc const&) {
        return failing.happened();
    } catch (_com_error const& error) {
        return failing.happened() && error.Error() == E_OUTOFMEMORY;
    }
}

/// Fails every allocation of a call that promises a result.
template <class Call>
void expectRaises(std::size_t least, Call const& call) {
    failEveryAllocation(least, [&](auto const& failing) { return gaveOrRaised(failing, call); });
}

/// Fails every allocation of a call that answers false when it did not work.
template <class Call>
void expectAnswers(std::size_t least, Call const& call) {
    failEveryAllocation(least, [&](auto const& failing) { return call() || failing.happened(); });
}

constexpr wchar_t const* settings =
    L"<a><b k='a value that is too long for any small string'>42</b><b/></a>";

class ExhaustedMemory : public testing::Test {
protected:
    WXmlDoc document = loaded(settings);
    WXmlNode root = document.GetRootNode();
    WXPath path{L"b[@k][string-length(@k) > 10][true()]"}; // too long for small strings, too
    WXmlNode b = root.GetNode(path);
};

TEST_F(ExhaustedMemory, LoadingIsFalse) {
    WXmlDoc loading;
    expectAnswers(5, [&] { return loading.LoadFromString(settings); });
    EXPECT_TRUE(loading.IsLoaded());
}

TEST_F(ExhaustedMemory, LookingUpIsFalse) {
    WXmlNode found;
    WXmlNodeList nodes;
    WXPath const all{L"//b"};
    expectAnswers(1, [&] { return root.GetNode(path, found); });
    expectAnswers(1, [&] { return root.DoesNodeExist(path); });
    expectAnswers(2, [&] { return root.GetNodes(path, nodes); });
    expectAnswers(2, [&] { return document.GetNodes(all, nodes); });
    EXPECT_TRUE(found == b);
    EXPECT_EQ(nodes.Count(), 2);
}

TEST_F(ExhaustedMemory, WhatPromisesAResultRaises) {
    expectRaises(1, [&] { return root.GetNode(path) == b; });
    expectRaises(2, [&] { return b.GetName() == L"b"; });
    expectRaises(2, [&] { return !b.GetXML().IsEmpty(); });
    expectRaises(2, [&] { return !document.SaveToString().IsEmpty(); });
    expectRaises(2, [&] { return root.GetNodes(path).Count() == 1; });
}

TEST_F(ExhaustedMemory, ReadingRaisesOrFindsNoTarget) {
    WXmlValueAccessor const value = b.Value();
    WXmlValueAccessor const attribute = b.Attribute(L"@k");
    expectRaises(1, [&] { return value.GetInt(-1) == 42; });
    expectAnswers(1, [&] { return attribute.Exists(); });
    // Without memory for the name of the attribute it reads as absent.
    failEveryAllocation(3, [&](auto const& failing) {
        return gaveOrRaised(failing, [&] {
            bool const found = attribute.GetString(L"none") != L"none";
            return found || failing.happened();
        });
    });
}

TEST_F(ExhaustedMemory, WritingRaisesOrFindsNoTarget) {
    constexpr wchar_t const* text = L"another value that is too long for any small string";
    WXmlValueAccessor attribute =
        b.Attribute(L"@a-new-attribute-with-a-name-too-long-for-any-small-string");
    failEveryAllocation(3, [&](auto const& failing) {
        return gaveOrRaised(failing, [&] {
            try {
                attribute.SetString(text);
                return true;
            } catch (WXmlValueTypeNotFoundException const&) {
                return failing.happened();
            }
        });
    });
    EXPECT_EQ(utf8(attribute.GetString()), utf8(text));
}

// Nothing else than these two is raised, and no memory is needed for the digits themselves.
TEST_F(ExhaustedMemory, WritingTheGreatestNumberRaisesTheEnginesExceptionOrFindsNoTarget) {
    WXmlValueAccessor value =
        b.Attribute(L"@a-new-attribute-with-a-name-too-long-for-any-small-string");
    failEveryAllocation(1, [&](auto const& failing) {
        try {
            value.SetUIntPtr(std::numeric_limits<unsigned long long>::max());
            return true;
        } catch (_com_error const& error) {
            return failing.happened() && error.Error() == E_OUTOFMEMORY;
        } catch (WXmlValueTypeNotFoundException const&) {
            return failing.happened();
        }
    });
    EXPECT_EQ(utf8(value.GetString()), "18446744073709551615");
}

TEST_F(ExhaustedMemory, ABackupIsARecordOrLeavesNoFile) {
    std::string folder = (std::filesystem::temp_directory_path() / "tibxml-backup-XXXXXX").string();
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    ::setenv("TMPDIR", folder.c_str(), 1);
    failEveryAllocation(3, [&](auto const& failing) {
        WDataBackup const* const record = document.Backup();
        bool const right = record != nullptr || failing.happened();
        delete record;
        return right;
    });
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    ::unsetenv("TMPDIR");
    std::filesystem::remove_all(folder);
}

TEST_F(ExhaustedMemory, ANodeThatIsHeldNeedsNoMemory) {
    bool isSame = false;
    bool failed = false;
    {
        FailingAllocation const failing{0};
        WXmlNode const copy = b;
        isSame = copy == b && document.GetRootNode() == root;
        failed = failing.happened();
    }
    EXPECT_TRUE(isSame);
    EXPECT_FALSE(failed);
}

TEST_F(ExhaustedMemory, HandlesNeedNoMemory) {
    WXmlNodeList const nodes = root.GetNodes(path);
    bool isSame = false;
    bool failed = false;
    {
        FailingAllocation const failing{0};
        WXmlNodeList const copy = nodes;
        WXmlDoc const same = document;
        WXmlNodeList list;
        WXmlDoc other{true};
        list = copy;
        other = same;
        isSame = list.Count() == 1 && other == document && b.GetOwnerDocument() == other;
        failed = failing.happened();
    }
    EXPECT_TRUE(isSame);
    EXPECT_FALSE(failed);
}

TEST_F(ExhaustedMemory, ACloneIsWholeOrEmpty) {
    CString const markup = root.GetXML();
    failEveryAllocation(4, [&](auto const& failing) {
        WXmlDoc const copy = document.Clone(); // raises nothing
        if (copy == WXmlDoc{}) return failing.happened();
        return gaveOrRaised(failing, [&] { return copy.GetRootNode().GetXML() == markup; });
    });
}

TEST_F(ExhaustedMemory, AllNodesOfADocumentAreAListOrNone) {
    WXPath const all{L"//b"};
    expectAnswers(2, [&] { return document.GetNodes(all).Count() == 2; });
}

} // namespace
