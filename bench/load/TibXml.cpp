#include <stdexcept>

#include <TibXml/TibXml.h>
#include <TibXml/tibutils/Stream.h>

#include "../Fingerprint.h"
#include "Load.h"

namespace bench {

namespace {

class Load final : public Contender {
public:
    Load(Sources const& sources, From from, Drop drop)
        : sources_{sources},
          from_{from},
          drop_{drop} {}

    void run() override {
        if (drop_ == Drop::timed) document_ = WXmlDoc{};
        loaded_ = load();
    }

    bool needsRestoring() const override { return drop_ == Drop::untimed; }

    void restore() override {
        document_ = WXmlDoc{};
        returnFreeMemory();
    }

    std::uint64_t answer() override {
        if (!loaded_) throw std::runtime_error{"TibXml does not load the document"};
        Fingerprint print;
        for (wchar_t const* path :
             {L"//*", L"//@*", L"//text()", L"//comment()", L"//processing-instruction()"})
            print.add(document_.GetRootNode().GetNodes(path).size());
        for (WXmlNode const& value : document_.GetRootNode().GetNodes(L"item/value"))
            print.add(static_cast<std::uint64_t>(value.Value().GetInt(0)));
        return print.value();
    }

private:
    bool load() {
        switch (from_) {
        case From::memory:
            return document_.Load(
                TibUtils::Stream::OverMemory(sources_.text.data(), sources_.text.size()));
        case From::wideText: return document_.LoadFromString(sources_.wide.c_str());
        case From::file: return document_.Load(sources_.widePath.c_str());
        }
        return false;
    }

    Sources const& sources_;
    From from_;
    Drop drop_;
    WXmlDoc document_;
    bool loaded_ = false;
};

} // namespace

ContenderPtr tibxmlLoad(Sources const& sources, From from, Drop drop) {
    return std::make_unique<Load>(sources, from, drop);
}

} // namespace bench
