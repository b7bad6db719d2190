// Where documents come from: names of files, and bytes in memory.
#include <reader/Input.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <reader/LocalFile.h>
#include <reader/Reader.h>
#include <tree/Text.h>

namespace tibxml::reader::test {

namespace {

namespace fs = std::filesystem;

class LocalFiles : public testing::Test {
protected:
    LocalFiles() {
        std::string pattern = (fs::temp_directory_path() / "inputXXXXXX").native();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error{"no temporary folder"};
        folder = fs::canonical(pattern);
    }

    ~LocalFiles() override { fs::remove_all(folder); }

    std::string write(std::string const& name) const {
        std::ofstream{folder / name} << name;
        return (folder / name).native();
    }

    fs::path folder;
};

std::string contentOf(LocalFile& file) {
    std::string content(100, '\0');
    std::ptrdiff_t const count = file.read(content.data(), content.size());
    content.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return content;
}

std::string readText(Input const& input) {
    auto const document = tree::DocumentRef::adopt(tree::Document::create());
    ReadError error;
    if (!read(*document, input, error)) return "error: " + error.reason;
    std::string text;
    return std::string{tree::stringValue(document->documentElement(), text)};
}

} // namespace

TEST_F(LocalFiles, AreFoundByPathAndByUrlAndWithEscapes) {
    std::string const plain = write("a.xml");
    std::string const spaced = write("b c.xml");
    std::string const percent = write("d%20e.xml");

    struct Case {
        std::string name;
        std::string found;
    } const cases[] = {
        {plain, "a.xml"},
        {"file://" + plain, "a.xml"},
        {"file://localhost" + plain, "a.xml"},
        {"file:" + plain, "a.xml"},
        {spaced, "b c.xml"},
        {"file://" + folder.native() + "/b%20c.xml", "b c.xml"},
        {folder.native() + "/b%20c.xml", "b c.xml"},
        {percent, "d%20e.xml"}, // as it is before anything else
        {"file://" + percent, "d%20e.xml"},
        {"file://" + folder.native() + "/d%2520e.xml", "d%20e.xml"},
        {folder.native() + "/%zz.xml", ""},
        {"http://" + plain, ""},
        {"", ""},
    };

    for (Case const& c : cases) {
        LocalFile file = LocalFile::named(c.name);
        EXPECT_EQ(file.isOpen(), !c.found.empty()) << c.name;
        EXPECT_EQ(file.error(), c.found.empty() ? ENOENT : 0) << c.name;
        EXPECT_EQ(contentOf(file), c.found) << c.name;
        EXPECT_EQ(canonicalPath(c.name), c.found.empty() ? "" : (folder / c.found).native());
    }
}

TEST_F(LocalFiles, SayWhyTheyAreNotOpen) {
    std::string const plain = write("a.xml");
    EXPECT_EQ(LocalFile::named(plain + "/below").error(), ENOTDIR);
    EXPECT_EQ(LocalFile::named(std::string(5000, 'x')).error(), ENAMETOOLONG);
}

TEST_F(LocalFiles, HaveOnePathWhateverLinkLeadsThere) {
    std::string const plain = write("a.xml");
    fs::create_symlink(plain, folder / "link.xml");
    EXPECT_EQ(canonicalPath((folder / "." / "link.xml").native()), plain);
}

TEST_F(LocalFiles, AreRegularWhereThatIsAsked) {
    LocalFile file = LocalFile::regularAt(write("a.xml"));
    EXPECT_EQ(contentOf(file), "a.xml");
    EXPECT_FALSE(LocalFile::regularAt(folder.native()).isOpen());
    EXPECT_FALSE(LocalFile::regularAt("/dev/null").isOpen());
    EXPECT_TRUE(LocalFile::at("/dev/null").isOpen());
    EXPECT_EQ(LocalFile::regularAt((folder / "none").native()).error(), ENOENT);
}

TEST(PathOfUrl, IsThatOfAFileOfThisMachine) {
    struct Case {
        std::string_view url;
        std::optional<std::string> path;
    } const cases[] = {
        {"/a b%20c", "/a b%20c"}, // a path, not a URL
        {"file:///a%20b", "/a b"},
        {"file:/a", "/a"},
        {"file://localhost/a", "/a"},
        {"file:///a%2", "/a%2"},
        {"file:///a%00b", std::nullopt},
        {"file://elsewhere/a", std::nullopt},
        {"file:////a", std::nullopt},
        {"file:a", std::nullopt},
        {"http://localhost/a", std::nullopt},
        {"a", std::nullopt},
        {"", std::nullopt},
    };

    for (Case const& c : cases)
        EXPECT_EQ(pathOfUrl(c.url), c.path) << c.url;
}

TEST(UrlOf, LeadsBackToThePath) {
    EXPECT_EQ(urlOf("/a/B-9_.~"), "file:///a/B-9_.~");
    EXPECT_EQ(urlOf("/a b%\xC3\xA4"), "file:///a%20b%25%C3%A4");
    EXPECT_EQ(pathOfUrl(urlOf("/a b%\xC3\xA4")), "/a b%\xC3\xA4");
}

TEST(BytesInMemory, AreReadByTheirDeclarationOrByTheRule) {
    std::string_view const latin = "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>";
    EXPECT_EQ(readText(latin), "\xC3\xA4");
    EXPECT_EQ(readText(std::string_view{"\xFE\xFF\0<\0a\0>\0x\0<\0/\0a\0>", 18}), "x");
    EXPECT_EQ(readText(std::string_view{"<a>\xC3\xA4</a>"}), "\xC3\xA4");
    std::string_view const declared = "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>";
    EXPECT_EQ(readText({declared, EncodingRule::alwaysUtf8}), "\xC3\xA4");
    EXPECT_EQ(readText(std::string_view{""}).substr(0, 6), "error:");
}

// Each text fills its memory, and is longer by one byte than the one before, so that every part of
// a tag once ends where only a block is left.
TEST(BytesInMemory, AreNeverReadBeyondTheirEnd) {
    for (char const* const last : {"\"/></r>", "\">t</a><a bc='&amp;'/></r>"}) {
        for (std::size_t length = 0; length != 64; ++length) {
            std::string const text =
                "<r><a bc=\"v\">t</a><a bc=\"" + std::string(length, 'x') + last;
            std::vector<char> const exact(text.begin(), text.end());
            std::string const read = readText(std::string_view{exact.data(), exact.size()});
            EXPECT_EQ(read.substr(0, 1), "t") << text;
        }
    }
}

} // namespace tibxml::reader::test
