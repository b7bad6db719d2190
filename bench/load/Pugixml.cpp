#include <stdexcept>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "Load.h"

namespace bench {

namespace {

// Counts in the order in which Load's other answers do.
struct Counter : pugi::xml_tree_walker {
    std::uint64_t elements = 0;
    std::uint64_t attributes = 0;
    std::uint64_t texts = 0;
    std::uint64_t comments = 0;
    std::uint64_t instructions = 0;

    bool for_each(pugi::xml_node& node) override {
        switch (node.type()) {
        case pugi::node_element: ++elements; break;
        case pugi::node_pcdata:
        case pugi::node_cdata: ++texts; break;
        case pugi::node_comment: ++comments; break;
        case pugi::node_pi: ++instructions; break;
        default: break;
        }
        for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute())
            if (node.type() == pugi::node_element) ++attributes;
        return true;
    }
};

class Load final : public Contender {
public:
    Load(Sources const& sources, From from, Drop drop)
        : sources_{sources},
          from_{from},
          drop_{drop} {}

    void run() override {
        if (drop_ == Drop::timed) document_.reset();
        loaded_ = load();
    }

    bool needsRestoring() const override { return drop_ == Drop::untimed; }

    void restore() override {
        document_.reset();
        returnFreeMemory();
    }

    std::uint64_t answer() override {
        if (!loaded_) throw std::runtime_error{"pugixml does not load the document"};
        Counter count;
        document_.traverse(count);
        Fingerprint print;
        for (std::uint64_t const number :
             {count.elements, count.attributes, count.texts, count.comments, count.instructions})
            print.add(number);
        for (pugi::xml_node const item : document_.document_element().children("item"))
            print.add(static_cast<std::uint64_t>(item.child("value").text().as_int()));
        return print.value();
    }

private:
    bool load() {
        switch (from_) {
        case From::memory:
            return document_.load_buffer(sources_.text.data(), sources_.text.size(),
                                         pugixmlOptions);
        case From::wideText:
            return document_.load_buffer(sources_.wide.data(),
                                         sources_.wide.size() * sizeof(wchar_t), pugixmlOptions,
                                         pugi::encoding_wchar);
        case From::file: return document_.load_file(sources_.path.c_str(), pugixmlOptions);
        }
        return false;
    }

    Sources const& sources_;
    From from_;
    Drop drop_;
    pugi::xml_document document_;
    bool loaded_ = false;
};

} // namespace

ContenderPtr pugixmlLoad(Sources const& sources, From from, Drop drop) {
    return std::make_unique<Load>(sources, from, drop);
}

} // namespace bench
