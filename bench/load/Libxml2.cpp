#include <array>
#include <cstdlib>
#include <stdexcept>

#include <libxml/parser.h>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "../Settings.h"
#include "Load.h"

namespace bench {

namespace {

// The next node in document order, attributes left out.
xmlNode* following(xmlNode* node) {
    if (node->children != nullptr && node->type == XML_ELEMENT_NODE) return node->children;
    while (node != nullptr && node->next == nullptr)
        node = node->parent;
    return node != nullptr ? node->next : nullptr;
}

class Counts {
public:
    void add(xmlNode const& node) {
        switch (node.type) {
        case XML_ELEMENT_NODE:
            ++counts_[0];
            for (xmlAttr const* a = node.properties; a != nullptr; a = a->next)
                ++counts_[1];
            break;
        case XML_TEXT_NODE: counts_[2] += xmlIsBlankNode(&node) == 0 ? 1 : 0; break;
        case XML_CDATA_SECTION_NODE: ++counts_[2]; break;
        case XML_COMMENT_NODE: ++counts_[3]; break;
        case XML_PI_NODE: ++counts_[4]; break;
        default: break;
        }
    }

    void addTo(Fingerprint& print) const {
        for (std::uint64_t const count : counts_)
            print.add(count);
    }

private:
    std::array<std::uint64_t, 5> counts_{};
};

class Load final : public Contender {
public:
    Load(Sources const& sources, From from, Drop drop, Layout layout)
        : sources_{sources},
          from_{from},
          drop_{drop},
          options_{layout == Layout::dropped ? libxml2Options() : libxml2OptionsWithWhiteSpace()} {}

    void run() override {
        if (drop_ == Drop::timed) document_.reset();
        document_.reset(load());
    }

    bool needsRestoring() const override { return drop_ == Drop::untimed; }

    void restore() override {
        document_.reset();
        returnFreeMemory();
    }

    std::uint64_t answer() override {
        if (document_ == nullptr) throw std::runtime_error{"libxml2 does not load the document"};
        Counts counts;
        Fingerprint print;
        for (xmlNode* node = document_->children; node != nullptr; node = following(node))
            counts.add(*node);
        counts.addTo(print);
        for (xmlNode* item = xmlDocGetRootElement(document_.get())->children; item != nullptr;
             item = item->next) {
            if (item->type == XML_ELEMENT_NODE && isCalled(*item, "item"))
                print.add(static_cast<std::uint64_t>(valueOf(*item)));
        }
        return print.value();
    }

private:
    static bool isCalled(xmlNode const& node, char const* name) {
        return xmlStrEqual(node.name, reinterpret_cast<xmlChar const*>(name)) != 0;
    }

    static int valueOf(xmlNode const& item) {
        for (xmlNode const* child = item.children; child != nullptr; child = child->next) {
            if (isCalled(*child, "value"))
                return std::atoi(reinterpret_cast<char const*>(child->children->content));
        }
        throw std::runtime_error{"an item without value"};
    }

    xmlDoc* load() {
        switch (from_) {
        case From::memory: return loadMemory(sources_.text);
        case From::wideText:
            return loadMemory(narrowed(sources_.wide.data(), sources_.wide.size()));
        case From::file: return xmlReadFile(sources_.path.c_str(), nullptr, options_);
        }
        return nullptr;
    }

    xmlDoc* loadMemory(std::string const& text) const {
        return xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                             options_);
    }

    Sources const& sources_;
    From from_;
    Drop drop_;
    int options_;
    XmlDocPtr document_;
};

} // namespace

ContenderPtr libxml2Load(Sources const& sources, From from, Drop drop, Layout layout) {
    return std::make_unique<Load>(sources, from, drop, layout);
}

} // namespace bench
