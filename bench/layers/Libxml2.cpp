#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Libxml2Query.h"
#include "../Libxml2Text.h"
#include "Layers.h"

namespace bench {

namespace {

// A document with a query for one element of it.
class Layer {
public:
    Layer(std::string const& text, std::string const& path)
        : document_{libxml2Document(text, libxml2Options())},
          query_{path} {
        query_.setDocument(document_.get());
    }

    xmlNode* root() const { return xmlDocGetRootElement(document_.get()); }

    // Null when there is none.
    xmlNode* element() const {
        Libxml2Query::Result const result = query_.evaluate();
        bool const found = result->nodesetval != nullptr && result->nodesetval->nodeNr > 0;
        return found ? result->nodesetval->nodeTab[0] : nullptr;
    }

private:
    XmlDocPtr document_;
    Libxml2Query query_;
};

// The integer in an attribute; -1 when it or its element is missing.
int attributeOf(xmlNode* element, char const* name) {
    xmlChar* const text = element != nullptr ? xmlGetProp(element, asXml(name)) : nullptr;
    if (text == nullptr) return -1;
    int const value = std::atoi(reinterpret_cast<char const*>(text));
    xmlFree(text);
    return value;
}

class Read final : public Contender {
public:
    Read(Layers const& layers, int id)
        : defaults_{layers.defaults, "item[@id='" + std::to_string(id) + "']"},
          user_{layers.user, "item[@id='" + std::to_string(id) + "']"} {}

    void run() override {
        value_ = attributeOf(user_.element(), "id");
        if (value_ < 0) value_ = attributeOf(defaults_.element(), "id");
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    Layer defaults_;
    Layer user_;
    int value_ = -1;
};

class FirstWrite final : public Contender {
public:
    explicit FirstWrite(Layers const& layers)
        : defaults_{layers.defaults, path},
          user_{layers.user, path} {}

    void run() override {
        xmlNode* const given = defaults_.element();
        if (user_.element() != nullptr || attributeOf(given, "userCustomizable") >= 0) return;
        xmlNode* const window = xmlNewChild(user_.root(), nullptr, asXml("window"), nullptr);
        xmlNode* const position = xmlNewChild(window, nullptr, asXml("position"), nullptr);
        xmlNewProp(position, asXml("size"), Digits{4711}.xml());
        value_ = attributeOf(position, "size");
        xmlUnlinkNode(window);
        xmlFreeNode(window);
    }

    std::uint64_t answer() override {
        Fingerprint print;
        print.add(static_cast<std::uint64_t>(value_));
        print.add(xmlChildElementCount(user_.root()));
        return print.value();
    }

private:
    static constexpr char const* path = "window/position";

    Layer defaults_;
    Layer user_;
    int value_ = -1;
};

} // namespace

ContenderPtr libxml2Read(Layers const& layers, int id) {
    return std::make_unique<Read>(layers, id);
}

ContenderPtr libxml2FirstWrite(Layers const& layers) {
    return std::make_unique<FirstWrite>(layers);
}

} // namespace bench
