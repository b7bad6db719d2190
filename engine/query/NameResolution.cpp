#include "NameResolution.h"

#include <utility>

namespace tibxml::query {

std::uint32_t NameResolution::add(std::string uri, std::string local) {
    for (std::size_t i = names_.size(); i-- > 0 && names_.size() - i <= 16;)
        if (names_[i].local == local && names_[i].uri == uri) return static_cast<std::uint32_t>(i);
    names_.push_back({std::move(uri), std::move(local)});
    found_.push_back(nullptr);
    return static_cast<std::uint32_t>(names_.size() - 1);
}

void NameResolution::refresh(tree::Document& document) {
    for (std::size_t i = 0; i < names_.size(); ++i)
        found_[i] = document.names().findExpanded(names_[i].local, names_[i].uri);
    serial_ = document.serial();
    namesThen_ = document.names().size();
}

} // namespace tibxml::query
