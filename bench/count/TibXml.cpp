#include <stdexcept>

#include <TibXml/EnginePtr.h>
#include <TibXml/engine/ISAXCounter.h>
#include <TibXml/engine/ISAXXMLReader.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/tibutils/Stream.h>

#include "Count.h"

namespace bench {

namespace {

EnginePtr<ISAXCounter> createCounter() {
    void* made = nullptr;
    if (CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL, IID_ISAXCounter, &made) != S_OK)
        throw std::runtime_error{"TibXml makes no counter"};
    return EnginePtr<ISAXCounter>{static_cast<ISAXCounter*>(made), false};
}

class Count final : public Contender {
public:
    explicit Count(std::string const& path) : path_{path.begin(), path.end()} {}

    void run() override {
        auto const file = TibUtils::Stream::FromFile(path_.c_str());
        VARIANT input{};
        input.vt = VT_UNKNOWN;
        input.punkVal = static_cast<IStream*>(file);
        done_ = createCounter()->count(input, &counts_) == S_OK;
    }

    std::uint64_t answer() override {
        if (!done_) throw std::runtime_error{"TibXml does not count the file"};
        return FileCounts{counts_.elements, counts_.attributes, counts_.textBytes, counts_.depth}
            .fingerprint();
    }

private:
    std::wstring path_;
    SAXCounts counts_{};
    bool done_ = false;
};

} // namespace

ContenderPtr tibxmlCount(std::string const& path) {
    return std::make_unique<Count>(path);
}

} // namespace bench
