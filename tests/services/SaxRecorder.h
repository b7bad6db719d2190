#pragma once

// A SAX object whose callbacks write down what they get.

#include "EngineTest.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Every event is one line: "document", "<name k='v'>", "text", "</name>", "end". Pieces of one
/// text are put together, so that lines do not depend on where the parser cuts.
class SaxRecorder {
public:
    SaxRecorder() {
        sax.OnStartDocument.Bind(startDocument_);
        sax.OnEndDocument.Bind(endDocument_);
        sax.OnStartElement.Bind(startElement_);
        sax.OnEndElement.Bind(endElement_);
        sax.OnCharacters.Bind(characters_);
    }

    SaxRecorder(SaxRecorder const&) = delete;
    SaxRecorder& operator=(SaxRecorder const&) = delete;

    WXmlSax sax;
    std::vector<std::string> events;

    /// How many callbacks there were, and what each of them answers, by its number from 0.
    std::size_t calls = 0;
    std::function<bool(std::size_t)> answer = [](std::size_t) { return true; };

    /// The length of the longest piece of text so far.
    int longest = 0;

    /// All events in one line, and a fresh start.
    std::string take() {
        std::string all;
        for (std::string const& event : events)
            all += event;
        events.clear();
        calls = 0;
        inText_ = false;
        return all;
    }

private:
    bool note(std::string event, bool isText = false) {
        if (isText && inText_) {
            events.back() += event;
        } else {
            events.push_back(std::move(event));
        }
        inText_ = isText;
        return answer(calls++);
    }

    static std::string textOf(wchar_t const* text, int length) {
        EXPECT_NE(text, nullptr);
        EXPECT_GE(length, 0);
        return utf8({text, static_cast<std::size_t>(length)});
    }

    static std::string markup(WXmlSaxText const& name,
                              std::vector<WXmlSaxAttribute> const& attributes) {
        std::string tag = "<" + textOf(name.text, name.length);
        for (WXmlSaxAttribute const& attribute : attributes) {
            tag += " " + textOf(attribute.name, attribute.nameLength) + "='" +
                   textOf(attribute.value, attribute.valueLength) + "'";
        }
        return tag + ">";
    }

    std::function<bool()> startDocument_ = [this] { return note("document "); };
    std::function<bool()> endDocument_ = [this] { return note(" end"); };
    std::function<bool(WXmlSaxText const*, std::vector<WXmlSaxAttribute> const*)> startElement_ =
        [this](WXmlSaxText const* name, std::vector<WXmlSaxAttribute> const* attributes) {
            return note(markup(*name, *attributes));
        };
    std::function<bool(WXmlSaxText const*)> endElement_ = [this](WXmlSaxText const* name) {
        return note("</" + textOf(name->text, name->length) + ">");
    };
    std::function<bool(WXmlSaxText const*)> characters_ = [this](WXmlSaxText const* piece) {
        EXPECT_GT(piece->length, 0) << "an empty piece of text";
        longest = std::max(longest, piece->length);
        return note(textOf(piece->text, piece->length), true);
    };

    bool inText_ = false;
};
