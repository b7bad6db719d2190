#include <TibXml/tibutils/Json.h>

#include "../Documents.h"
#include "../Fingerprint.h"
#include "Json.h"

namespace bench {

namespace {

class Json final : public Contender {
public:
    explicit Json(std::string const& text) : document_{tibxmlDocument(text)} {}

    void run() override {
        TibUtils::Variant value;
        JsonConvertFromXml(document_.GetRootNode(), value);
        std::string const text = TibUtils::Json::Write(value);
        xml_.Empty();
        JsonConvertToXml(TibUtils::Json::Parse(text), xml_);
    }

    std::uint64_t answer() override {
        Fingerprint print;
        print.addVisible(xml_.view());
        return print.value();
    }

private:
    WXmlDoc document_;
    CString xml_;
};

} // namespace

ContenderPtr tibxmlJson(std::string const& document) {
    return std::make_unique<Json>(document);
}

} // namespace bench
