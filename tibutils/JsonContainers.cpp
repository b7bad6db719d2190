#include <TibXml/tibutils/Variant.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TibUtils::Json {

/// The values of an object, or those of an array, which have no names.
struct Content {
    struct Member {
        CString name;
        Variant value;
    };

    Content() = default;

    /// A copy that has one owner. Objects and arrays among the values are shared with the original.
    Content(Content const& other) : members{other.members}, places{other.places} {}

    Content& operator=(Content const&) = delete;
    ~Content() = default;

    /// The place of a name; the number of members when there is none.
    std::size_t find(CString const& name) const noexcept;

    /// Adds a member with a name that is not there yet.
    void add(CString name, Variant value);

    std::atomic<std::size_t> owners{1};
    Content* nextDoomed = nullptr; ///< while a chain of contents is being destroyed
    std::vector<Member> members;

    /// The places by name: of all members or of none.
    std::unordered_map<CString, std::size_t> places;

private:
    void updatePlaces() noexcept;
};

namespace {

// With fewer members than this, comparing the names one by one is faster than a table.
constexpr std::size_t manyMembers = 16;

std::size_t sizeOf(ContentPtr const& content) noexcept {
    return content.Get() == nullptr ? 0 : content.Get()->members.size();
}

Content::Member const& memberAt(ContentPtr const& content, std::size_t index) {
    if (index >= sizeOf(content)) throw std::out_of_range{"no JSON value at this index"};
    return content.Get()->members[index];
}

std::size_t placeOf(ContentPtr const& content, CString const& name) noexcept {
    return content.Get() == nullptr ? 0 : content.Get()->find(name);
}

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

std::size_t Object::GetSize() const noexcept {
    return sizeOf(content_);
}

bool Object::HasValue(CString const& name) const noexcept {
    return placeOf(content_, name) < GetSize();
}

Variant const& Object::GetValue(CString const& name) const {
    std::size_t const place = placeOf(content_, name);
    if (place >= GetSize()) throw std::out_of_range{"no JSON value of this name"};
    return content_.Get()->members[place].value;
}

Variant const& Object::GetValue(std::size_t index) const {
    return memberAt(content_, index).value;
}

CString const& Object::GetValueName(std::size_t index) const {
    return memberAt(content_, index).name;
}

void Object::AddValue(CString name, Variant value) {
    Content& content = content_.Writable();
    std::size_t const place = content.find(name);
    if (place == content.members.size()) {
        content.add(std::move(name), std::move(value));
    } else {
        // Into a value that is held no more when the old one goes, which may hold this object.
        std::swap(content.members[place].value, value);
    }
}

std::size_t Array::GetSize() const noexcept {
    return sizeOf(content_);
}

Variant const& Array::GetValue(std::size_t index) const {
    return memberAt(content_, index).value;
}

void Array::AddValue(Variant value) {
    content_.Writable().members.push_back({{}, std::move(value)});
}

} // namespace TibUtils::Json
