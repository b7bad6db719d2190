#include <tree/AddressCache.h>

#include <array>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

namespace tibxml::tree::test {

TEST(AddressCache, AsksOnceForEachAddressWithAPlaceOfItsOwn) {
    AddressCache<int const*, int, 1> cache;
    std::array<int, 2> const objects{};
    int made = 0;
    auto const next = [&] { return ++made; };
    EXPECT_EQ(cache.of(&objects[0], next), 1);
    EXPECT_EQ(cache.of(&objects[0], next), 1);
    EXPECT_EQ(cache.of(&objects[1], next), 2); // takes the only place
    EXPECT_EQ(cache.of(&objects[0], next), 3);
}

TEST(AddressCache, KeepsWhatItHasWhenMakingFails) {
    AddressCache<int const*, int, 1> cache;
    std::array<int, 2> const objects{};
    EXPECT_EQ(cache.of(&objects[0], [] { return 7; }), 7);
    auto const fail = []() -> int { throw std::runtime_error{"no"}; };
    EXPECT_THROW(cache.of(&objects[1], fail), std::runtime_error);
    EXPECT_EQ(cache.of(&objects[0], fail), 7);
}

TEST(AddressCache, TellsPairsApartThatShareTheirFirstAddress) {
    AddressCache<std::pair<int const*, char const*>, int> cache;
    int const object = 0;
    char const other = 'x';
    EXPECT_EQ(cache.of({&object, nullptr}, [] { return 1; }), 1);
    EXPECT_EQ(cache.of({&object, &other}, [] { return 2; }), 2);
    EXPECT_EQ(cache.of({&object, &other}, [] { return 3; }), 2);
}

} // namespace tibxml::tree::test
