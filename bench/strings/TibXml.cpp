#include <stdexcept>
#include <vector>

#include "../Fingerprint.h"
#include "../Settings.h"
#include "Strings.h"

#include <TibXml/TibXml.h>

namespace bench {

namespace {

CString wide(std::string const& text) {
    return CString{std::wstring_view{widened(text.data(), text.size())}};
}

class Strings final : public Contender {
public:
    explicit Strings(StringSet const& set) : set_{set}, text_{wide(stringMap(set))} {
        for (std::size_t context = 0; context < set.contexts; ++context)
            contexts_.push_back(wide(contextName(context)));
        for (std::size_t key = 0; key < set.perContext; ++key)
            keys_.push_back(wide(keyName(key)));
    }

    // Contexts in turn, which is harder than one after the other.
    void run() override {
        print_ = {};
        CString found;
        for (std::size_t i = 0; i < set_.size(); ++i) {
            CString const& context = contexts_[i % set_.contexts];
            CString const& key = keys_[i / set_.contexts];
            if (!map_.GetLocStringFromNTString(context, key, found))
                throw std::runtime_error{"a string was not found"};
            if (i % sampleStep == 0) print_.addVisible(found.view());
        }
    }

    // What was found is remembered; without that, every run is the first one.
    bool needsRestoring() const override { return true; }

    void restore() override { map_.LoadFromString(text_); }

    std::uint64_t answer() override { return print_.value(); }

private:
    StringSet set_;
    CString text_;
    std::vector<CString> contexts_;
    std::vector<CString> keys_;
    WXmlStringMap map_;
    Fingerprint print_;
};

} // namespace

ContenderPtr tibxmlStrings(StringSet const& set) {
    return std::make_unique<Strings>(set);
}

} // namespace bench
