#include "SaxForwarder.h"

#include <utility>

namespace tibxml::com {

namespace {

int lengthOf(std::wstring_view text) noexcept {
    return static_cast<int>(text.size()); // the parser takes no longer names and values
}

} // namespace

SaxForwarder::SaxForwarder(ComPtr<ISAXContentHandler> handler, ComPtr<SaxLocator> locator)
    : handler_{std::move(handler)},
      locator_{std::move(locator)},
      attributes_{ComPtr<SaxAttributes>::adopt(new SaxAttributes)} {}

template <class Call>
bool SaxForwarder::tell(Call call) {
    if (!handler_) return true;
    result_ = call(*handler_);
    return SUCCEEDED(result_);
}

bool SaxForwarder::start(reader::SaxPlace const& place) {
    locator_->follow(place);
    return tell([&](auto& handler) { return handler.putDocumentLocator(locator_.get()); });
}

bool SaxForwarder::startDocument() {
    return tell([](auto& handler) { return handler.startDocument(); });
}

bool SaxForwarder::endDocument() {
    return tell([](auto& handler) { return handler.endDocument(); });
}

bool SaxForwarder::startPrefixMapping(std::wstring_view prefix, std::wstring_view uri) {
    return tell([&](auto& handler) {
        return handler.startPrefixMapping(prefix.data(), lengthOf(prefix), uri.data(),
                                          lengthOf(uri));
    });
}

bool SaxForwarder::endPrefixMapping(std::wstring_view prefix) {
    return tell(
        [&](auto& handler) { return handler.endPrefixMapping(prefix.data(), lengthOf(prefix)); });
}

bool SaxForwarder::startElement(reader::SaxName const& name,
                                std::span<reader::SaxAttribute const> attributes) {
    attributes_->show(attributes);
    bool const goesOn = tell([&](auto& handler) {
        return handler.startElement(name.uri.c_str(), lengthOf(name.uri), name.local.c_str(),
                                    lengthOf(name.local), name.qualified.c_str(),
                                    lengthOf(name.qualified), attributes_.get());
    });
    attributes_->show({}); // for a handler that keeps the object
    return goesOn;
}

bool SaxForwarder::endElement(reader::SaxName const& name) {
    return tell([&](auto& handler) {
        return handler.endElement(name.uri.c_str(), lengthOf(name.uri), name.local.c_str(),
                                  lengthOf(name.local), name.qualified.c_str(),
                                  lengthOf(name.qualified));
    });
}

bool SaxForwarder::characters(std::wstring_view text) {
    return tell([&](auto& handler) { return handler.characters(text.data(), lengthOf(text)); });
}

bool SaxForwarder::processingInstruction(std::wstring_view target, std::wstring_view data) {
    return tell([&](auto& handler) {
        return handler.processingInstruction(target.data(), lengthOf(target), data.data(),
                                             lengthOf(data));
    });
}

} // namespace tibxml::com
