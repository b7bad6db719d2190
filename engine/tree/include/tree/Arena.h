// Storage of one document: nodes and texts from a few large blocks, with free lists, so that
// loading and dropping a document costs a few allocations and editing it for days does not make it
// grow.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <tree/MemoryBlock.h>
#include <tree/Node.h>

namespace tibxml::tree {

class Arena {
public:
    Arena() noexcept = default;
    Arena(Arena const&) = delete;
    Arena& operator=(Arena const&) = delete;
    ~Arena();

    // A node with every field zero; previous is the node itself. Throws std::bad_alloc.
    Node* newNode(NodeKind kind) {
        Node* const node = newUnsetNode();
        *node = Node{};
        node->kind = kind;
        node->previous = node;
        return node;
    }

    // A node of which every field is still to be set. Throws std::bad_alloc.
    Node* newUnsetNode() {
        Node* node = freeNodes_;
        if (node != nullptr) {
            freeNodes_ = node->next;
        } else {
            if (nextNode_ == endNode_) addNodeBlock();
            node = nextNode_++;
            // Readers take one node after the other: the cache line of a later one is on its way.
            __builtin_prefetch(node + nodesAhead, 1);
        }
        return node;
    }

    // Takes a node back; its text must have been given back before.
    void freeNode(Node* node) noexcept {
        node->next = freeNodes_;
        freeNodes_ = node;
    }

    struct TextBlock {
        char* data;
        std::uint32_t capacity; // what freeText wants to know; at least the length asked for
    };

    // Unaligned storage for a text that is written once, such as one that was read: no byte is
    // wasted, and if the text is ever freed only most of its block can be used again.
    TextBlock newExactText(std::size_t length);

    // Storage for a text that may come and go: rounded up, so that a freed block serves any later
    // text of about that length.
    TextBlock newRecyclableText(std::size_t length);

    void freeText(TextBlock text) noexcept;

    // Aligned storage that lives as long as the arena.
    void* newPermanent(std::size_t size, std::size_t alignment);

    // Bytes taken from the system.
    std::size_t footprint() const noexcept { return footprint_; }

private:
    // Blocks of recyclable text come in these sizes: 24, 32, 48, 64, 96 … 64 KiB. What is larger is
    // allocated and freed one by one.
    static constexpr std::size_t textClassCount = 24;

    static constexpr std::size_t nodesAhead = 16;

    struct HugeText {
        HugeText* next;
        HugeText* previous;
        std::size_t capacity;
    };

    void* addBlock(std::size_t size);
    void addNodeBlock();
    char* takeBytes(std::size_t size);
    void addByteBlock(std::size_t least);
    TextBlock newHugeText(std::size_t length);
    void freeHugeText(char* data) noexcept;

    Node* freeNodes_ = nullptr;
    Node* nextNode_ = nullptr;
    Node* endNode_ = nullptr;
    char* nextByte_ = nullptr;
    char* endByte_ = nullptr;
    std::size_t nextNodeBlock_ = 0; // bytes
    std::size_t nextByteBlock_ = 0; // bytes
    std::size_t footprint_ = 0;
    HugeText* hugeTexts_ = nullptr;
    std::vector<MemoryBlock> blocks_;
    std::array<char*, textClassCount>
        freeTexts_{}; // each free block begins with the next one's address
};

} // namespace tibxml::tree
