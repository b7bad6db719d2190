#pragma once

// What tests of documents, nodes and values have in common. Including it makes every test of the
// program fail that leaves objects of the engine.

#include "FakeEngine.h"

#include <TibXml/TibXml.h>
#include <TibXml/tibutils/DataEncoding.h>
#include <com/Measures.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

class LeakCheck : public testing::EmptyTestEventListener {
    void OnTestStart(testing::TestInfo const&) override { before_ = count(); }

    void OnTestEnd(testing::TestInfo const&) override {
        EXPECT_EQ(count(), before_) << "objects of the engine were left behind";
    }

    static std::size_t count() noexcept { return tibxml::com::liveObjects() + fake::objects; }

    std::size_t before_ = 0;
};

inline bool const leaksAreChecked = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new LeakCheck);
    return true;
}();

/// Wide text in a form that test output shows.
inline std::string utf8(std::wstring_view text) {
    return TibUtils::DataEncoding::Utf8Encode(text);
}

/// A document that must load.
inline WXmlDoc loaded(wchar_t const* xml) {
    WXmlDoc document;
    EXPECT_TRUE(document.LoadFromString(xml)) << utf8(xml);
    return document;
}

/// The first node that a path selects from the root element; empty when there is none.
inline WXmlNode nodeAt(WXmlDoc const& document, wchar_t const* path) {
    return document.GetRootNode().GetNodeNoThrow(path);
}

/// The code of the `_com_error` that an action raises, `S_OK` when it raises nothing.
template <class Action>
HRESULT codeOf(Action const& action) {
    try {
        action();
        return S_OK;
    } catch (_com_error const& error) {
        return error.Error();
    }
}

/// The words that come with it.
template <class Action>
std::string descriptionOf(Action const& action) {
    try {
        action();
        return "nothing raised";
    } catch (_com_error const& error) {
        _bstr_t const words = error.Description();
        return words.length() == 0 ? "" : utf8({words, words.length()});
    }
}

/// The integer that an action throws.
template <class Action>
std::optional<int> intOf(Action const& action) {
    try {
        action();
        return std::nullopt;
    } catch (int number) {
        return number;
    }
}

/// The message of the `WXmlValueTypeNotFoundException` that an action throws.
template <class Action>
std::string missingTypeOf(Action const& action) {
    try {
        action();
        return "nothing thrown";
    } catch (WXmlValueTypeNotFoundException const& missing) {
        return utf8(missing.GetMessageW());
    }
}
