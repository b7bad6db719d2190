#include "EngineTest.h"

#include <utility>

namespace {

using Pointer = EnginePtr<IXMLDOMNode>;

struct Counted {
    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    fake::Node* node = nullptr;
    Pointer pointer = fake::make<fake::Node, IXMLDOMNode>(behaviour, node);

    ULONG references() const {
        node->AddRef();
        return node->Release();
    }
};

TEST(EnginePtr, IsEmptyAtFirst) {
    Pointer const empty;
    EXPECT_FALSE(empty);
    EXPECT_EQ(empty.GetInterfacePtr(), nullptr);
    EXPECT_FALSE(Pointer{nullptr});
}

TEST(EnginePtr, CallingThroughAnEmptyOneRaisesInvalidPointer) {
    Pointer const empty;
    DOMNodeType type{};
    EXPECT_EQ(codeOf([&] { empty->get_nodeType(&type); }), E_POINTER);
}

TEST(EnginePtr, TakesOverAReferenceOrAddsOne) {
    Counted counted;
    EXPECT_EQ(counted.references(), 1U);
    Pointer const added{counted.node};
    EXPECT_EQ(counted.references(), 2U);
}

TEST(EnginePtr, CopyingAddsAReferenceAndDestroyingDropsIt) {
    Counted counted;
    {
        Pointer const copy = counted.pointer;
        EXPECT_EQ(counted.references(), 2U);
        EXPECT_EQ(copy.GetInterfacePtr(), counted.node);
    }
    EXPECT_EQ(counted.references(), 1U);
}

TEST(EnginePtr, MovingKeepsTheCount) {
    Counted counted;
    Pointer moved = std::move(counted.pointer);
    EXPECT_EQ(counted.references(), 1U);
    EXPECT_FALSE(counted.pointer); // NOLINT(bugprone-use-after-move): that is what is tested
    Pointer assigned;
    assigned = std::move(moved);
    EXPECT_EQ(counted.references(), 1U);
    EXPECT_EQ(assigned.GetInterfacePtr(), counted.node);
}

TEST(EnginePtr, AssigningReleasesWhatItHeld) {
    Counted first;
    Counted second;
    Pointer pointer = first.pointer;
    pointer = second.pointer;
    EXPECT_EQ(first.references(), 1U);
    EXPECT_EQ(second.references(), 2U);
    pointer = nullptr;
    EXPECT_EQ(second.references(), 1U);
}

TEST(EnginePtr, AssigningTheSameObjectChangesNothing) {
    Counted counted;
    Pointer other = counted.pointer;
    other = counted.pointer;
    EXPECT_EQ(counted.references(), 2U);
    Pointer& same = other;
    other = same;
    EXPECT_EQ(counted.references(), 2U);
    other = std::move(same);
    EXPECT_EQ(counted.references(), 2U);
    EXPECT_TRUE(other);
}

TEST(EnginePtr, AttachDetachAndGetAddressMoveReferences) {
    Counted counted;
    Pointer pointer = counted.pointer;
    IXMLDOMNode* const raw = pointer.Detach();
    EXPECT_FALSE(pointer);
    EXPECT_EQ(counted.references(), 2U);
    pointer.Attach(raw);
    EXPECT_EQ(counted.references(), 2U);
    EXPECT_EQ(*pointer.GetAddress(), nullptr);
    EXPECT_EQ(counted.references(), 1U);
}

TEST(EnginePtr, AReleaseThatThrowsLeavesItAsItWas) {
    Counted counted;
    counted.behaviour->releaseThrows = true;
    EXPECT_THROW(counted.pointer.Release(), int);
    EXPECT_EQ(counted.pointer.GetInterfacePtr(), counted.node);
    counted.pointer.Release();
    EXPECT_FALSE(counted.pointer);
}

} // namespace
