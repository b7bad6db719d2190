#include "JsonContent.h"

#include <algorithm>
#include <new>

namespace TibUtils::Json {
namespace {

// With fewer members than this, comparing the names one by one is faster than a table.
constexpr std::size_t manyMembers = 16;

} // namespace

std::size_t Content::find(CString const& name) const noexcept {
    if (!places.empty()) {
        auto const found = places.find(name);
        return found == places.end() ? members.size() : found->second;
    }
    auto const found = std::find_if(members.begin(), members.end(),
                                    [&](Member const& member) { return member.name == name; });
    return static_cast<std::size_t>(found - members.begin());
}

void Content::add(CString name, Variant value) {
    members.push_back({std::move(name), std::move(value)});
    updatePlaces();
}

// Without memory for the table it goes without: slower, but right.
void Content::updatePlaces() noexcept {
    if (members.size() < manyMembers) return;
    try {
        for (std::size_t i = places.size(); i < members.size(); ++i)
            places.emplace(members[i].name, i);
    } catch (std::bad_alloc const&) {
        places.clear();
    }
}

ContentPtr::ContentPtr(ContentPtr const& other) noexcept : content_{other.content_} {
    if (content_ != nullptr) content_->owners.fetch_add(1, std::memory_order_relaxed);
}

Content& ContentPtr::Writable() {
    if (content_ == nullptr) {
        content_ = new Content;
    } else if (content_->owners.load(std::memory_order_acquire) != 1) {
        ContentPtr copy;
        copy.content_ = new Content{*content_};
        Swap(copy);
    }
    return *content_;
}

void ContentPtr::GiveUp(Content* content, Content*& doomed) noexcept {
    if (content == nullptr || content->owners.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    content->nextDoomed = doomed;
    doomed = content;
}

Content* ContentPtr::TakeFrom(Variant& value) noexcept {
    if (auto* const object = value.TryGet<Object>())
        return std::exchange(object->content_.content_, nullptr);
    if (auto* const array = value.TryGet<Array>())
        return std::exchange(array->content_.content_, nullptr);
    return nullptr;
}

// What lies within is taken out before its holder is deleted: as deep as values may lie within each
// other, none is destroyed from within another one's destructor, and no memory is needed for it.
void ContentPtr::Release(Content* content) noexcept {
    Content* doomed = nullptr;
    GiveUp(content, doomed);
    while (doomed != nullptr) {
        Content* const current = doomed;
        doomed = current->nextDoomed;
        for (Content::Member& member : current->members)
            GiveUp(TakeFrom(member.value), doomed);
        delete current;
    }
}

} // namespace TibUtils::Json
