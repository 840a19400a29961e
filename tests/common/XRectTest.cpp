#include "common/XRect.h"
#include "common/XMergedRects.h"
#include "common/XOptions.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

using namespace xstd;

namespace {

using Cells = std::set<XPoint>;

Cells cellsOf(const XMergedRects& rects)
{
    Cells cells;
    for (const XRect& rect : rects) {
        rect.forEach([&](int32_t row, int32_t col) {
            cells.insert({row, col});
            return false;
        });
    }
    return cells;
}

int64_t areaOf(const XMergedRects& rects)
{
    int64_t area = 0;
    for (const XRect& rect : rects)
        area += rect.area();
    return area;
}

class RandomRects {
public:
    explicit RandomRects(unsigned seed) : m_engine(seed) {}

    XRect rect() { return XRect(number(), number(), number(), number()).normalize_(); }
    XMergedRects rects(int count)
    {
        XMergedRects set;
        for (int i = 0; i < count; ++i)
            set.add_(rect());
        return set;
    }

private:
    int32_t number() { return std::uniform_int_distribution<int32_t>(0, 9)(m_engine); }

    std::mt19937 m_engine;
};

} // namespace

TEST(Rect, MeasuresAndNulls)
{
    const XRect rect(1, 2, 3, 5);
    EXPECT_EQ(rect.height(), 3);
    EXPECT_EQ(rect.width(), 4);
    EXPECT_EQ(rect.area(), 12);
    EXPECT_TRUE(XRect().isNull());
    EXPECT_EQ(XRect(3, 0, 1, 5).area(), 0);
    EXPECT_EQ(XRect(3, 0, 1, 5).width(), 0);
    EXPECT_EQ(rect.toString(), "{tl:(1, 2), br:(3, 5)}");
    EXPECT_EQ(XRect().toString(), "{tl:(null, null), br:{null, null)}");
}

TEST(Rect, ContainsAndIntersects)
{
    const XRect rect(1, 1, 4, 4);
    EXPECT_TRUE(rect.contains(4, 1));
    EXPECT_FALSE(rect.contains(5, 1));
    EXPECT_TRUE(rect.contains(XRect(2, 2, 4, 4)));
    EXPECT_FALSE(rect.contains(XRect(2, 2, 4, 5)));
    EXPECT_TRUE(rect.intersects(XRect(4, 4, 9, 9)));
    EXPECT_FALSE(rect.intersects(XRect(5, 4, 9, 9)));
    EXPECT_EQ(rect.intersect(XRect(3, 0, 9, 2)), XRect(3, 1, 4, 2));
    EXPECT_EQ(rect.intersect(XRect(7, 7, 8, 8)), XRect(7, 7, 4, 4));
    EXPECT_EQ(rect.intersect(XRect()), XRect());
    EXPECT_EQ(XRect(5, 5, 0, 0).intersect(rect), XRect(5, 5, 0, 0));
}

TEST(Rect, MovesAndTurns)
{
    const XRect rect(2, 3, 4, 9);
    EXPECT_EQ(rect.offset(-1, 2), XRect(1, 5, 3, 11));
    EXPECT_EQ(rect.inflated(1), XRect(1, 2, 5, 10));
    EXPECT_EQ(XRect(4, 9, 2, 3).normalize_(), rect);
    EXPECT_EQ(rect.transposed(2, 3), XRect(2, 3, 8, 5));
    EXPECT_EQ(rect.transposed(0, 0), XRect(3, 2, 9, 4));
}

TEST(Rect, ForEachGoesRowByRowUntilTrue)
{
    std::vector<XPoint> seen;
    XRect(1, 1, 2, 2).forEach([&](int32_t row, int32_t col) {
        seen.push_back({row, col});
        return seen.size() == 3;
    });
    EXPECT_EQ(seen, (std::vector<XPoint>{{1, 1}, {1, 2}, {2, 1}}));
}

struct MergeCase {
    XRect receiver;
    XRect other;
    bool merged;
    XRect result;
};

TEST(RectMerge, TakesInWhatMakesOneRectangle)
{
    const MergeCase cases[] = {{{}, {1, 1, 2, 2}, true, {1, 1, 2, 2}},
                               {{1, 1, 2, 2}, {}, true, {1, 1, 2, 2}},
                               {{0, 0, 1, 1}, {0, 2, 1, 5}, true, {0, 0, 1, 5}},
                               {{0, 0, 1, 1}, {0, 3, 1, 5}, false, {0, 0, 1, 1}},
                               {{2, 0, 3, 1}, {0, 0, 2, 1}, true, {0, 0, 3, 1}},
                               {{0, 0, 9, 9}, {3, 3, 4, 4}, true, {0, 0, 9, 9}},
                               {{3, 3, 4, 4}, {0, 0, 9, 9}, true, {0, 0, 9, 9}},
                               {{0, 0, 1, 1}, {0, 2, 2, 5}, false, {0, 0, 1, 1}}};
    for (const MergeCase& row : cases) {
        XRect rect = row.receiver;
        EXPECT_EQ(rect.merge_(row.other), row.merged) << row.other.toString();
        EXPECT_EQ(rect, row.result) << row.other.toString();
    }
}

TEST(RectPieces, ComeInTheirOrder)
{
    std::vector<XRect> pieces;
    XRect middle(2, 2, 3, 3);
    EXPECT_TRUE(middle.addTo(XRect(0, 3, 9, 9), pieces));
    EXPECT_EQ(pieces, (std::vector<XRect>{{0, 3, 1, 9}, {4, 3, 9, 9}, {2, 4, 3, 9}}));
    pieces.clear();
    EXPECT_FALSE(middle.addTo(XRect(7, 7, 8, 9), pieces));
    EXPECT_EQ(pieces, (std::vector<XRect>{{7, 7, 8, 9}}));

    pieces.clear();
    EXPECT_TRUE(XRect(0, 0, 9, 9).subtractFrom(middle, pieces));
    EXPECT_EQ(pieces, (std::vector<XRect>{{0, 0, 9, 1}, {0, 4, 9, 9}, {0, 2, 1, 3}, {4, 2, 9, 3}}));
    pieces.clear();
    EXPECT_TRUE(middle.subtractFrom(XRect(0, 0, 9, 9), pieces));
    EXPECT_FALSE(XRect().subtractFrom(middle, pieces));
    EXPECT_TRUE(pieces.empty());
    EXPECT_FALSE(middle.subtractFrom(XRect(), pieces));
    EXPECT_EQ(pieces, std::vector<XRect>{middle});
}

TEST(MergedRects, NormalizeJoinsNeighbours)
{
    XMergedRects overlapping(XRect(0, 0, 1, 1));
    overlapping.add_(XRect(1, 1, 2, 2), true);
    EXPECT_EQ(areaOf(overlapping), 7);
    EXPECT_EQ(cellsOf(overlapping).size(), 7U);

    XMergedRects sameHeight(XRect(0, 0, 1, 1));
    sameHeight.add_(XRect(0, 2, 1, 3), true);
    EXPECT_EQ(sameHeight, XMergedRects(XRect(0, 0, 1, 3)));

    XMergedRects twoHeights(XRect(0, 0, 1, 1));
    twoHeights.add_(XRect(0, 2, 4, 3), true);
    EXPECT_EQ(twoHeights.size(), 2U);
    EXPECT_EQ(cellsOf(twoHeights).size(), 14U);

    EXPECT_EQ(XMergedRects(XRect()).normalize_().size(), 1U);
}

TEST(MergedRects, AgreeWithAPlainSetOfCells)
{
    RandomRects random(20240501);
    for (int round = 0; round < 300; ++round) {
        const XMergedRects raw = random.rects(5);
        const XMergedRects a = XMergedRects(raw).normalize_();
        const XMergedRects b = random.rects(3);
        const XRect probe = random.rect();
        const Cells cells = cellsOf(raw);
        ASSERT_EQ(cellsOf(a), cells);
        ASSERT_EQ(areaOf(a), static_cast<int64_t>(cells.size()));

        const XMergedRects joined = XMergedRects().addPoints_({cells.rbegin(), cells.rend()});
        ASSERT_EQ(cellsOf(joined), cells);
        ASSERT_EQ(areaOf(joined), areaOf(a));

        Cells rest = cells;
        Cells shared;
        for (const XPoint& point : cellsOf(b)) {
            if (rest.erase(point))
                shared.insert(point);
        }
        ASSERT_EQ(cellsOf(XMergedRects(a).subtract_(b, true)), rest);
        ASSERT_EQ(cellsOf(a.intersected(b)), shared);
        ASSERT_EQ(a.intersects(b), !shared.empty());
        ASSERT_EQ(a.covers(probe), areaOf(a.intersected(probe)) == probe.area());
        ASSERT_EQ(a.contains(probe.top, probe.left), cells.count({probe.top, probe.left}) == 1);
    }
}

TEST(MergedRects, HandleTheEmptySet)
{
    XMergedRects rects(XRect(1, 1, 2, 2));
    EXPECT_EQ(rects.toString(2), "  {\n      {tl:(1, 1), br:(2, 2)}\n  }");
    EXPECT_TRUE(rects.subtract_(XRect(0, 0, 5, 5), true).isEmpty());
    EXPECT_TRUE(rects.boundRect().isNull());
    EXPECT_EQ(rects.boundRect(), XRect(0, 0, -1, -1));
    rects.add_(XRect(4, 4, 5, 5)).add_(XRect(2, 7, 2, 9));
    EXPECT_EQ(rects.boundRect(), XRect(2, 4, 5, 9));
    EXPECT_EQ(rects.offset(1, -1).boundRect(), XRect(3, 3, 6, 8));
    EXPECT_FALSE(rects.contains(XRect(2, 4, 5, 9)));
    EXPECT_TRUE(rects.contains(XRect(4, 5, 5, 5)));
    rects.add_(rects);
    EXPECT_EQ(rects.size(), 4U);
}

TEST(Options, AreBitsBelow64)
{
    const XOptions options{0, 5, 63, 64, -1};
    EXPECT_TRUE(options.has(0));
    EXPECT_TRUE(options.has(63));
    EXPECT_FALSE(options.has(64));
    EXPECT_FALSE(options.has(1));
    EXPECT_TRUE(options.hasAny({1, 5}));
    EXPECT_FALSE(options.hasAny({1, 64}));
}
