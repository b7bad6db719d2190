#include "EngineTest.h"

#include <exception>
#include <type_traits>
#include <utility>

namespace {

using Exception = WXmlValueTypeNotFoundException;

static_assert(!std::is_base_of_v<std::exception, Exception>);
static_assert(!std::is_polymorphic_v<Exception>);
static_assert(sizeof(Exception) == sizeof(CString));
static_assert(std::is_nothrow_copy_constructible_v<Exception>);

TEST(ValueTypeNotFound, TellsTheTypeAndNothingElse) {
    EXPECT_EQ(utf8(Exception{L"double"}.GetMessageW()), "double");
    EXPECT_EQ(utf8(Exception{nullptr}.GetMessageW()), "");
}

TEST(ValueTypeNotFound, IsCopiedAndMoved) {
    Exception const original{L"int"};
    Exception copy{original};
    EXPECT_EQ(utf8(copy.GetMessageW()), "int");
    Exception moved{std::move(copy)};
    EXPECT_EQ(utf8(moved.GetMessageW()), "int");
    Exception assigned{L"x"};
    assigned = original;
    EXPECT_EQ(utf8(assigned.GetMessageW()), "int");
    assigned = std::move(moved);
    EXPECT_EQ(utf8(assigned.GetMessageW()), "int");
}

class Colours : public IEnumInterpreter {
public:
    bool ValueOf(wchar_t const* name, int& value) const override {
        value = 1;
        return CString{L"red"} == name;
    }

    bool NameOf(int value, CString& name) const override {
        name = L"red";
        return value == 1;
    }
};

static_assert(std::is_abstract_v<IEnumInterpreter>);
static_assert(sizeof(IEnumInterpreter) == sizeof(void*), "a table of functions and no data");
static_assert(!std::has_virtual_destructor_v<IEnumInterpreter>);

TEST(EnumInterpreter, IsForClientsToImplement) {
    Colours colours;
    Colours const copy{colours};
    colours = copy;
    IEnumInterpreter const& interpreter = colours;
    int value = 0;
    CString name;
    EXPECT_TRUE(interpreter.ValueOf(L"red", value));
    EXPECT_TRUE(interpreter.NameOf(value, name));
    EXPECT_EQ(utf8(name), "red");
}

} // namespace
