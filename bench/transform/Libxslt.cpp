#include <stdexcept>

#include <libxml/parser.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Settings.h"
#include "../load/Load.h"
#include "Transform.h"

namespace bench {

namespace {

struct FreeStylesheet {
    void operator()(xsltStylesheet* sheet) const noexcept { xsltFreeStylesheet(sheet); }
};

using StylesheetPtr = std::unique_ptr<xsltStylesheet, FreeStylesheet>;

StylesheetPtr compiled() {
    XmlDocPtr document = libxml2Document(stylesheetText, XML_PARSE_NOBLANKS);
    StylesheetPtr sheet{xsltParseStylesheetDoc(document.get())};
    if (!sheet) throw std::runtime_error{"libxslt does not compile the stylesheet"};
    static_cast<void>(document.release()); // the stylesheet's from now on
    return sheet;
}

std::string bytesOf(xmlDoc* document) {
    xmlChar* bytes = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(document, &bytes, &size, "UTF-8");
    std::string text{reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size)};
    xmlFree(bytes);
    return text;
}

std::uint64_t contentOf(xmlDoc* document) {
    std::string const bytes = bytesOf(document);
    std::wstring const text = widened(bytes.data(), bytes.size());
    Fingerprint print;
    print.addVisible(std::wstring_view{text}.substr(text.find(L"<settings")));
    return print.value();
}

// As XSLT sees documents: CDATA sections are text.
XmlDocPtr source(std::string const& text) {
    return libxml2Document(text, libxml2Options() | XML_PARSE_NOCDATA);
}

class Transform final : public Contender {
public:
    explicit Transform(std::string const& text)
        : stylesheet_{compiled()},
          document_{source(text)} {}

    void run() override {
        result_.reset(xsltApplyStylesheet(stylesheet_.get(), document_.get(), nullptr));
    }

    bool needsRestoring() const override { return true; }

    void restore() override { result_.reset(); }

    std::uint64_t answer() override { return contentOf(result_.get()); }

private:
    StylesheetPtr stylesheet_;
    XmlDocPtr document_;
    XmlDocPtr result_;
};

class ReadTransformWrite final : public Contender {
public:
    explicit ReadTransformWrite(std::string const& text) : text_{text}, stylesheet_{compiled()} {}

    void run() override {
        XmlDocPtr const document = source(text_);
        result_.reset(xsltApplyStylesheet(stylesheet_.get(), document.get(), nullptr));
        saved_ = bytesOf(result_.get());
    }

    std::uint64_t answer() override { return contentOf(result_.get()); }

private:
    std::string const& text_;
    StylesheetPtr stylesheet_;
    XmlDocPtr result_;
    std::string saved_;
};

class Clone final : public Contender {
public:
    explicit Clone(std::string const& text) : document_{libxml2Document(text, libxml2Options())} {}

    void run() override { clone_.reset(xmlCopyDoc(document_.get(), 1)); }

    bool needsRestoring() const override { return true; }

    // A copy is made in memory that is not used yet, whatever others have left there.
    void restore() override {
        clone_.reset();
        returnFreeMemory();
    }

    std::uint64_t answer() override { return contentOf(clone_.get()); }

private:
    XmlDocPtr document_;
    XmlDocPtr clone_;
};

} // namespace

ContenderPtr libxsltTransform(std::string const& document) {
    return std::make_unique<Transform>(document);
}

ContenderPtr libxsltReadTransformWrite(std::string const& document) {
    return std::make_unique<ReadTransformWrite>(document);
}

ContenderPtr libxml2Clone(std::string const& document) {
    return std::make_unique<Clone>(document);
}

} // namespace bench
