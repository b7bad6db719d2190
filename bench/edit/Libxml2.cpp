#include <vector>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Libxml2Query.h"
#include "../Libxml2Text.h"
#include "Edit.h"

namespace bench {

namespace {

void remove(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

class Children final : public Contender {
public:
    Children(std::string const& text, std::size_t atOnce)
        : document_{libxml2Document(text, libxml2Options())},
          root_{xmlDocGetRootElement(document_.get())},
          atOnce_{atOnce} {
        children_.reserve(atOnce);
    }

    void run() override {
        for (std::size_t made = 0; made < childrenPerRun; made += atOnce_) {
            for (std::size_t i = 0; i < atOnce_; ++i)
                make(static_cast<int>(made + i));
            removeAll();
        }
    }

    std::uint64_t answer() override {
        Fingerprint print;
        make(4711);
        print.addVisible(std::string_view{markupOf(children_.front())});
        removeAll();
        print.add(xmlChildElementCount(root_));
        return print.value();
    }

private:
    void make(int number) {
        xmlNode* const child = xmlNewChild(root_, nullptr, asXml("entry"), nullptr);
        children_.push_back(child);
        xmlSetProp(child, asXml("id"), Digits{number}.xml());
        xmlSetProp(child, asXml("value"), Digits{number * 7}.xml());
    }

    void removeAll() {
        for (xmlNode* const child : children_)
            remove(child);
        children_.clear();
    }

    XmlDocPtr document_;
    xmlNode* root_;
    std::size_t atOnce_;
    std::vector<xmlNode*> children_;
};

xmlNode* childNamed(xmlNode* parent, xmlChar const* name) {
    xmlNode* child = xmlFirstElementChild(parent);
    while (child != nullptr && xmlStrEqual(child->name, name) == 0)
        child = xmlNextElementSibling(child);
    return child;
}

class Ensure final : public Contender {
public:
    Ensure(std::string const& text, Descendant descendant)
        : document_{libxml2Document(text, libxml2Options())},
          root_{xmlDocGetRootElement(document_.get())},
          missing_{descendant == Descendant::missing} {
        if (!missing_) ensure();
    }

    void run() override {
        xmlNode* const left = ensure();
        length_ = xmlStrlen(left->name);
        if (missing_) remove(left->parent->parent);
    }

    std::uint64_t answer() override {
        Fingerprint print;
        print.add(static_cast<std::uint64_t>(length_));
        print.add(xmlChildElementCount(root_));
        return print.value();
    }

private:
    xmlNode* ensure() {
        xmlNode* node = root_;
        for (char const* const name : {"window", "position", "left"}) {
            xmlNode* const child = childNamed(node, asXml(name));
            node = child != nullptr ? child : xmlNewChild(node, nullptr, asXml(name), nullptr);
        }
        return node;
    }

    XmlDocPtr document_;
    xmlNode* root_;
    bool missing_;
    int length_ = 0;
};

class SetAndRead final : public Contender {
public:
    explicit SetAndRead(std::string const& text)
        : document_{libxml2Document(text, libxml2Options())} {
        query_.setDocument(document_.get());
    }

    void run() override {
        Libxml2Query::Result const found = query_.evaluate();
        xmlNodeSetContent(found->nodesetval->nodeTab[0], Digits{nextNumber(number_)}.xml());
        value_ = numberIn(query_.evaluate());
    }

    std::uint64_t answer() override { return static_cast<std::uint64_t>(value_); }

private:
    XmlDocPtr document_;
    Libxml2Query query_{"item[@id='7']/value"};
    int number_ = 0;
    int value_ = -1;
};

} // namespace

ContenderPtr libxml2Children(std::string const& document, std::size_t atOnce) {
    return std::make_unique<Children>(document, atOnce);
}

ContenderPtr libxml2Ensure(std::string const& document, Descendant descendant) {
    return std::make_unique<Ensure>(document, descendant);
}

ContenderPtr libxml2SetAndRead(std::string const& document) {
    return std::make_unique<SetAndRead>(document);
}

} // namespace bench
