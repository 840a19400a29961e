#include "WindowFixture.h"

#include "XTavixCellExtend.h"

#include <QAbstractItemModelTester>

namespace {

class CellTableModel : public WindowFixture {};

TEST_F(CellTableModel, AnswersForTheTableOfAPage)
{
    XCellTableModel& model = *page().model();
    EXPECT_EQ(model.rowCount(), 1025);
    EXPECT_EQ(model.columnCount(), 257);
    EXPECT_EQ(model.headerData(0, Qt::Vertical, Qt::DisplayRole), "1");
    EXPECT_EQ(model.headerData(25, Qt::Horizontal, Qt::DisplayRole), "Z");
    EXPECT_EQ(model.headerData(26, Qt::Horizontal, Qt::DisplayRole), "AA");
    EXPECT_FALSE(model.headerData(0, Qt::Vertical, Qt::ToolTipRole).isValid());
    EXPECT_TRUE(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_EQ(model.flags(QModelIndex()), Qt::ItemIsDropEnabled);
    EXPECT_FALSE(model.data(model.index(0, 0), Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.data(QModelIndex(), Qt::DisplayRole).isValid());
}

TEST_F(CellTableModel, ASmallTableStillShowsAHundredRowsAndColumns)
{
    huge::XCellTable table(xstd::XRect(0, 0, 9, 9), 4);
    const XCellTableModel model(&table);
    EXPECT_EQ(model.rowCount(), 100);
    EXPECT_EQ(model.columnCount(), 100);
}

TEST_F(CellTableModel, SetDataTakesTheEditRoleAndReportsAllThatChanged)
{
    XCellTableModel& model = *page().model();
    // Every signal is checked against what the model answers.
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_FALSE(model.setData(model.index(0, 0), "1", Qt::DisplayRole));
    EXPECT_FALSE(model.setData(QModelIndex(), "1", Qt::EditRole));
    ASSERT_TRUE(model.setData(model.index(0, 0), "2", Qt::EditRole));
    ASSERT_TRUE(model.setData(model.index(700, 3), "=A1+1", Qt::EditRole));
    xstd::XMergedRects changed;
    QObject::connect(
        &model, &QAbstractItemModel::dataChanged,
        [&](const QModelIndex& first, const QModelIndex& last) {
            changed.add_(xstd::XRect(first.row(), first.column(), last.row(), last.column()), true);
        });
    ASSERT_TRUE(model.setData(model.index(0, 0), "3", Qt::EditRole));
    EXPECT_TRUE(changed.contains(0, 0));
    EXPECT_TRUE(changed.contains(700, 3));
    EXPECT_FALSE(changed.contains(1, 0));
    EXPECT_EQ(shown(700, 3), "4");
    EXPECT_EQ(model.rowCount(), 1025);
}

TEST_F(CellTableModel, ShowsTheHeadOfALongTextAndEditsAllOfIt)
{
    XCellTableModel& model = *page().model();
    const QString digits(5000, '7');
    ASSERT_TRUE(model.setData(model.index(0, 0), digits, Qt::EditRole));
    EXPECT_EQ(shown(0, 0), digits.left(4096) + "...（共 5000 个字符）");
    EXPECT_EQ(model.data(model.index(0, 0), Qt::EditRole).toString(), digits);
}

TEST_F(CellTableModel, TheViewFollowsATableThatGrows)
{
    XCellTableModel& model = *page().model();
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    page().table().resizeMainRect(xstd::XRect(0, 0, 1039, 271));
    model.update(xstd::XMergedRects());
    EXPECT_EQ(model.rowCount(), 1040);
    EXPECT_EQ(model.columnCount(), 272);
}

TEST_F(CellTableModel, AFormatRecordIsMadeFromThePrototype)
{
    XCellTableModel& model = *page().model();
    EXPECT_EQ(model.cellExtend(2, 2), nullptr);
    XTavixCellExtend* extend = model.forceCellExtend(2, 2);
    ASSERT_NE(extend, nullptr);
    EXPECT_EQ(model.forceCellExtend(2, 2), extend);
    EXPECT_EQ(model.cellExtend(2, 2), extend);
}

} // namespace
