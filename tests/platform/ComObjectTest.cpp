#include <TibXml/platform/ComObject.h>

#include <gtest/gtest.h>

namespace {

inline constexpr IID IID_IShape{1, 0, 0, {}};
inline constexpr IID IID_ISquare{2, 0, 0, {}};
inline constexpr IID IID_IColour{3, 0, 0, {}};

class IShape : public IUnknown {
public:
    virtual int corners() = 0;

protected:
    ~IShape() = default;
};

class ISquare : public IShape {
public:
    virtual int side() = 0;

protected:
    ~ISquare() = default;
};

class IColour : public IUnknown {
public:
    virtual int red() = 0;

protected:
    ~IColour() = default;
};

} // namespace

template <>
struct tibxml::platform::InterfaceTraits<IShape> : InterfaceIs<IID_IShape, IUnknown> {};

template <>
struct tibxml::platform::InterfaceTraits<ISquare> : InterfaceIs<IID_ISquare, IShape> {};

template <>
struct tibxml::platform::InterfaceTraits<IColour> : InterfaceIs<IID_IColour, IUnknown> {};

namespace {

class RedSquare final : public tibxml::platform::ComObject<ISquare, IColour> {
public:
    explicit RedSquare(bool& gone) : gone_{gone} {}

    ~RedSquare() override { gone_ = true; }

    int corners() override { return 4; }

    int side() override { return 7; }

    int red() override { return 255; }

private:
    bool& gone_;
};

template <class Interface>
Interface* ask(IUnknown* object, REFIID iid) {
    void* found = nullptr;
    EXPECT_EQ(object->QueryInterface(iid, &found), S_OK);
    return static_cast<Interface*>(found);
}

class ComObjectTest : public testing::Test {
protected:
    ~ComObjectTest() override { EXPECT_TRUE(gone_); }

    bool gone_ = false;
    ISquare* square_ = new RedSquare{gone_};
};

TEST_F(ComObjectTest, DeletesItselfWithTheLastReference) {
    EXPECT_EQ(square_->AddRef(), 2u);
    EXPECT_EQ(square_->Release(), 1u);
    EXPECT_FALSE(gone_);
    EXPECT_EQ(square_->Release(), 0u);
}

TEST_F(ComObjectTest, AnswersItsInterfacesAndTheirBases) {
    auto* const shape = ask<IShape>(square_, IID_IShape);
    auto* const square = ask<ISquare>(square_, IID_ISquare);
    auto* const colour = ask<IColour>(square_, IID_IColour);
    EXPECT_EQ(shape->corners(), 4);
    EXPECT_EQ(square->side(), 7);
    EXPECT_EQ(colour->red(), 255);
    EXPECT_EQ(colour->Release(), 3u);
    square->Release();
    shape->Release();
    square_->Release();
}

TEST_F(ComObjectTest, HasOneIdentity) {
    auto* const colour = ask<IColour>(square_, IID_IColour);
    auto* const one = ask<IUnknown>(square_, IID_IUnknown);
    auto* const other = ask<IUnknown>(colour, IID_IUnknown);
    EXPECT_EQ(one, other);
    for (auto* const object : {one, other, static_cast<IUnknown*>(colour)})
        object->Release();
    square_->Release();
}

TEST_F(ComObjectTest, RefusesWhatItIsNot) {
    void* found = this;
    EXPECT_EQ(square_->QueryInterface(IID_NULL, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(square_->QueryInterface(IID_ISquare, nullptr), E_POINTER);
    EXPECT_EQ(square_->Release(), 0u);
}

TEST_F(ComObjectTest, InterfacesBeginWithTheThreeSlots) {
    // What a caller compiled against the platform's own headers relies on.
    static_assert(
        std::is_same_v<decltype(&IUnknown::QueryInterface), HRESULT (IUnknown::*)(REFIID, void**)>);
    static_assert(!std::has_virtual_destructor_v<IUnknown>);
    static_assert(!std::has_virtual_destructor_v<ISquare>);
    static_assert(sizeof(IUnknown) == sizeof(void*));
    EXPECT_EQ(&tibxml::platform::iidOf<ISquare>(), &IID_ISquare);
    square_->Release();
}

} // namespace
