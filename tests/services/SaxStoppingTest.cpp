// Callbacks that stop the parse, and callbacks that throw.
#include "SaxRecorder.h"
#include "TestStreams.h"

#include <new>
#include <stdexcept>

namespace {

constexpr wchar_t const* sample =
    L"<?xml version='1.0'?><a b='1' xmlns:p='urn:p'>text<p:c d='2'><e/>&amp;<![CDATA[x]]></p:c>\n"
    L"<!--x--><?y z?><f> </f></a>";

struct Thrown {
    std::size_t at;
};

/// How many callbacks the sample makes, and their events.
struct Whole {
    Whole() {
        SaxRecorder recorder;
        EXPECT_TRUE(recorder.sax.ParseString(sample));
        calls = recorder.calls;
        events = recorder.take();
    }

    std::size_t calls;
    std::string events;
};

TEST(SaxStopping, WorksAtEveryEvent) {
    Whole const whole;
    ASSERT_GT(whole.calls, 14U);
    SaxRecorder recorder;
    for (std::size_t last = 0; last != whole.calls; ++last) {
        recorder.answer = [&](std::size_t call) { return call != last; };
        EXPECT_FALSE(recorder.sax.ParseString(sample)) << last;
        EXPECT_EQ(recorder.calls, last + 1) << "told something after it was stopped";
        EXPECT_TRUE(whole.events.starts_with(recorder.take())) << last;
    }
    recorder.answer = [](std::size_t) { return true; };
    EXPECT_TRUE(recorder.sax.ParseString(sample));
    EXPECT_EQ(recorder.take(), whole.events);
}

TEST(SaxStopping, AtTheSecondElementMakesTheParseFail) {
    WXmlSax sax;
    int elements = 0;
    auto start = [&](WXmlSaxText const*, std::vector<WXmlSaxAttribute> const*) {
        return ++elements != 2;
    };
    sax.OnStartElement.Bind(start);
    EXPECT_FALSE(sax.ParseString(L"<a><b/><c/></a>"));
    EXPECT_EQ(elements, 2);
}

TEST(SaxStopping, ByTheLastCallbackMakesTheParseFailToo) {
    WXmlSax sax;
    auto stop = [] { return false; };
    sax.OnEndDocument.Bind(stop);
    EXPECT_FALSE(sax.ParseString(L"<a/>"));
}

TEST(SaxStopping, HidesWhatIsWrongBehind) {
    SaxRecorder recorder;
    recorder.answer = [](std::size_t call) { return call != 1; };
    EXPECT_FALSE(recorder.sax.ParseString(L"<a><b></a>"));
    EXPECT_EQ(recorder.take(), "document <a>");
}

TEST(SaxThrowing, ReachesTheCallerFromEveryEvent) {
    Whole const whole;
    SaxRecorder recorder;
    for (std::size_t last = 0; last != whole.calls; ++last) {
        recorder.answer = [&](std::size_t call) {
            if (call == last) throw Thrown{call};
            return true;
        };
        try {
            recorder.sax.ParseString(sample);
            ADD_FAILURE() << "nothing thrown at " << last;
        } catch (Thrown const& thrown) {
            EXPECT_EQ(thrown.at, last);
        }
        EXPECT_EQ(recorder.calls, last + 1) << "told something after it threw";
        EXPECT_TRUE(whole.events.starts_with(recorder.take())) << last;
    }
    recorder.answer = [](std::size_t) { return true; };
    EXPECT_TRUE(recorder.sax.ParseString(sample));
    EXPECT_EQ(recorder.take(), whole.events);
}

template <class Exception>
void expectPassed(Exception const& exception) {
    SaxRecorder recorder;
    recorder.answer = [&](std::size_t) -> bool { throw exception; };
    EXPECT_THROW(recorder.sax.ParseString(sample), Exception);
    EXPECT_THROW(recorder.sax.ParseFile(L"/proc/self/status"), Exception);
}

TEST(SaxThrowing, PassesAnythingThatIsThrown) {
    expectPassed(1);
    expectPassed(std::runtime_error{"words"});
    expectPassed(std::bad_alloc{});
    expectPassed(_com_error{E_ABORT});
}

TEST(SaxThrowing, KeepsTheWords) {
    SaxRecorder recorder;
    recorder.answer = [](std::size_t) -> bool { throw std::runtime_error{"the disk is full"}; };
    try {
        recorder.sax.ParseString(sample);
        ADD_FAILURE() << "nothing thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "the disk is full");
    }
}

TEST(SaxThrowing, IsForgottenAfterwards) {
    SaxRecorder recorder;
    recorder.answer = [](std::size_t) -> bool { throw 1; };
    EXPECT_THROW(recorder.sax.ParseString(sample), int);
    recorder.answer = [](std::size_t) { return false; };
    EXPECT_FALSE(recorder.sax.ParseString(sample));
}

TEST(SaxThrowing, ByTheStreamReachesTheCaller) {
    SaxRecorder recorder;
    for (char const* const bytes : {"", "<a>", "<a>text</a>"}) {
        EXPECT_THROW(recorder.sax.ParseIStream(throwingStream(bytes, [] { throw Thrown{3}; })),
                     Thrown);
        EXPECT_THROW(recorder.sax.ParseIStream(throwingStream(bytes, [] { throw 1; })), int);
        EXPECT_EQ(recorder.take().find("end"), std::string::npos) << bytes;
    }
    EXPECT_TRUE(recorder.sax.ParseString(sample));
}

TEST(SaxThrowing, InAnInnerParseReachesTheOuterCaller) {
    SaxRecorder inner;
    inner.answer = [](std::size_t) -> bool { throw Thrown{7}; };
    SaxRecorder outer;
    outer.answer = [&](std::size_t) { return inner.sax.ParseString(L"<x/>"); };
    EXPECT_THROW(outer.sax.ParseString(sample), Thrown);
}

} // namespace
