// libxslt has one error handler for the whole process: what the program's own use of libxslt
// reports on one thread goes there as ever while another thread transforms with us.
#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include <TibXml/TibXml.h>
#include <TibXml/tibutils/DataEncoding.h>
#include <libxml/parser.h>
#include <libxml/xpathInternals.h>
#include <libxslt/extensions.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

namespace {

// A thread that is in the middle of something, and stays there until it is let go.
class Visit {
public:
    // For the visitor. Stays once only.
    void stay() {
        std::unique_lock lock{mutex_};
        if (state_ != State::outside) return;
        change(State::inside);
        changed_.wait(lock, [&] { return state_ == State::leaving; });
    }

    // Lets the visitor go, or says that it has gone by itself.
    void end() {
        std::lock_guard const lock{mutex_};
        change(State::leaving);
    }

    // For the others. False when it has gone without staying.
    bool waitUntilInside() {
        std::unique_lock lock{mutex_};
        changed_.wait(lock, [&] { return state_ != State::outside; });
        return state_ == State::inside;
    }

private:
    enum class State { outside, inside, leaving };

    void change(State state) {
        state_ = state;
        changed_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    State state_ = State::outside;
};

thread_local Visit* visit = nullptr; // of this thread; null for those that do not stay

void stay() {
    if (visit != nullptr) visit->stay();
}

void stayInFunction(xmlXPathParserContext* context, int /*argumentCount*/) {
    stay();
    valuePush(context, xmlXPathNewBoolean(1));
}

xsltElemPreComp* stayInCompiler(xsltStylesheet* /*style*/, xmlNode* /*element*/,
                                xsltTransformFunction /*transform*/) {
    stay();
    return nullptr;
}

void doNothing(xsltTransformContext* /*context*/, xmlNode* /*node*/, xmlNode* /*instruction*/,
               xsltElemPreComp* /*compiled*/) {}

constexpr char const* visitNamespace = "urn:visit";

xmlChar const* bytes(char const* text) {
    return reinterpret_cast<xmlChar const*>(text);
}

std::string sheetWith(std::string const& content) {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
           "xmlns:v='urn:visit' extension-element-prefixes='v'>" +
           content + "</xsl:stylesheet>";
}

std::string templateWith(std::string const& content) {
    return sheetWith("<xsl:template match='/'><r>" + content + "</r></xsl:template>");
}

// What the process's handler got.
class Report {
public:
    Report() : thread_{std::this_thread::get_id()} {}

    void add(char const* format, va_list arguments) {
        char text[1000];
        std::vsnprintf(text, sizeof text, format, arguments);
        std::lock_guard const lock{mutex_};
        text_ += text;
        isFromElsewhere_ |= std::this_thread::get_id() != thread_;
    }

    // All of it since the last time.
    std::string take() {
        std::lock_guard const lock{mutex_};
        return std::exchange(text_, {});
    }

    // Whether any came from another thread than the one that made this.
    bool isFromElsewhere() {
        std::lock_guard const lock{mutex_};
        return isFromElsewhere_;
    }

private:
    std::mutex mutex_;
    std::thread::id const thread_;
    std::string text_;
    bool isFromElsewhere_ = false;
};

void note(void* data, char const* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    static_cast<Report*>(data)->add(format, arguments);
    va_end(arguments);
}

// The program's own use of libxslt, which reports while it compiles and while it runs.
void useLibxslt() {
    auto const document = [](std::string const& xml) {
        return xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "theirs", nullptr, 0);
    };
    xmlDoc* const broken = document(templateWith("<xsl:theirs/>"));
    xsltFreeStylesheet(xsltParseStylesheetDoc(broken));
    xsltStylesheet* const style = xsltParseStylesheetDoc(
        document(templateWith("<xsl:message>a message of theirs</xsl:message>")));
    xmlDoc* const source = document("<d/>");
    xmlFreeDoc(xsltApplyStylesheet(style, source, nullptr));
    xmlFreeDoc(source);
    xsltFreeStylesheet(style);
}

struct Use {
    char const* about;
    std::string stylesheet;
    bool works;
};

// Each stays in its middle.
Use const uses[] = {
    {"a good stylesheet", templateWith("<xsl:value-of select='v:stay()'/>"), true},
    {"one with a message", templateWith("<xsl:message>ours</xsl:message><v:stay/>"), true},
    {"one that stops", templateWith("<v:stay/><xsl:message terminate='yes'>ours</xsl:message>"),
     false},
    {"one that fails", templateWith("<xsl:value-of select='v:stay()'/><a b='{$ours}'/>"), false},
    {"one that is none", templateWith("<v:stay/><xsl:ours/>"), false},
};

bool transforms(Use const& use) {
    WXmlDoc sheet;
    EXPECT_TRUE(sheet.LoadFromString(TibUtils::DataEncoding::Utf8Decode(use.stylesheet)))
        << use.about;
    WXmlDoc document;
    EXPECT_TRUE(document.LoadFromString(L"<d/>"));
    return document.ApplyXSLT(sheet);
}

// Our library at work on a thread of its own.
class Ours {
public:
    explicit Ours(Use const& use)
        : use_{use},
          thread_{[this] {
              ::visit = &visit_;
              works_ = transforms(use_);
              visit_.end();
          }} {}

    Ours(Ours const&) = delete;
    Ours& operator=(Ours const&) = delete;

    ~Ours() {
        if (thread_.joinable()) end();
    }

    bool waitUntilInside() { return visit_.waitUntilInside(); }

    void end() {
        visit_.end();
        thread_.join();
        EXPECT_EQ(works_, use_.works) << use_.about;
    }

private:
    Use const& use_;
    Visit visit_;
    bool works_ = false;
    std::thread thread_; // last, because it uses the others
};

class TransformHandler : public testing::Test {
protected:
    TransformHandler() {
        xsltRegisterExtModuleFunction(bytes("stay"), bytes(visitNamespace), stayInFunction);
        xsltRegisterExtModuleElement(bytes("stay"), bytes(visitNamespace), stayInCompiler,
                                     doNothing);
        xsltSetGenericErrorFunc(&report, note);
        useLibxslt();
        alone = report.take();
    }

    ~TransformHandler() override {
        xsltSetGenericErrorFunc(dataBefore_, handlerBefore_);
        xsltUnregisterExtModuleElement(bytes("stay"), bytes(visitNamespace));
        xsltUnregisterExtModuleFunction(bytes("stay"), bytes(visitNamespace));
    }

    void SetUp() override {
        ASSERT_NE(alone.find("theirs"), std::string::npos) << alone;
        ASSERT_NE(alone.find("a message of theirs"), std::string::npos) << alone;
    }

    void expectTheHandlerInPlace() {
        EXPECT_EQ(xsltGenericError, note);
        EXPECT_EQ(xsltGenericErrorContext, &report);
        EXPECT_FALSE(report.isFromElsewhere());
    }

    Report report;
    std::string alone; // what is reported when nothing is transformed

private:
    xmlGenericErrorFunc const handlerBefore_ = xsltGenericError;
    void* const dataBefore_ = xsltGenericErrorContext;
};

TEST_F(TransformHandler, GetsWhatOthersReportWhileWeTransform) {
    for (Use const& use : uses) {
        Ours ours{use};
        EXPECT_TRUE(ours.waitUntilInside()) << use.about;
        EXPECT_NE(xsltGenericError, note) << use.about << ": we are not inside";
        useLibxslt();
        EXPECT_EQ(report.take(), alone) << use.about;
        ours.end();
        EXPECT_EQ(report.take(), "") << use.about << ": our errors are not the process's";
        expectTheHandlerInPlace();
    }
}

TEST_F(TransformHandler, IsBackWhenTheLastOfUsLeaves) {
    for (Use const& use : uses) {
        Ours first{uses[0]};
        EXPECT_TRUE(first.waitUntilInside());
        Ours second{use};
        EXPECT_TRUE(second.waitUntilInside()) << use.about;
        first.end();
        useLibxslt();
        EXPECT_EQ(report.take(), alone) << use.about;
        second.end();
        EXPECT_EQ(report.take(), "") << use.about;
        expectTheHandlerInPlace();
        useLibxslt();
        EXPECT_EQ(report.take(), alone) << use.about;
    }
}

// Threads come and go: nothing that is reported meanwhile is lost.
TEST_F(TransformHandler, GetsEverythingWhileWeComeAndGo) {
    constexpr int rounds = 50;
    std::thread ours{[] {
        for (int i = 0; i != rounds; ++i) {
            for (Use const& use : uses)
                EXPECT_EQ(transforms(use), use.works) << use.about;
        }
    }};
    std::string expected;
    for (int i = 0; i != rounds; ++i) {
        useLibxslt();
        expected += alone;
    }
    ours.join();
    EXPECT_EQ(report.take(), expected);
    expectTheHandlerInPlace();
}

} // namespace
