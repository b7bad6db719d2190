#include <TibXml/platform/Geometry.h>

#include <gtest/gtest.h>

namespace {

TEST(Geometry, BeginsAtZero) {
    EXPECT_EQ(CPoint{}, CPoint(0, 0));
    EXPECT_EQ(CSize{}, CSize(0, 0));
    EXPECT_EQ(CRect{}, CRect(0, 0, 0, 0));
}

TEST(Geometry, KeepsItsNumbers) {
    CPoint const point{-1, 2};
    CSize const size{3, -4};
    CRect const rect{1, 2, 3, 4};
    EXPECT_TRUE(point.x == -1 && point.y == 2);
    EXPECT_TRUE(size.cx == 3 && size.cy == -4);
    EXPECT_TRUE(rect.left == 1 && rect.top == 2 && rect.right == 3 && rect.bottom == 4);
}

TEST(Geometry, DiffersInAnyNumber) {
    EXPECT_TRUE(CPoint(1, 2) != CPoint(9, 2) && CPoint(1, 2) != CPoint(1, 9));
    EXPECT_TRUE(CSize(1, 2) != CSize(9, 2) && CSize(1, 2) != CSize(1, 9));
    CRect const rect{1, 2, 3, 4};
    for (auto const& other :
         {CRect{9, 2, 3, 4}, CRect{1, 9, 3, 4}, CRect{1, 2, 9, 4}, CRect{1, 2, 3, 9}}) {
        EXPECT_TRUE(rect != other);
        EXPECT_EQ(EqualRect(&rect, &other), 0);
    }
}

TEST(Geometry, EqualRectComparesEdges) {
    CRect const one{1, 2, 3, 4};
    CRect const same{1, 2, 3, 4};
    EXPECT_EQ(EqualRect(&one, &same), 1);
    EXPECT_EQ(EqualRect(&one, nullptr), 0);
    EXPECT_EQ(EqualRect(nullptr, &one), 0);
    EXPECT_EQ(EqualRect(nullptr, nullptr), 0);
}

} // namespace
