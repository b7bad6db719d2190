#include <tree/Arena.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace tibxml::tree {

namespace {

constexpr std::size_t firstNodeBlock = 32 * sizeof(Node);
constexpr std::size_t firstByteBlock = 1024;
constexpr std::size_t smallestText = 24;
constexpr std::size_t largestPooledText = std::size_t{1} << 16;

constexpr std::size_t classSize(std::size_t index) noexcept {
    return index % 2 != 0 ? std::size_t{1} << (5 + index / 2) : std::size_t{3} << (3 + index / 2);
}

// The largest class whose blocks hold no more than `size` bytes; size >= smallestText.
std::size_t classWithin(std::size_t size) noexcept {
    std::size_t const log = static_cast<std::size_t>(std::bit_width(size)) - 1; // 2^log <= size
    std::size_t const powerClass = log >= 5 ? (log - 5) * 2 + 1 : 0;
    return classSize(powerClass + 1) <= size ? powerClass + 1 : powerClass;
}

// The smallest class whose blocks hold at least `size` bytes.
std::size_t classHolding(std::size_t size) noexcept {
    if (size <= smallestText) return 0;
    std::size_t const within = classWithin(size);
    return classSize(within) == size ? within : within + 1;
}

// What comes after a block of some size: twice as much, until a large page serves better.
constexpr std::size_t sizeAfter(std::size_t size) noexcept {
    std::size_t const twice = size * 2;
    return twice < largePage / 2 ? twice : largePage;
}

void checkLength(std::size_t length) {
    if (length > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("a text is limited to 4 GiB");
}

Arena::TextBlock block(char* data, std::size_t capacity) noexcept {
    return {data, static_cast<std::uint32_t>(capacity)};
}

} // namespace

Arena::~Arena() {
    for (HugeText* text = hugeTexts_; text != nullptr;) {
        HugeText* const following = text->next;
        ::operator delete(text);
        text = following;
    }
}

void* Arena::addBlock(std::size_t size) {
    void* const memory = blocks_.emplace_back(size).memory();
    footprint_ += size;
    return memory;
}

void Arena::addNodeBlock() {
    std::size_t const size = std::max(nextNodeBlock_, firstNodeBlock);
    nextNode_ = static_cast<Node*>(addBlock(size));
    endNode_ = nextNode_ + size / sizeof(Node);
    nextNodeBlock_ = sizeAfter(size);
}

void Arena::addByteBlock(std::size_t least) {
    std::size_t const size = std::max({nextByteBlock_, firstByteBlock, least});
    nextByte_ = static_cast<char*>(addBlock(size));
    endByte_ = nextByte_ + size;
    nextByteBlock_ = sizeAfter(size);
}

char* Arena::takeBytes(std::size_t size) {
    if (static_cast<std::size_t>(endByte_ - nextByte_) < size) addByteBlock(size);
    char* const bytes = nextByte_;
    nextByte_ += size;
    return bytes;
}

Arena::TextBlock Arena::newExactText(std::size_t length) {
    if (length > largestPooledText) return newHugeText(length);
    return block(takeBytes(length), length);
}

Arena::TextBlock Arena::newRecyclableText(std::size_t length) {
    if (length > largestPooledText) return newHugeText(length);
    std::size_t const index = classHolding(length);
    char*& head = freeTexts_[index];
    if (head == nullptr) return block(takeBytes(classSize(index)), classSize(index));
    char* const data = head;
    std::memcpy(&head, data, sizeof head);
    return block(data, classSize(index));
}

void Arena::freeText(TextBlock text) noexcept {
    if (text.capacity > largestPooledText) return freeHugeText(text.data);
    if (text.capacity < smallestText) return; // too small to serve again; gone until the arena goes
    char*& head = freeTexts_[classWithin(text.capacity)];
    std::memcpy(text.data, &head, sizeof head);
    head = text.data;
}

Arena::TextBlock Arena::newHugeText(std::size_t length) {
    checkLength(length);
    auto* header = static_cast<HugeText*>(::operator new(sizeof(HugeText) + length));
    *header = {hugeTexts_, nullptr, length};
    if (hugeTexts_ != nullptr) hugeTexts_->previous = header;
    hugeTexts_ = header;
    footprint_ += sizeof(HugeText) + length;
    return block(reinterpret_cast<char*>(header + 1), length);
}

void Arena::freeHugeText(char* data) noexcept {
    HugeText* const header = reinterpret_cast<HugeText*>(data) - 1;
    if (header->next != nullptr) header->next->previous = header->previous;
    if (header->previous != nullptr) {
        header->previous->next = header->next;
    } else {
        hugeTexts_ = header->next;
    }
    footprint_ -= sizeof(HugeText) + header->capacity;
    ::operator delete(header);
}

void* Arena::newPermanent(std::size_t size, std::size_t alignment) {
    auto const misalignment = reinterpret_cast<std::uintptr_t>(nextByte_) % alignment;
    std::size_t const padding = misalignment == 0 ? 0 : alignment - misalignment;
    if (static_cast<std::size_t>(endByte_ - nextByte_) < padding + size) {
        addByteBlock(size); // fresh blocks are aligned for every type
        return takeBytes(size);
    }
    return takeBytes(padding + size) + padding;
}

} // namespace tibxml::tree
