#include "WindowFixture.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QTabBar>

#include <csignal>
#include <sys/resource.h>

namespace {

class Document : public WindowFixture {
protected:
    QString path(const QString& name) const { return folder() + "/" + name; }
    QByteArray bytes(const QString& file)
    {
        QFile document(file);
        document.open(QIODevice::ReadOnly);
        return document.readAll();
    }
    void put(const QString& file, const QByteArray& content)
    {
        QFile document(file);
        document.open(QIODevice::WriteOnly);
        document.write(content);
    }
    void answerSave(const QString& file)
    {
        userPrompts().saveFile = [this, file](const QString& title, const QString& name) {
            EXPECT_EQ(title, "请选择保存文件名");
            offered = name;
            return file;
        };
    }
    void answerOpen(const QString& file)
    {
        userPrompts().openFile = [file](const QString& title) {
            EXPECT_EQ(title, "请选择要打开的文件");
            return file;
        };
    }
    QString messages() { return window->messages()->toPlainText(); }
    QColor tabColor(int tab = 0) { return window->tabWidget()->tabBar()->tabTextColor(tab); }

    QString offered;
};

TEST_F(Document, ComesBackAsItWasSaved)
{
    enter(0, 0, "7");
    enter(1, 1, "A1*6");
    view()->horizontalHeader()->resizeSection(1, 222);
    view()->verticalHeader()->resizeSection(1, 55);
    answerSave(path("one.txt"));
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(offered, "page1.tavix");
    EXPECT_EQ(page().fileName(), path("one.tavix")); // another extension is replaced
    EXPECT_EQ(window->tabWidget()->tabText(0), "one.tavix");
    EXPECT_EQ(window->tabWidget()->tabToolTip(0), path("one.tavix"));
    EXPECT_FALSE(page().isModified());
    EXPECT_EQ(tabColor(), QColor(Qt::black));
    EXPECT_TRUE(messages().endsWith("\n文件保存成功, 保存到：" + path("one.tavix")));

    ASSERT_TRUE(window->closePage(0));
    answerOpen(path("one.tavix"));
    QTest::keyClick(window.get(), Qt::Key_O, Qt::ControlModifier);
    ASSERT_EQ(window->tabWidget()->count(), 1);
    EXPECT_EQ(shown(1, 1), "42");
    EXPECT_EQ(view()->horizontalHeader()->sectionSize(1), 222);
    EXPECT_EQ(view()->verticalHeader()->sectionSize(1), 55);
    EXPECT_FALSE(page().isModified());
    EXPECT_FALSE(page().undo().canUndo());
    EXPECT_TRUE(messages().endsWith("\n文件打开成功：" + path("one.tavix")));
    window->openDocument(path("one.tavix"), 1); // it is open already
    EXPECT_EQ(window->tabWidget()->count(), 1);
}

TEST_F(Document, OpensNothingThatIsNoDocument)
{
    answerSave(path("good.tavix"));
    enter(0, 0, "1");
    ASSERT_TRUE(window->savePage(0));
    const QByteArray good = bytes(path("good.tavix"));
    put(path("empty.tavix"), "");
    put(path("foreign.tavix"), QByteArray(100, 'x'));
    put(path("half.tavix"), good.left(good.size() / 2));
    put(path("tail.tavix"), good + "more");
    QDir().mkpath(path("folder.tavix"));
    for (const char* name : {"empty", "foreign", "half", "tail", "folder", "missing"}) {
        const QString file = path(QString(name) + ".tavix");
        const QByteArray before = bytes(file);
        answerOpen(file);
        window->openPage(9);
        const int tab = window->tabWidget()->count() - 1;
        XTablePage& failed = *window->pageAt(tab);
        EXPECT_EQ(window->tabWidget()->tabText(tab), QString(name) + ".tavix");
        EXPECT_EQ(failed.fileName(), ""); // saving asks for a name
        EXPECT_EQ(failed.table().cellAt(0, 0), nullptr);
        EXPECT_TRUE(messages().contains("文件打开失败：" + file)) << name;
        EXPECT_EQ(bytes(file), before);
    }
    answerOpen(path("good.txt"));
    const int tabs = window->tabWidget()->count();
    window->openPage(0);
    EXPECT_EQ(window->tabWidget()->count(), tabs);
    EXPECT_TRUE(messages().endsWith("文件扩展名必须是*.tavix, 但你的文件扩展名是：.txt"));
    answerOpen("");
    window->openPage(0);
    EXPECT_EQ(window->tabWidget()->count(), tabs);
}

TEST_F(Document, ThatCannotBeWrittenLeavesOldFileAndPage)
{
    answerSave(path("one.tavix"));
    enter(0, 0, "1");
    ASSERT_TRUE(window->savePage(0));
    const QByteArray old = bytes(path("one.tavix"));
    enter(0, 0, "2");
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 1000; // as a full disk: a write ends in the middle
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const bool saved = window->savePage(0);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(saved);
    EXPECT_EQ(bytes(path("one.tavix")), old);
    EXPECT_TRUE(page().isModified());
    EXPECT_EQ(tabColor(), QColor(Qt::red));
    EXPECT_TRUE(messages().contains("无法写入文件： " + path("one.tavix")));
    EXPECT_EQ(QDir(folder()).entryList({"one.tavix.*"}).size(), 0);
    answerSave(path("no/such/folder.tavix"));
    EXPECT_FALSE(window->savePageAs(0));
    EXPECT_EQ(page().fileName(), path("one.tavix"));
}

TEST_F(Document, ChangedByAnotherProgramIsAskedAbout)
{
    answerSave(path("one.tavix"));
    ASSERT_TRUE(window->savePage(0));
    enter(0, 0, "1");
    put(path("one.tavix"), "another");
    int asked = 0;
    bool answer = false;
    userPrompts().overwrite = [&](const QString& file) {
        EXPECT_EQ(file, path("one.tavix"));
        ++asked;
        return answer;
    };
    EXPECT_FALSE(window->savePage(0));
    EXPECT_EQ(bytes(path("one.tavix")), "another");
    answer = true;
    EXPECT_TRUE(window->savePage(0));
    enter(0, 0, "2");
    EXPECT_TRUE(window->savePage(0)); // its own writing is no change
    EXPECT_EQ(asked, 2);
}

TEST_F(Document, IsNotWrittenOverAnotherWithoutAQuestion)
{
    put(path("notes.tavix"), "of somebody else");
    int asked = 0;
    userPrompts().overwrite = [&](const QString& file) {
        EXPECT_EQ(file, path("notes.tavix"));
        ++asked;
        return false;
    };
    answerSave(path("notes.txt")); // the dialog has asked about this name, which is no document's
    EXPECT_FALSE(window->savePage(0));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(bytes(path("notes.tavix")), "of somebody else");
    answerSave(path("one.tavix"));
    ASSERT_TRUE(window->savePage(0));
    window->newPage(1);
    EXPECT_FALSE(window->savePage(1)); // it is open in the first page
    EXPECT_TRUE(messages().endsWith("文件已在另一页打开：" + path("one.tavix")));
}

TEST_F(Document, IsOpenedByADropOnTheWindow)
{
    enter(0, 0, "6*7");
    ASSERT_TRUE(page().saveFile(path("dropped.tavix")));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path("dropped.tavix")), QUrl("http://x.org/a.tavix"),
                  QUrl::fromLocalFile(path("a.txt"))});
    QDragEnterEvent enterEvent(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enterEvent);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    ASSERT_EQ(window->tabWidget()->count(), 2);
    EXPECT_EQ(shown(0, 0), "42");
}

TEST_F(Document, ClosingAsksAboutChanges)
{
    struct Case {
        SaveAnswer answer;
        QString file;
        bool closes;
    };
    const Case cases[] = {{SaveAnswer::Cancel, path("c.tavix"), false},
                          {SaveAnswer::Save, "", false}, // the file dialog is left
                          {SaveAnswer::Save, path("c.tavix"), true},
                          {SaveAnswer::Discard, path("d.tavix"), true}};
    for (const Case& c : cases) {
        window->newPage(0);
        enter(0, 0, "1");
        answerSave(c.file);
        userPrompts().saveChanges = [&](const QString& name) {
            EXPECT_EQ(name, window->tabWidget()->tabText(0));
            return c.answer;
        };
        const int tabs = window->tabWidget()->count();
        window->tabCloseRequested(0);
        EXPECT_EQ(window->tabWidget()->count(), c.closes ? tabs - 1 : tabs);
    }
    EXPECT_TRUE(QFile::exists(path("c.tavix")));
    EXPECT_FALSE(QFile::exists(path("d.tavix")));
}

TEST_F(Document, SaveAllCountsWhatWasSaved)
{
    window->saveAllPages();
    EXPECT_TRUE(messages().endsWith("\n更新了 0 个文件"));
    enter(0, 0, "1");
    window->newPage(1);
    EXPECT_EQ(window->tabWidget()->tabText(1), "page2");
    enter(0, 0, "2");
    int dialogs = 0;
    userPrompts().saveFile = [&](const QString&, const QString& name) {
        return ++dialogs == 1 ? QString() : path(name);
    };
    window->saveAllPages();
    EXPECT_EQ(dialogs, 2);
    EXPECT_TRUE(messages().endsWith("\n更新了 1 个文件"));
    EXPECT_TRUE(window->pageAt(0)->isModified());
    EXPECT_FALSE(window->pageAt(1)->isModified());
}

TEST_F(Document, TheLastTabMayBeClosed)
{
    ASSERT_TRUE(window->closePage(0));
    EXPECT_EQ(window->currentPage(), nullptr);
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    window->saveAllPages();
    QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(window->tabWidget()->tabText(0), "page1");
}

} // namespace
