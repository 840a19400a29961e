#include "cell/XCellRangeTree.h"
#include "cell/XCellRange.h"
#include "common/XException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace huge {

namespace {

using xstd::XRect;

std::unique_ptr<XCellRange> rangeOf(const XRect& rect)
{
    XCellRangeRef ref;
    ref.start = {rect.top, static_cast<uint16_t>(rect.left), 0, XCellPos::kindCell};
    ref.end = {rect.bottom, static_cast<uint16_t>(rect.right), 0, XCellPos::kindCell};
    return std::make_unique<XCellRange>(nullptr, nullptr, ref);
}

/// The tree beside a plain list of what was added.
struct Both {
    explicit Both(const XRect& root, int32_t baseSize) : tree(root, baseSize), root(root) {}

    void add(const XRect& rect)
    {
        ranges.push_back(rangeOf(rect));
        tree.add(rect, ranges.back().get());
    }
    void removeAt(size_t i)
    {
        tree.remove(ranges[i]->rect(), ranges[i].get());
        std::swap(ranges[i], ranges.back());
        ranges.pop_back();
    }
    std::set<XCellRange*> scan(const XRect& rect) const
    {
        std::set<XCellRange*> found;
        for (const auto& range : ranges) {
            if (range->rect().intersects(rect))
                found.insert(range.get());
        }
        return found;
    }
    void expectSame(const XRect& rect) const
    {
        const auto found = tree.getRanges(rect);
        ASSERT_EQ(std::set<XCellRange*>(found.begin(), found.end()), scan(rect)) << rect.toString();
    }
    void expectSame(int32_t row, int32_t col) const
    {
        const auto found = tree.getRanges(row, col);
        ASSERT_EQ(std::set<XCellRange*>(found.begin(), found.end()), scan({row, col, row, col}))
            << row << ", " << col;
    }

    XCellRangeTree tree;
    XRect root;
    std::vector<std::unique_ptr<XCellRange>> ranges;
};

struct TreeShape {
    XRect root;
    int32_t baseSize;
};

class TreeAgainstScan : public ::testing::TestWithParam<TreeShape> {};

TEST_P(TreeAgainstScan, FindsTheSameAfterRandomChanges)
{
    const TreeShape& shape = GetParam();
    const XRect& root = shape.root;
    Both both(root, shape.baseSize);
    std::mt19937 random(20240611);
    const auto below = [&](int64_t n) { return static_cast<int32_t>(random() % n); };
    // Mostly small rectangles in a corner, so that leaves get more than a few references, some that
    // are large, and some that reach beyond the root.
    const auto anyRect = [&](bool inside) {
        const bool isSmall = below(3) != 0;
        const int32_t rows =
            static_cast<int32_t>(isSmall ? std::min<int64_t>(root.height(), 12) : root.height());
        const int32_t cols =
            static_cast<int32_t>(isSmall ? std::min<int64_t>(root.width(), 12) : root.width());
        XRect rect(root.top + below(rows), root.left + below(cols), 0, 0);
        rect.bottom = rect.top + below(isSmall ? 3 : rows);
        rect.right = rect.left + below(isSmall ? 3 : cols);
        return inside ? root.intersect(rect) : rect;
    };
    for (int step = 0; step < 1600; ++step) {
        if (both.ranges.empty() || below(5) < (step < 800 ? 4 : 1))
            both.add(anyRect(false));
        else
            both.removeAt(static_cast<size_t>(below(static_cast<int64_t>(both.ranges.size()))));
        if (step % 7 == 0)
            both.expectSame(anyRect(true));
        if (step % 3 == 0)
            both.expectSame(root.top + below(std::min<int64_t>(root.height(), 14)),
                            root.left + below(std::min<int64_t>(root.width(), 14)));
    }
    both.expectSame(root);
    while (!both.ranges.empty())
        both.removeAt(both.ranges.size() / 2);
    EXPECT_TRUE(both.tree.root().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Shapes, TreeAgainstScan,
                         ::testing::Values(TreeShape{{0, 0, 1024, 256}, 4},
                                           TreeShape{{0, 0, 63, 63}, 1}, TreeShape{{0, 0, 0, 0}, 1},
                                           TreeShape{{0, 0, 4999, 2}, 1},
                                           TreeShape{{3, 5, 40, 800}, 0},
                                           TreeShape{{0, 0, 1048575, 32766}, 64}));

TEST(RangeTree, StoresOneCellOnceAndTheWholeAreaAtTheRoot)
{
    Both both({0, 0, 1023, 255}, 1);
    both.add({7, 9, 7, 9});
    EXPECT_EQ(both.tree.allRanges().size(), 1u);
    EXPECT_TRUE(both.tree.root().bag().empty());
    both.add({0, 0, 1023, 255});
    EXPECT_EQ(both.tree.root().bag().entries().size(), 1u);
    EXPECT_EQ(both.tree.getRanges(7, 9).size(), 2u);
    both.add({0, 0, 1048575, 16383}); // beyond the area on two sides: the rest is all of it
    EXPECT_EQ(both.tree.root().bag().entries().size(), 2u);
    both.add({2000, 0, 2000, 5});
    EXPECT_EQ(both.tree.allRanges().size(), 3u);
}

TEST(RangeTree, KeepsOneEntryPerNodeForARangeAddedTwice)
{
    XCellRangeTree tree({0, 0, 63, 63}, 4);
    const auto range = rangeOf({1, 1, 30, 1});
    tree.add(range->rect(), range.get());
    const size_t entries = tree.allRanges().size();
    tree.add(range->rect(), range.get());
    EXPECT_EQ(tree.allRanges().size(), entries);
    EXPECT_GT(entries, 1u);
    // One entry for each node that holds it, not one for each reference.
    EXPECT_EQ(tree.getRanges(XRect(0, 0, 63, 63)).size(), entries);
    tree.remove(range->rect(), range.get());
    EXPECT_TRUE(tree.root().isEmpty());
}

TEST(RangeTree, RemovingTheLastRangeOfALeafDropsTheEmptyNodesAbove)
{
    XCellRangeTree tree({0, 0, 63, 63}, 1);
    const auto left = rangeOf({0, 0, 0, 0});
    const auto right = rangeOf({63, 63, 63, 63});
    tree.add(left->rect(), left.get());
    tree.add(right->rect(), right.get());
    tree.remove(right->rect(), right.get());
    EXPECT_NE(tree.root().child(0), nullptr);
    EXPECT_EQ(tree.root().child(3), nullptr);
    tree.remove(right->rect(), right.get()); // once more: nothing
    tree.remove(left->rect(), left.get());
    EXPECT_TRUE(tree.root().isEmpty());
}

TEST(RangeTree, HoldsManyReadersOfOneCell)
{
    Both both({0, 0, 1024, 256}, 4);
    for (int i = 0; i < 20000; ++i)
        both.add({0, 0, 0, 0});
    EXPECT_EQ(both.tree.getRanges(0, 0).size(), 20000u);
    // From the front, where a removal by search would be cheap, and from the back.
    for (size_t i = 0; i < 9990; ++i)
        both.removeAt(0);
    while (both.ranges.size() > 10)
        both.removeAt(both.ranges.size() - 1);
    both.expectSame(0, 0);
}

TEST(RangeTree, RefusesWhatLiesOutside)
{
    const auto failureOf = [](const std::function<void()>& run) {
        try {
            run();
        } catch (const xstd::XExceptionItems& failure) {
            return failure;
        }
        return xstd::XExceptionItems();
    };
    const auto null = failureOf([] { XCellRangeTree tree(XRect(), 4); });
    EXPECT_EQ(null.mess(), "XCellRangeTree root node can't not be a null Rect");
    EXPECT_EQ(null.extendText("cellRangeTree", "rect"), XRect().toString());

    const XCellRangeTree tree({0, 0, 9, 9}, 4);
    const auto rect = failureOf([&] { tree.getRanges(XRect(0, 0, 10, 9)); });
    EXPECT_EQ(rect.mess(), "Rect is out of bound");
    EXPECT_EQ(rect.extendText("cellRangeTree", "nodeRect"), "{tl:(0, 0), br:(9, 9)}");
    EXPECT_EQ(rect.extendText("cellRangeTree", "rect"), "{tl:(0, 0), br:(10, 9)}");

    const auto point = failureOf([&] { tree.getRanges(3, -1); });
    EXPECT_EQ(point.mess(), "Rect is out of bound");
    EXPECT_EQ(point.extendText("cellRangeTree", "nodeRect"), "{tl:(0, 0), br:(9, 9)}");
    EXPECT_EQ(point.extendInt("cellRangeTree", "row"), 3);
    EXPECT_EQ(point.extendInt("cellRangeTree", "col"), -1);
}

TEST(RangeTree, OwnersOfDeletedReferencesComeOnlyWhenAskedFor)
{
    const auto range = rangeOf({0, 0, 0, 0});
    std::vector<XCell*> cells;
    XCellRangeTree::getCells(cells, {range.get(), range.get()}, false);
    EXPECT_EQ(cells.size(), 2u);
    range->setDeleted(true);
    XCellRangeTree::getCells(cells, {range.get()}, false);
    EXPECT_EQ(cells.size(), 2u);
    XCellRangeTree::getCells(cells, {range.get()}, true);
    EXPECT_EQ(cells.size(), 3u);
}

} // namespace

} // namespace huge
