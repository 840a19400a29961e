#include "FrmExit.h"
#include "LongTexts.h"
#include "WindowFixture.h"
#include "common/XPlatform.h"
#include "errorHtml.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>

namespace {

class Window : public WindowFixture {
protected:
    void writeFile(const QString& name, const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(name).path());
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

TEST_F(Window, StartsWithOneCleanPageAndTheWelcome)
{
    EXPECT_EQ(window->windowTitle(), "tavix");
    EXPECT_EQ(window->tabWidget()->count(), 1);
    EXPECT_EQ(window->tabWidget()->tabText(0), "page1");
    EXPECT_FALSE(page().isModified());
    EXPECT_EQ(window->messages()->toPlainText(),
              "\n用户缓冲文件列表已经存在: " + window->cacheListPath() +
                  "\n欢迎使用Tavix!!!\n版本：1.0.2\n当前windows用户名：" +
                  toQString(xstd::XPlatform::userName()) +
                  "\n当前windows用户数据文件夹: " + toQString(xstd::XPlatform::userDataDir()));
    EXPECT_EQ(window->nextPageName(), "page2");
    EXPECT_EQ(window->addPage(2, "x"), nullptr);
    EXPECT_EQ(window->addPage(-1, "x"), nullptr);
    EXPECT_EQ(window->pageAt(5), nullptr);
}

TEST_F(Window, ItsWidgetsHaveTheNamesThatStyleSheetsUse)
{
    for (const char* name :
         {"centralWidget", "splitter_2", "tabWidget", "tbSysInfo", "statusBar", "tab", "splitter",
          "frameScript", "frameCellName", "lrangeName", "frameScriptRight", "frameScriptTools",
          "lhintInfo", "splitter_3", "teCellScript", "tbCellValue", "tableView", "horizontalHeader",
          "verticalHeader"})
        EXPECT_NE(window->findChild<QWidget*>(name), nullptr) << name;
}

TEST_F(Window, TheTabIsRedWhileThePageIsModified)
{
    EXPECT_EQ(window->tabWidget()->tabBar()->tabTextColor(0), QColor(Qt::black));
    enter(0, 0, "1");
    EXPECT_EQ(window->tabWidget()->tabBar()->tabTextColor(0), QColor(Qt::red));
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window->tabWidget()->tabBar()->tabTextColor(0), QColor(Qt::black));
}

TEST_F(Window, ErrorsArePrintedAsARedLine)
{
    const QString before = window->messages()->toPlainText();
    window->printError("a <b>b</b>");
    EXPECT_EQ(window->messages()->toPlainText(), before + "\na b");
    QTextCursor end(window->messages()->document());
    end.movePosition(QTextCursor::End);
    EXPECT_EQ(end.charFormat().foreground().color(), QColor(Qt::red));
    window->printText("\nplain");
    QTextCursor plain(window->messages()->document());
    plain.movePosition(QTextCursor::End);
    EXPECT_NE(plain.charFormat().foreground().color(), QColor(Qt::red));
}

TEST_F(Window, TheMessagePaneStaysBounded)
{
    for (int i = 0; i < 3000; ++i)
        window->printText("\nline " + QString::number(i));
    EXPECT_LE(window->messages()->document()->blockCount(), 2000);
    EXPECT_TRUE(window->messages()->toPlainText().endsWith("line 2999"));
    xstd::XExceptionItems failure;
    failure.add(xstd::XExceptionItem(X_HERE, "test").setMess("some failure"));
    for (int i = 0; i < 600; ++i)
        window->printError(errorHtml(failure));
    EXPECT_LE(window->messages()->document()->characterCount(), 1100000);
    for (int i = 0; i < 700; ++i)
        window->printText(QString(4000, 'x')); // a line that never ends
    EXPECT_LE(window->messages()->document()->characterCount(), 1100000);
}

TEST_F(Window, AScriptMayPrintInALongLoop)
{
    const QString before = window->messages()->toPlainText();
    enter(0, 0, "for (var i = 0; i < 300000; i += 1) { printLine(i) } 5");
    EXPECT_EQ(shown(0, 0), "5");
    QTest::qWait(200); // the event loop shows it, without being asked
    const auto* pane = window->findChild<QTextBrowser*>("tbSysInfo");
    const QString after = pane->toPlainText();
    EXPECT_EQ(pane->verticalScrollBar()->value(), pane->verticalScrollBar()->maximum());
    EXPECT_GT(pane->verticalScrollBar()->value(), 1000);
    EXPECT_TRUE(after.endsWith("\n299998\n299999"));
    EXPECT_FALSE(after.startsWith(before));
    EXPECT_LE(window->messages()->document()->blockCount(), 2000);
}

TEST_F(Window, LongResultsAreCutWithTheirLengthAndAWayToSeeAll)
{
    enter(0, 0, "7**300000"); // 253,530 digits: 300000 * log10(7), rounded up
    goTo(1, 0);
    goTo(0, 0);
    const QString value = page().valueView()->toPlainText();
    EXPECT_LT(value.size(), 5000);
    EXPECT_TRUE(value.contains("共 253530 个字符")) << value.right(60).toStdString();
    QString full;
    userPrompts().fullText = [&](const QString& text) { full = text; };
    QTextCursor end(page().valueView()->document());
    end.movePosition(QTextCursor::End);
    emit page().valueView()->anchorClicked(end.charFormat().anchorHref());
    EXPECT_EQ(full.size(), 253530);
    EXPECT_EQ(full, page().model()->index(0, 0).data(Qt::EditRole).toString());
    showFullText(QUrl("full:none"));
    EXPECT_EQ(full, "该内容已不再保留");
}

TEST_F(Window, TheCloseDialogDecides)
{
    QString version;
    QString answer;
    userPrompts().exit = [&](const QString& shownVersion) {
        version = shownVersion;
        return answer;
    };
    for (const char* refusal : {"cancel", ""}) {
        answer = refusal;
        EXPECT_FALSE(window->close());
        EXPECT_TRUE(window->isVisible());
        EXPECT_FALSE(QFile::exists("layout/tavix.ini"));
        EXPECT_NE(window->currentPage(), nullptr);
    }
    EXPECT_EQ(version, "1.0.2");
    answer = "ok";
    EXPECT_TRUE(window->close());
    EXPECT_EQ(window->currentPage(), nullptr);
    EXPECT_TRUE(QFile::exists("layout/tavix.ini"));
}

TEST_F(Window, ClosesThroughItsDialogAndEndsTheLoop)
{
    for (const char* button : {"btnCancel", "btnExit"})
        QTimer::singleShot(QString(button) == "btnExit" ? 60 : 0, qApp, [this, button] {
            QTimer::singleShot(0, qApp, [button] {
                QWidget* dialog = QApplication::activeModalWidget();
                ASSERT_NE(dialog, nullptr);
                QTest::mouseClick(dialog->findChild<QPushButton*>(button), Qt::LeftButton);
            });
            window->close();
            EXPECT_EQ(window->isVisible(), QString(button) == "btnCancel");
        });
    EXPECT_EQ(runEventLoop(testApplication()), 0);
    EXPECT_FALSE(window->isVisible());
}

TEST(ExitDialog, AnswersByItsButtons)
{
    struct Case {
        const char* button;
        const char* answer;
    };
    for (const Case& row : {Case{"btnExit", "ok"}, Case{"btnCancel", "cancel"}}) {
        FrmExit dialog("1.0.2");
        EXPECT_EQ(dialog.windowTitle(), "退出提示");
        EXPECT_EQ(dialog.findChild<QLabel*>("lquestion")->text(), "确定要退出系统吗？");
        EXPECT_EQ(dialog.findChild<QLabel*>("lversion")->text(), "1.0.2");
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton*>(row.button), Qt::LeftButton);
        EXPECT_EQ(dialog.answer(), row.answer);
        EXPECT_FALSE(dialog.isVisible());
    }
    FrmExit dialog("1.0.2");
    dialog.show();
    dialog.close();
    EXPECT_EQ(dialog.answer(), "");
}

TEST_F(Window, TheLayoutHasItsDefaultsAndComesBack)
{
    const auto share = [&] {
        const QList<int> sizes = window->splitter()->sizes();
        return static_cast<double>(sizes[0]) / sizes[1];
    };
    EXPECT_FALSE(window->restLayout("layout/tavix.ini"));
    EXPECT_NEAR(share(), 6.0, 0.3);
    writeFile("layout/tavix.ini", "[General]\nsplitterSize1=0\nsplitterSize2=50\n");
    EXPECT_TRUE(window->restLayout("layout/tavix.ini"));
    EXPECT_NEAR(share(), 9.0, 0.5);
    window->splitter()->setSizes({400, 200});
    const QList<int> kept = window->splitter()->sizes();
    EXPECT_TRUE(window->saveLayout("layout/tavix.ini"));
    window->splitter()->setSizes({500, 100});
    EXPECT_TRUE(window->restLayout("layout/tavix.ini"));
    EXPECT_EQ(window->splitter()->sizes(), kept);
    const QSettings settings("layout/tavix.ini", QSettings::IniFormat);
    EXPECT_EQ(settings.allKeys(),
              (QStringList{"geometry", "splitterSize1", "splitterSize2", "windowState"}));
}

TEST_F(Window, ReadsItsConfigurationFromTheProgramsFolder)
{
    EXPECT_TRUE(window->keyWordHint().model().rowCount() == 0);
    writeFile("config/keywords.txt", "sum|sum(a)|sum(@)|the total\n");
    writeFile("config/style.css", "QLabel { color: #010203; }");
    window.reset();
    openWindow();
    ASSERT_EQ(window->keyWordHint().model().rowCount(), 1);
    EXPECT_EQ(qApp->styleSheet(), "QLabel { color: #010203; }");
    qApp->setStyleSheet(QString());
}

struct KeyWordCase {
    const char* line;
    std::vector<QString> fields; // empty: no keyword
};

TEST(KeyWordList, TakesLinesOfFourFields)
{
    const std::vector<KeyWordCase> cases = {
        {"sum|sum(a)|sum(@)|hint", {"sum", "sum(a)", "sum(@)", "hint"}},
        {"  sum | \"sum (a)\" |\tsum(@)|", {"sum", "sum (a)", "sum(@)", ""}},
        {"sum|\"cut here!|x|y", {"sum", "cut here", "x", "y"}},
        {"sum|\"|x|y", {"sum", "", "x", "y"}},
        {"总和|合计|sum(@)|求和\r", {"总和", "合计", "sum(@)", "求和"}},
        {"a|b|c", {}},
        {"a|b|c|d|e", {}},
        {"", {}},
        {"# a comment", {}}};
    for (const KeyWordCase& row : cases) {
        const std::vector<KeyWordItem> items = parseKeyWords(row.line);
        ASSERT_EQ(items.size(), row.fields.empty() ? 0u : 1u) << row.line;
        if (items.empty())
            continue;
        EXPECT_EQ((std::vector<QString>{items[0].name, items[0].display, items[0].insertText,
                                        items[0].hintInfo}),
                  row.fields)
            << row.line;
    }
    EXPECT_EQ(parseKeyWords("a|b|c|d\n\ne|f|g|h").size(), 2u);
}

} // namespace
