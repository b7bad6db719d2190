// A transformation asks nothing of any network.
#include "Transforming.h"

#include <UncalledServer.h>

namespace transforming {

namespace {

// What a caller does, up to the connection.
class Call {
public:
    explicit Call(std::uint16_t port) : socket_{::socket(AF_INET, SOCK_STREAM, 0)} {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port);
        auto const* const plain = reinterpret_cast<sockaddr const*>(&address);
        EXPECT_EQ(::connect(socket_, plain, sizeof address), 0);
    }

    Call(Call const&) = delete;
    Call& operator=(Call const&) = delete;

    ~Call() { ::close(socket_); }

private:
    int socket_;
};

TEST(UncalledServer, SeesCalls) {
    UncalledServer const server;
    EXPECT_FALSE(server.wasCalled());
    {
        Call const call{server.port()};
        EXPECT_TRUE(server.wasCalled());
    }
    EXPECT_FALSE(server.wasCalled());
    { Call const shortOne{server.port()}; }
    EXPECT_TRUE(server.wasCalled());
    EXPECT_FALSE(server.wasCalled());
}

class Network : public testing::Test {
protected:
    std::string url(std::string const& scheme) const {
        return scheme + "://" + server.host() + "/a";
    }

    // The result of a stylesheet with this content; "failed" when it fails.
    std::string result(std::string const& content) const {
        return ours(folder.write("main.xsl", stylesheet(content)), document);
    }

    UncalledServer const server;
    Folder const folder;
    std::string const document = folder.write("document.xml", "<d/>");
};

std::string const root = "<xsl:template match='/'><r/></xsl:template>";

std::string templateWith(std::string const& content) {
    return "<xsl:template match='/'><r>" + content + "</r></xsl:template>";
}

TEST_F(Network, ModulesOfOtherMachinesAreRefused) {
    for (std::string const scheme : {"http", "ftp", "HTTP", "https"}) {
        for (std::string const module : {"import", "include"}) {
            std::string const start = "<xsl:" + module + " href='";
            std::string const direct = start + url(scheme) + "'/>" + root;
            EXPECT_EQ(result(direct), "failed") << direct;
            std::string const relative = start + "b' xml:base='" + url(scheme) + "'/>" + root;
            EXPECT_EQ(result(relative), "failed") << relative;
            folder.write("local.xsl", stylesheet(direct));
            EXPECT_EQ(result(start + "local.xsl'/>"), "failed") << direct;
            EXPECT_FALSE(server.wasCalled()) << direct;
        }
    }
    EXPECT_EQ(result("<xsl:import href='//" + server.host() + "/a'/>" + root), "failed");
    EXPECT_FALSE(server.wasCalled());
}

TEST_F(Network, DocumentsOfOtherMachinesAreRefused) {
    for (std::string const scheme : {"http", "ftp", "HTTP", "https"}) {
        for (std::string const& call : {
                 "document(\"" + url(scheme) + "\")",
                 "document(concat(\"" + url(scheme) + "\", local-name(*)))",
                 "document(\"" + url(scheme) + "#part\")",
                 std::string{"document(\"b\", document(\"\")/*/*/*/*[@xml:base])"},
             }) {
            std::string const content =
                templateWith("<xsl:copy-of select='" + call + "' xml:base='" + url(scheme) + "'/>");
            EXPECT_EQ(result(content), "failed") << content;
            EXPECT_FALSE(server.wasCalled()) << content;
        }
    }
}

// Local files may have a document type. What it has elsewhere is missing.
TEST_F(Network, DocumentTypesReadNothingFromOtherMachines) {
    for (std::string const scheme : {"http", "ftp"}) {
        std::string const place = " SYSTEM '" + url(scheme) + "'";
        for (std::string const& type :
             {place, " PUBLIC '-//x//y'" + place.substr(7), " [<!ENTITY % all" + place + ">%all;]",
              " [<!ENTITY e" + place + ">]"}) {
            bool const hasEntity = type.find("ENTITY e") != std::string::npos;
            std::string const text = hasEntity ? "before&e;behind" : "beforebehind";
            std::string const start = "<!DOCTYPE x" + type + ">";
            folder.write("local.xml", start + "<x>" + text + "</x>");
            folder.write("local.xsl", start + stylesheet(templateWith(text)));
            EXPECT_EQ(result("<xsl:import href='local.xsl'/>"), "<r>beforebehind</r>") << start;
            EXPECT_EQ(result(templateWith("<xsl:value-of select='document(\"local.xml\")'/>")),
                      "<r>beforebehind</r>")
                << start;
            EXPECT_FALSE(server.wasCalled()) << start;
        }
    }
}

TEST_F(Network, NothingIsWrittenThere) {
    for (std::string const scheme : {"http", "ftp"}) {
        std::string const main = folder.write(
            "main.xsl",
            "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
            "xmlns:e='http://www.jclark.com/xt' extension-element-prefixes='e'>" +
                templateWith("<e:document href='" + url(scheme) + "'><w/></e:document>") +
                "</xsl:stylesheet>");
        EXPECT_EQ(ours(main, document), "failed") << scheme;
        EXPECT_FALSE(server.wasCalled()) << scheme;
    }
}

} // namespace

} // namespace transforming
