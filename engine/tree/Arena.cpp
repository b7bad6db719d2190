#include <tree/Arena.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

#include <sys/mman.h>

namespace tibxml::tree {

namespace {

constexpr std::size_t firstNodeBlock = 32;
constexpr std::size_t largestNodeBlock = 65536; // 4 MiB
constexpr std::size_t firstByteBlock = 1024;
constexpr std::size_t largestByteBlock = std::size_t{1} << 20;
constexpr std::size_t smallestText = 24;
constexpr std::size_t largestPooledText = std::size_t{1} << 16;
constexpr std::align_val_t nodeAlignment{sizeof(Node)};

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

// Nodes of a large document are written once and at once: without this, a good part of the time of
// loading is the kernel handing out small pages one by one. Only the part of the block that
// consists of whole large pages can profit; where the system has none nothing happens.
void askForLargePages(void* block, std::size_t size) noexcept {
    constexpr std::uintptr_t largePage = std::uintptr_t{1} << 21;
    auto const address = reinterpret_cast<std::uintptr_t>(block);
    std::uintptr_t const begin = (address + largePage - 1) & ~(largePage - 1);
    std::uintptr_t const end = (address + size) & ~(largePage - 1);
    if (begin < end)
        ::madvise(static_cast<char*>(block) + (begin - address), end - begin, MADV_HUGEPAGE);
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
    for (Node* nodes : nodeBlocks_)
        ::operator delete(nodes, nodeAlignment);
    for (char* bytes : byteBlocks_)
        ::operator delete(bytes);
    for (HugeText* text = hugeTexts_; text != nullptr;) {
        HugeText* const following = text->next;
        ::operator delete(text);
        text = following;
    }
}

void Arena::addNodeBlock() {
    std::size_t const count = std::clamp(nextNodeBlock_, firstNodeBlock, largestNodeBlock);
    nodeBlocks_.reserve(nodeBlocks_.size() + 1);
    auto* nodes = static_cast<Node*>(::operator new(count * sizeof(Node), nodeAlignment));
    askForLargePages(nodes, count * sizeof(Node));
    nodeBlocks_.push_back(nodes);
    footprint_ += count * sizeof(Node);
    nextNode_ = nodes;
    endNode_ = nodes + count;
    nextNodeBlock_ = count * 2;
}

void Arena::addByteBlock(std::size_t least) {
    std::size_t const size =
        std::max(std::clamp(nextByteBlock_, firstByteBlock, largestByteBlock), least);
    byteBlocks_.reserve(byteBlocks_.size() + 1);
    auto* bytes = static_cast<char*>(::operator new(size));
    byteBlocks_.push_back(bytes);
    footprint_ += size;
    nextByte_ = bytes;
    endByte_ = bytes + size;
    nextByteBlock_ = std::min(size, largestByteBlock) * 2;
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
