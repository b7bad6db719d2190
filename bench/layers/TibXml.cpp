#include "../Documents.h"
#include "../Fingerprint.h"
#include "Layers.h"

namespace bench {

namespace {

class Read final : public Contender {
public:
    Read(Layers const& layers, int id)
        : defaults_{tibxmlDocument(layers.defaults)},
          user_{tibxmlDocument(layers.user)},
          path_{L"item[@id='" + std::to_wstring(id) + L"']"} {}

    void run() override {
        WXmlCompositeNode const node{defaults_, user_, WXPath{path_.c_str()}};
        value_ = node.ReadableAttribute(L"@id", false).GetInt(-1);
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    WXmlDoc defaults_;
    WXmlDoc user_;
    std::wstring path_;
    int value_ = -1;
};

class FirstWrite final : public Contender {
public:
    explicit FirstWrite(Layers const& layers)
        : defaults_{tibxmlDocument(layers.defaults)},
          user_{tibxmlDocument(layers.user)} {}

    void run() override {
        WXmlCompositeNode const node{defaults_, user_, L"window/position"};
        node.WriteableAttribute(L"@size").SetInt(4711);
        WXmlNode* const written = node.GetReadWriteNode();
        value_ = written->Attribute(L"@size").GetInt(-1);
        written->GetParentNode().Prune();
    }

    std::uint64_t answer() override {
        Fingerprint print;
        print.add(static_cast<std::uint64_t>(value_));
        print.add(static_cast<std::uint64_t>(user_.GetRootNode().GetNumChildren()));
        return print.value();
    }

private:
    WXmlDoc defaults_;
    WXmlDoc user_;
    int value_ = -1;
};

} // namespace

ContenderPtr tibxmlRead(Layers const& layers, int id) {
    return std::make_unique<Read>(layers, id);
}

ContenderPtr tibxmlFirstWrite(Layers const& layers) {
    return std::make_unique<FirstWrite>(layers);
}

} // namespace bench
