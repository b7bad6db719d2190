#include <memory>
#include <stdexcept>

#include <TibXml/TibXml.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/tibutils/Stream.h>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Settings.h"
#include "../load/Load.h"
#include "Transform.h"

namespace bench {

namespace {

std::uint64_t contentOf(WXmlDoc const& document) {
    CString const text = document.SaveToString();
    std::wstring_view const all{text.GetString(), static_cast<std::size_t>(text.GetLength())};
    Fingerprint print;
    print.addVisible(all.substr(all.find(L"<settings")));
    return print.value();
}

void require(bool done) {
    if (!done) throw std::runtime_error{"the library failed"};
}

class Transform final : public Contender {
public:
    explicit Transform(std::string const& text)
        : original_{tibxmlDocument(text)},
          document_{original_.Clone()},
          stylesheet_{tibxmlDocument(stylesheetText)} {}

    void run() override { require(document_.ApplyXSLT(stylesheet_)); }

    bool needsRestoring() const override { return true; }

    void restore() override { document_ = original_.Clone(); }

    std::uint64_t answer() override { return contentOf(document_); }

private:
    WXmlDoc original_;
    WXmlDoc document_;
    WXmlDoc stylesheet_;
};

class ReadTransformWrite final : public Contender {
public:
    explicit ReadTransformWrite(std::string const& text)
        : text_{text},
          stylesheet_{tibxmlDocument(stylesheetText)} {}

    void run() override {
        EnginePtr<IStream> const output{SHCreateMemStream(nullptr, 0), false};
        require(document_.Load(TibUtils::Stream::OverMemory(text_.data(), text_.size())));
        require(document_.ApplyXSLT(stylesheet_));
        require(document_.Save(output));
    }

    std::uint64_t answer() override { return contentOf(document_); }

private:
    std::string const& text_;
    WXmlDoc document_;
    WXmlDoc stylesheet_;
};

class Clone final : public Contender {
public:
    explicit Clone(std::string const& text) : document_{tibxmlDocument(text)} {}

    void run() override { clone_ = document_.Clone(); }

    bool needsRestoring() const override { return true; }

    // A copy is made in memory that is not used yet, whatever others have left there.
    void restore() override {
        clone_ = WXmlDoc{};
        returnFreeMemory();
    }

    std::uint64_t answer() override { return contentOf(clone_); }

private:
    WXmlDoc document_;
    WXmlDoc clone_;
};

class Backup final : public Contender {
public:
    explicit Backup(std::string const& text) : document_{tibxmlDocument(text)} {}

    void run() override { backup_.reset(document_.Backup()); }

    std::uint64_t answer() override {
        require(backup_ != nullptr);
        return 1;
    }

private:
    WXmlDoc document_;
    std::unique_ptr<WDataBackup> backup_;
};

class Restore final : public Contender {
public:
    explicit Restore(std::string const& text)
        : document_{tibxmlDocument(text)},
          backup_{document_.Backup()} {}

    void run() override { document_.Restore(backup_.get()); }

    std::uint64_t answer() override { return contentOf(document_); }

private:
    WXmlDoc document_;
    std::unique_ptr<WDataBackup> backup_;
};

} // namespace

ContenderPtr tibxmlTransform(std::string const& document) {
    return std::make_unique<Transform>(document);
}

ContenderPtr tibxmlReadTransformWrite(std::string const& document) {
    return std::make_unique<ReadTransformWrite>(document);
}

ContenderPtr tibxmlClone(std::string const& document) {
    return std::make_unique<Clone>(document);
}

ContenderPtr tibxmlBackup(std::string const& document) {
    return std::make_unique<Backup>(document);
}

ContenderPtr tibxmlRestore(std::string const& document) {
    return std::make_unique<Restore>(document);
}

} // namespace bench
