#include "WindowFixture.h"
#include "XTavixCellExtend.h"

#include <QClipboard>
#include <QMimeData>

namespace {

using huge::XCellImageMode;
using xstd::XRect;

class Clipboard : public WindowFixture {
protected:
    void setText(const QString& text) { QApplication::clipboard()->setText(text); }
    void setForms(const QByteArray& binary, const QString& text)
    {
        auto data = std::make_unique<QMimeData>();
        data->setData("tavix_binary", binary);
        data->setText(text);
        QApplication::clipboard()->setMimeData(data.release());
    }
    void copy(const XRect& rect)
    {
        view()->select(rect, false);
        QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    }
    void pasteAt(int row, int col, XCellImageMode mode = XCellImageMode::Everything)
    {
        // Not by the current cell: a Control key of the last shortcut would add it.
        view()->select(XRect(row, col, row, col), true);
        view()->paste(mode);
    }
    QString messages() { return window->messages()->toPlainText(); }
    QString source(int row, int col)
    {
        const huge::XCell* cell = page().table().cellAt(row, col);
        return cell ? QString::fromStdString(cell->scriptText(false)) : QString();
    }
};

TEST_F(Clipboard, CarriesCellsInBothForms)
{
    enter(0, 0, "5");
    enter(0, 1, "A1+1");
    enter(1, 0, "\"a\\tb\"");
    copy({0, 0, 1, 1});
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_FALSE(data->data("tavix_binary").isEmpty());
    EXPECT_EQ(data->text(), "\"5\"\t\"6\"\n\"a\\tb\"\tnone");
    pasteAt(4, 4);
    EXPECT_EQ(shown(4, 4), "5");
    EXPECT_EQ(source(4, 5), "E5+1"); // a relative reference goes along
    EXPECT_EQ(shown(5, 4), "a\tb");
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(4, 4), "");
}

TEST_F(Clipboard, GoesFromPageToPage)
{
    enter(0, 0, "5");
    enter(0, 1, "A1*A1");
    copy({0, 0, 0, 1});
    window->addPage(1, "other");
    window->tabWidget()->setCurrentIndex(1);
    pasteAt(2, 2);
    EXPECT_EQ(shown(2, 3), "25");
    EXPECT_EQ(source(2, 3), "C3*C3");
}

TEST_F(Clipboard, ModesTakeTheirPartOfACell)
{
    enter(0, 0, "2");
    enter(0, 1, "A1+1");
    view()->select(XRect(0, 1, 0, 1), true);
    window->toggleBold();
    copy({0, 1, 0, 1});
    pasteAt(3, 1, XCellImageMode::Values);
    EXPECT_EQ(source(3, 1), "3");
    pasteAt(4, 1, XCellImageMode::Scripts);
    EXPECT_EQ(source(4, 1), "A5+1");
    EXPECT_EQ(page().model()->cellExtend(4, 1), nullptr);
    pasteAt(5, 1, XCellImageMode::Formats);
    EXPECT_EQ(source(5, 1), "");
    EXPECT_TRUE(page().model()->cellExtend(5, 1)->bold);
}

TEST_F(Clipboard, TakesTextsOfOtherPrograms)
{
    setText("1\t=A1+1\r\ntotal cost\tnone\r3,14\t1,234");
    enter(1, 1, "keep");
    enter(1, 1, "77");
    pasteAt(0, 0);
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(shown(0, 1), "2");
    EXPECT_EQ(shown(1, 0), "total cost");
    EXPECT_EQ(shown(1, 1), "77"); // "none" leaves its cell alone
    EXPECT_EQ(shown(2, 0), "3,14");
    EXPECT_EQ(shown(2, 1), "1234");
    view()->select(XRect(0, 4, 5, 4), false);
    setText("8\n9");
    view()->paste(XCellImageMode::Everything);
    EXPECT_EQ(shown(4, 4) + shown(5, 4), "89"); // repeated over a larger selection
    pasteAt(0, 7, XCellImageMode::Scripts);     // a text has values alone
    pasteAt(0, 7, XCellImageMode::Formats);
    EXPECT_EQ(shown(0, 7), "");
}

TEST_F(Clipboard, DamagedCellsAreToldAndTheTextIsTaken)
{
    enter(0, 0, "5");
    copy({0, 0, 0, 0});
    const QByteArray image = QApplication::clipboard()->mimeData()->data("tavix_binary");
    for (const QByteArray& damaged :
         {image.left(image.size() / 2), image.left(3), QByteArray(64, '\xff'), QByteArray("hi")}) {
        const int printed = messages().size();
        setForms(damaged, "42");
        pasteAt(6, 0);
        EXPECT_EQ(shown(6, 0), "42");
        EXPECT_GT(messages().size(), printed);
        QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    }
    setForms(image.left(5), "");
    pasteAt(6, 0);
    EXPECT_EQ(shown(6, 0), "");
}

TEST_F(Clipboard, RefusesWhatIsTooLargeBeforeAnythingChanges)
{
    const auto refusal = [this] {
        try {
            pasteAt(0, 0);
        } catch (const std::exception& failure) {
            return std::string(failure.what());
        }
        return std::string("no failure");
    };
    setText(QString(1'048'576, '\n'));
    EXPECT_EQ(refusal(), "The table ends at row 1048576 and column AVLG");
    setText(QString(32'767, '\t'));
    EXPECT_EQ(refusal(), "The table ends at row 1048576 and column AVLG");
    setText((QString(9'999, '\t') + '\n').repeated(401));
    EXPECT_EQ(refusal(), "The text has more than 4000000 fields");
    EXPECT_FALSE(page().undo().canUndo());
}

TEST_F(Clipboard, ABadFieldLeavesTheOthersAndOneUndoTakesAllBack)
{
    setText("1\t=1/0\t=A1+1");
    EXPECT_THROW(pasteAt(0, 0), xstd::XExceptionItems);
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(shown(0, 2), "2");
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(0, 0) + shown(0, 1) + shown(0, 2), "");
}

TEST_F(Clipboard, AWholeColumnIsCopiedAsCells)
{
    enter(0, 0, "5");
    view()->selectColumn(0);
    QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    pasteAt(0, 3);
    EXPECT_EQ(shown(0, 3), "5");
}

} // namespace
