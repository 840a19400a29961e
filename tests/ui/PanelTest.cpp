#include "WindowFixture.h"
#include "XBackgroundColor.h"
#include "XCommonAction.h"
#include "XCommonToolButton.h"
#include "XFontComboBox.h"
#include "XMenuProxyStyle.h"
#include "XPanelScroller.h"
#include "XTavixCellExtend.h"

#include <QFile>
#include <QFontDatabase>
#include <QFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTabWidget>
#include <QWheelEvent>

#include <algorithm>

namespace {

class Panel : public WindowFixture {
protected:
    QFrame* frame() { return window->findChild<QFrame*>("baseToolFrame"); }

    XCommonToolButton* button(const QString& toolTip)
    {
        for (XCommonToolButton* each : window->findChildren<XCommonToolButton*>()) {
            if (each->toolTip() == toolTip)
                return each;
        }
        ADD_FAILURE() << toolTip.toStdString();
        return nullptr;
    }

    /// The combo boxes from left to right: font, size, decimal places.
    XComboBox* combo(int index)
    {
        QList<XComboBox*> boxes = frame()->findChildren<XComboBox*>();
        std::sort(boxes.begin(), boxes.end(),
                  [](const QWidget* a, const QWidget* b) { return a->x() < b->x(); });
        return boxes.value(index);
    }

    /// Which of these buttons are checked, as a row of + and -.
    QString states(const QStringList& toolTips)
    {
        QString shown;
        for (const QString& toolTip : toolTips)
            shown += button(toolTip)->isChecked() ? '+' : '-';
        return shown;
    }
};

const QStringList fontButtons = {"粗体", "斜体", "下划线"};
const QStringList alignButtons = {"居上", "纵向居中", "居下", "居左", "横向居中", "居右"};
const QStringList flagButtons = {"逗号分隔符", "单引号分隔符", "显示百分号", "显示模数",
                                 "显示或不显示符号位"};
const QStringList radixButtons = {"二进制", "八进制",     "10进制，或默认进制",
                                  "16进制", "base58编码", "base64编码"};

} // namespace

TEST_F(Panel, ShowsItsControlsFromLeftToRightInTwoRows)
{
    const QStringList upper = {
        "只粘贴数值",     "只粘贴公式",     "剪切( Ctrl + X )", "复制格式( Ctrl + Shift + C )",
        "增大字体",       "缩小字体",       "清除表格线",       "粗框",
        "粗框+细内线",    "细框",           "细框+细内线",      "居上",
        "纵向居中",       "居下",           "逗号分隔符",       "单引号分隔符",
        "增加分隔符宽度", "减小分隔符宽度", "增加小数位",       "减小小数位"};
    const QStringList lower = {"只粘贴格式",
                               "复制( Ctrl + C )",
                               "粘贴格式( Ctrl + Shift + V )",
                               "粗体",
                               "斜体",
                               "下划线",
                               "细内线",
                               "左边线",
                               "上边线",
                               "右边线",
                               "下边线",
                               "居左",
                               "横向居中",
                               "居右",
                               "显示百分号",
                               "显示模数",
                               "10进制，或默认进制",
                               "显示或不显示符号位",
                               "二进制",
                               "八进制",
                               "16进制",
                               "base58编码",
                               "base64编码"};
    const QStringList both = {"粘贴( ctrl+v )", "格式刷", "清除格式", "标识出单元格之间的引用关系",
                              "自动换行"};
    for (const QStringList& row : {upper, lower, both}) {
        int end = 0;
        for (const QString& toolTip : row) {
            const QRect place = button(toolTip)->geometry();
            EXPECT_GE(place.left(), end) << toolTip.toStdString();
            EXPECT_EQ(place.top() < 30, row != lower) << toolTip.toStdString();
            EXPECT_LE(place.bottom(), 60) << toolTip.toStdString();
            end = place.right();
        }
    }
    EXPECT_EQ(frame()->findChildren<XCommonToolButton*>().size(),
              upper.size() + lower.size() + both.size());
    EXPECT_EQ(frame()->findChildren<XToolColorButton*>().size(), 3);
    EXPECT_EQ(window->borderColor(), QColor(Qt::black));
}

TEST_F(Panel, TheToolBarChoosesThePanel)
{
    auto* stack = window->findChild<QStackedWidget*>("stackedWidget");
    EXPECT_EQ(stack->height(), 60);
    const auto active = [&] { return states({"基本功能", "附加功能"}); };
    EXPECT_EQ(active(), "+-");
    QTest::mouseClick(button("附加功能"), Qt::LeftButton);
    EXPECT_EQ(stack->currentIndex(), 1);
    EXPECT_EQ(active(), "-+");
    QTest::mouseClick(button("附加功能"), Qt::LeftButton);
    EXPECT_EQ(active(), "-+");
    QTest::mouseClick(button("基本功能"), Qt::LeftButton);
    EXPECT_EQ(stack->currentIndex(), 0);
    EXPECT_EQ(active(), "+-");
    EXPECT_EQ(window->undoButton(), button("回退( Ctrl + Z )"));
    EXPECT_EQ(window->redoButton(), button("重做( Ctrl + Y )"));
}

TEST_F(Panel, TheToolBarOpensAndSavesPages)
{
    const auto click = [this](const char* toolTip) {
        QTest::mouseClick(button(toolTip), Qt::LeftButton);
    };
    click("新建( Ctrl + N )");
    ASSERT_EQ(window->tabWidget()->count(), 2);
    EXPECT_EQ(window->currentTabIndex(), 1);
    QStringList paths = {folder() + "/a.tavix", folder() + "/b.tavix"};
    userPrompts().saveFile = [&](const QString&, const QString&) { return paths.takeFirst(); };
    click("保存( Ctrl + S )");
    EXPECT_TRUE(QFile::exists("a.tavix"));
    click("另存为...");
    EXPECT_TRUE(QFile::exists("b.tavix"));
    userPrompts().openFile = [&](const QString&) { return folder() + "/a.tavix"; };
    click("打开( Ctrl + O )");
    EXPECT_EQ(window->tabWidget()->count(), 3);
    enter(0, 0, "1");
    EXPECT_TRUE(page().isModified());
    paths.append(folder() + "/c.tavix");
    click("保存全部");
    EXPECT_FALSE(page().isModified());
}

TEST_F(Panel, FollowsAFormat)
{
    XTavixCellExtend extend(QFont("Courier New", 14));
    extend.bold = true;
    extend.underLine = true;
    extend.valign = XTavixCellExtend::AlignEnd;
    extend.align = XTavixCellExtend::AlignCenter;
    extend.formatRule.mantissa = 7;
    extend.formatRule.breakchar = '\'';
    extend.formatRule.mod = 1;
    extend.formatRule.radix = 58;
    QSignalSpy chosen(combo(1), &QComboBox::textActivated);
    window->showCellFormat(&extend);
    EXPECT_EQ(combo(0)->currentText(), "Courier New");
    EXPECT_EQ(combo(1)->currentText(), "14");
    EXPECT_EQ(combo(2)->currentText(), "7");
    EXPECT_EQ(states(fontButtons), "+-+");
    EXPECT_EQ(states(alignButtons), "--+-+-");
    EXPECT_EQ(states(flagButtons), "-+-+-");
    EXPECT_EQ(states(radixButtons), "----+-");
    EXPECT_EQ(chosen.count(), 0);

    window->showCellFormat(nullptr); // what a new cell would have
    EXPECT_EQ(combo(1)->currentText(), "10");
    EXPECT_EQ(combo(2)->currentText(), "-1");
    EXPECT_EQ(states(fontButtons), "---");
    EXPECT_EQ(states(alignButtons), "-+-+--");
    EXPECT_EQ(states(flagButtons), "-----");
    EXPECT_EQ(states(radixButtons), "--+---");
}

TEST_F(Panel, EachButtonActsOnTheSelectedCell)
{
    using Record = XTavixCellExtend;
    struct Case {
        const char* toolTip;
        bool (*changed)(const Record& record);
    };
    const Case cases[] = {
        {"粗体", [](const Record& r) { return r.bold; }},
        {"斜体", [](const Record& r) { return r.italic; }},
        {"下划线", [](const Record& r) { return r.underLine; }},
        {"自动换行", [](const Record& r) { return r.multLine; }},
        {"增大字体", [](const Record& r) { return r.fontSize > 10; }},
        {"缩小字体", [](const Record& r) { return r.fontSize < 10; }},
        {"居上", [](const Record& r) { return r.valign == Record::AlignStart; }},
        {"居下", [](const Record& r) { return r.valign == Record::AlignEnd; }},
        {"横向居中", [](const Record& r) { return r.align == Record::AlignCenter; }},
        {"居右", [](const Record& r) { return r.align == Record::AlignEnd; }},
        {"逗号分隔符", [](const Record& r) { return r.formatRule.breakchar == ','; }},
        {"单引号分隔符", [](const Record& r) { return r.formatRule.breakchar == '\''; }},
        {"增加分隔符宽度", [](const Record& r) { return r.formatRule.breaksize == 1; }},
        {"减小分隔符宽度", [](const Record& r) { return r.formatRule.breaksize == 127; }},
        {"增加小数位", [](const Record& r) { return r.formatRule.mantissa == 0; }},
        {"显示百分号", [](const Record& r) { return r.formatRule.percent == 1; }},
        {"显示模数", [](const Record& r) { return r.formatRule.mod == 1; }},
        {"显示或不显示符号位", [](const Record& r) { return r.formatRule.sign == 1; }},
        {"二进制", [](const Record& r) { return r.formatRule.radix == 2; }},
        {"八进制", [](const Record& r) { return r.formatRule.radix == 8; }},
        {"16进制", [](const Record& r) { return r.formatRule.radix == 16; }},
        {"base58编码", [](const Record& r) { return r.formatRule.radix == 58; }},
        {"base64编码", [](const Record& r) { return r.formatRule.radix == 64; }},
        {"粗框", [](const Record& r) { return r.borderTopStyle == Record::ThickBorder; }},
        {"粗框+细内线", [](const Record& r) { return r.borderLeftStyle == Record::ThickBorder; }},
        {"细框", [](const Record& r) { return r.borderBottomStyle == Record::ThinBorder; }},
        {"细框+细内线", [](const Record& r) { return r.borderRightStyle == Record::ThinBorder; }},
        {"左边线", [](const Record& r) { return r.borderLeftStyle == Record::ThinBorder; }},
        {"上边线", [](const Record& r) { return r.borderTopStyle == Record::ThinBorder; }},
        {"右边线", [](const Record& r) { return r.borderRightStyle == Record::ThinBorder; }},
        {"下边线", [](const Record& r) { return r.borderBottomStyle == Record::ThinBorder; }},
    };
    goTo(2, 1);
    const auto record = [this] {
        const huge::XCell* cell = page().table().cellAt(2, 1);
        return cell ? static_cast<const Record*>(cell->extend()) : nullptr;
    };
    for (const Case& row : cases) {
        QTest::mouseClick(button(row.toolTip), Qt::LeftButton);
        ASSERT_NE(record(), nullptr) << row.toolTip;
        EXPECT_TRUE(row.changed(*record())) << row.toolTip;
        QTest::mouseClick(window->undoButton(), Qt::LeftButton);
        EXPECT_FALSE(record() && row.changed(*record())) << row.toolTip;
    }
    EXPECT_TRUE(view()->hasFocus());
}

TEST_F(Panel, AButtonShowsTheCellAndNotTheClick)
{
    goTo(0, 0);
    QTest::mouseClick(button("居左"), Qt::LeftButton); // it is so already
    QTest::mouseClick(button("粗体"), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(states(alignButtons), "-+-+--");
    EXPECT_EQ(states(fontButtons), "+--");
    view()->selectionModel()->clear();
    QTest::mouseClick(button("斜体"), Qt::LeftButton); // on no cell at all
    QApplication::processEvents();
    EXPECT_FALSE(button("斜体")->isChecked());
}

TEST_F(Panel, FollowsTheCurrentCellThePageAndItsHistory)
{
    EXPECT_EQ(combo(1)->currentText(), "10");
    EXPECT_FALSE(window->undoButton()->isEnabled());
    goTo(0, 0);
    QTest::mouseClick(button("粗体"), Qt::LeftButton);
    EXPECT_EQ(states(fontButtons), "+--");
    EXPECT_TRUE(window->undoButton()->isEnabled());
    goTo(1, 0);
    EXPECT_EQ(states(fontButtons), "---");
    goTo(0, 0);
    EXPECT_EQ(states(fontButtons), "+--");
    window->addPage(1, "other");
    window->tabWidget()->setCurrentIndex(1);
    EXPECT_EQ(states(fontButtons), "---");
    EXPECT_FALSE(window->undoButton()->isEnabled());
    window->tabWidget()->setCurrentIndex(0);
    EXPECT_EQ(states(fontButtons), "+--");
    QTest::mouseClick(window->undoButton(), Qt::LeftButton);
    EXPECT_EQ(states(fontButtons), "---");
    EXPECT_FALSE(window->undoButton()->isEnabled());
    EXPECT_TRUE(window->redoButton()->isEnabled());
}

TEST_F(Panel, ShowsReferencesPageByPage)
{
    XCommonToolButton* references = button("标识出单元格之间的引用关系");
    QTest::mouseClick(references, Qt::LeftButton);
    EXPECT_TRUE(view()->paintState().showRefs);
    window->newPage(1);
    EXPECT_FALSE(view()->paintState().showRefs);
    EXPECT_FALSE(references->isChecked());
    window->tabWidget()->setCurrentIndex(0);
    EXPECT_TRUE(references->isChecked());
    QTest::mouseClick(references, Qt::LeftButton);
    EXPECT_FALSE(view()->paintState().showRefs);
}

TEST_F(Panel, BoxesAndColorButtonsActOnTheSelectedCell)
{
    goTo(0, 0);
    const auto type = [this](int index, const char* text) {
        combo(index)->setFocus();
        combo(index)->lineEdit()->selectAll();
        QTest::keyClicks(combo(index), text);
        QTest::keyClick(combo(index), Qt::Key_Return);
    };
    type(0, "DejaVu Serif");
    type(1, "13");
    type(2, "3");
    for (XToolColorButton* each : frame()->findChildren<XToolColorButton*>()) {
        each->setColor(QColor(1, 2, 3));
        QTest::mouseClick(each, Qt::LeftButton, {}, each->iconRect().center());
    }
    const auto* record =
        static_cast<const XTavixCellExtend*>(page().table().cellAt(0, 0)->extend());
    EXPECT_EQ(record->fontName, "DejaVu Serif");
    EXPECT_EQ(record->fontSize, 13);
    EXPECT_EQ(record->formatRule.mantissa, 3);
    EXPECT_EQ(record->fore, qRgb(1, 2, 3));
    EXPECT_EQ(record->background, qRgb(1, 2, 3));
    EXPECT_EQ(combo(0)->currentText(), "DejaVu Serif");
    goTo(1, 0);
    QApplication::processEvents();
    EXPECT_EQ(combo(1)->currentText(), "10");
}

TEST_F(Panel, ABoxReportsEveryTextOnceAndKeepsItsList)
{
    XComboBox* sizes = combo(1);
    QSignalSpy chosen(sizes, &QComboBox::textActivated);
    const int count = sizes->count();
    for (const char* text : {"13", "24"}) {
        sizes->setFocus();
        sizes->lineEdit()->selectAll();
        QTest::keyClicks(sizes, text);
        QTest::keyClick(sizes, Qt::Key_Return);
        ASSERT_EQ(chosen.count(), 1) << text;
        EXPECT_EQ(chosen.takeFirst().at(0).toString(), text);
        EXPECT_TRUE(view()->hasFocus()) << text;
    }
    sizes->setFocus();
    QTest::keyClicks(sizes, "99");
    QTest::keyClick(sizes, Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(chosen.count(), 0);
    EXPECT_TRUE(view()->hasFocus());
    EXPECT_EQ(sizes->currentText(), "10"); // the cell's
    EXPECT_EQ(sizes->count(), count);
    EXPECT_EQ(sizes->itemText(0), "6");
    EXPECT_EQ(sizes->itemText(count - 1), "72");
}

TEST_F(Panel, TheListOfFontsIsMadeWhenItFirstOpens)
{
    XComboBox* fonts = combo(0);
    EXPECT_EQ(fonts->findChild<QListWidget*>("fontNameList"), nullptr);
    fonts->showText("No such family");
    fonts->showPopup();
    auto* list = fonts->findChild<QListWidget*>("fontNameList");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count(), QFontDatabase().families().size());
    EXPECT_EQ(list->item(0)->font().pointSize(), 18);
    EXPECT_EQ(fonts->currentText(), "No such family");
    EXPECT_FALSE(fonts->testAttribute(Qt::WA_SetCursor));
    fonts->hidePopup();
    fonts->showPopup();
    EXPECT_EQ(fonts->findChild<QListWidget*>("fontNameList"), list);
    fonts->hidePopup();
}

TEST_F(Panel, EveryControlIsReachedInANarrowWindow)
{
    window->resize(500, 500);
    QApplication::processEvents();
    EXPECT_LE(window->width(), 500);
    auto* scroller = window->findChild<XPanelScroller*>();
    QToolButton* edges[2] = {};
    for (QToolButton* each :
         scroller->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly))
        edges[each->arrowType() == Qt::RightArrow] = each;
    EXPECT_FALSE(edges[0]->isVisible());
    XCommonToolButton* last = button("base64编码");
    for (int i = 0; i < 9 && edges[1]->isVisible(); ++i)
        QTest::mouseClick(edges[1], Qt::LeftButton);
    EXPECT_TRUE(edges[0]->isVisible());
    EXPECT_FALSE(edges[1]->isVisible());
    EXPECT_TRUE(
        scroller->rect().contains(QRect(last->mapTo(scroller, QPoint(0, 0)), last->size())));

    // The wheel turns the panel; over a box it changes nothing.
    const auto turn = [](QWidget* widget) {
        QWheelEvent wheel(QPointF(5, 5), widget->mapToGlobal(QPoint(5, 5)), QPoint(),
                          QPoint(0, 2400), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &wheel);
        return wheel.isAccepted();
    };
    combo(1)->showText("12");
    EXPECT_FALSE(turn(combo(1)));
    EXPECT_EQ(combo(1)->currentText(), "12");
    EXPECT_TRUE(turn(scroller->viewport()));
    EXPECT_EQ(scroller->horizontalScrollBar()->value(), 0);
}

TEST(CommonAction, RunsItsCallbackAndMenusHaveLargeIcons)
{
    QObject* sender = nullptr;
    XCommonAction action([&](QObject* object) { sender = object; }, QIcon(), "text", nullptr);
    action.trigger();
    EXPECT_EQ(sender, &action);
    XMenuProxyStyle style;
    EXPECT_EQ(style.pixelMetric(QStyle::PM_SmallIconSize), 24);
    EXPECT_EQ(style.pixelMetric(QStyle::PM_ButtonMargin),
              style.baseStyle()->pixelMetric(QStyle::PM_ButtonMargin));
}
