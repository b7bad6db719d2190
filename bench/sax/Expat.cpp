#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <expat.h>

#include "Counts.h"
#include "Sax.h"

namespace bench {

namespace {

struct FreeParser {
    void operator()(XML_ParserStruct* parser) const noexcept { XML_ParserFree(parser); }
};

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

// With namespaces, as the others: names come as "namespace local".
class Sax final : public Contender {
public:
    Sax(std::string const& path, Letters letters) : path_{path}, letters_{letters} {}

    void run() override {
        counts_ = {};
        std::unique_ptr<XML_ParserStruct, FreeParser> const parser{
            XML_ParserCreateNS(nullptr, ' ')};
        XML_SetUserData(parser.get(), &counts_);
        XML_SetElementHandler(parser.get(), startElement, endElement);
        XML_SetCharacterDataHandler(parser.get(), characters);
        counts_.documents = 1;
        done_ = parse(parser.get());
        ++counts_.documents;
    }

    std::uint64_t answer() override {
        if (!done_) throw std::runtime_error{"Expat does not parse the file"};
        return counts_.fingerprint(letters_);
    }

private:
    // In pieces of the size that its manual's examples have.
    bool parse(XML_ParserStruct* parser) const {
        constexpr int size = 64 * 1024;
        std::unique_ptr<std::FILE, CloseFile> const file{std::fopen(path_.c_str(), "rb")};
        while (file != nullptr) {
            void* const buffer = XML_GetBuffer(parser, size);
            std::size_t const read = std::fread(buffer, 1, size, file.get());
            bool const isLast = read == 0;
            if (XML_ParseBuffer(parser, static_cast<int>(read), isLast ? 1 : 0) != XML_STATUS_OK)
                return false;
            if (isLast) return true;
        }
        return false;
    }

    static void startElement(void* data, XML_Char const* name, XML_Char const** attributes) {
        Counts& counts = *static_cast<Counts*>(data);
        ++counts.elements;
        counts.nameCharacters += std::strlen(name);
        for (; attributes[0] != nullptr; attributes += 2) {
            ++counts.attributes;
            counts.nameCharacters += std::strlen(attributes[0]);
            counts.valueCharacters += std::strlen(attributes[1]);
        }
    }

    static void endElement(void* data, XML_Char const* name) {
        Counts& counts = *static_cast<Counts*>(data);
        ++counts.ends;
        counts.nameCharacters += std::strlen(name);
    }

    static void characters(void* data, XML_Char const*, int length) {
        static_cast<Counts*>(data)->textCharacters += static_cast<unsigned>(length);
    }

    std::string path_;
    Letters letters_;
    Counts counts_;
    bool done_ = false;
};

} // namespace

ContenderPtr expatSax(std::string const& path, Letters letters) {
    return std::make_unique<Sax>(path, letters);
}

} // namespace bench
