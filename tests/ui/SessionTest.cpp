#include "WindowFixture.h"

#include <QHeaderView>
#include <QTabBar>

namespace {

class Session : public WindowFixture {
protected:
    QString path(const QString& name) const { return folder() + "/" + name; }
    QByteArray list()
    {
        QFile file(cacheFolder() + "/cacheList.json");
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }
    QStringList cached() { return QDir(cacheFolder()).entryList({"page*.tavix"}); }
    QString messages() { return window->messages()->toPlainText(); }
    QColor tabColor(int tab) { return window->tabWidget()->tabBar()->tabTextColor(tab); }
    void saveAs(const QString& name)
    {
        userPrompts().saveFile = [this, name](const QString&, const QString&) {
            return path(name);
        };
        ASSERT_TRUE(window->savePageAs(window->currentTabIndex()));
    }
    /// Starts again as after a crash: nothing was written at the end.
    void startAgain()
    {
        window.reset();
        openWindow();
    }
};

TEST_F(Session, BringsEveryKindOfPageBack)
{
    enter(0, 0, "1");   // page1: new, modified
    window->newPage(1); // page2: new, untouched
    window->newPage(2);
    enter(0, 0, "3");
    saveAs("clean.tavix");
    window->newPage(3);
    enter(0, 0, "4");
    saveAs("changed.tavix");
    enter(0, 0, "5");
    window->tabWidget()->setCurrentIndex(2);
    restart();
    ASSERT_EQ(window->tabWidget()->count(), 4);
    EXPECT_EQ(window->currentTabIndex(), 2);
    struct State {
        const char* name;
        const char* value;
        const char* file;
        bool isModified;
    };
    const State states[] = {{"page1", "1", "", true},
                            {"page2", "", "", false},
                            {"clean.tavix", "3", "clean.tavix", false},
                            {"changed.tavix", "5", "changed.tavix", true}};
    for (int tab = 0; tab < 4; ++tab) {
        const State& state = states[tab];
        XTablePage& restored = *window->pageAt(tab);
        EXPECT_EQ(window->tabWidget()->tabText(tab), state.name);
        EXPECT_EQ(restored.model()->index(0, 0).data().toString(), state.value);
        EXPECT_EQ(QFileInfo(restored.fileName()).fileName(), state.file);
        EXPECT_EQ(restored.isModified(), state.isModified);
        EXPECT_EQ(restored.cacheFileName().isEmpty(), !state.isModified);
        EXPECT_EQ(tabColor(tab), QColor(state.isModified ? Qt::red : Qt::black));
    }
    EXPECT_EQ(cached().size(), 2);
    window->tabWidget()->setCurrentIndex(3);
    EXPECT_TRUE(window->savePage(3));
    EXPECT_FALSE(window->pageAt(3)->isModified());
    EXPECT_EQ(cached().size(), 1); // saving removes the file in the cache
    restart();
    EXPECT_FALSE(window->pageAt(3)->isModified());
}

TEST_F(Session, TheFirstStartMakesTheListWithTheSample)
{
    window.reset();
    QDir(folder() + "/data").removeRecursively();
    openWindow();
    EXPECT_EQ(window->tabWidget()->tabText(0), "sample.tavix");
    EXPECT_TRUE(messages().startsWith("\n创建了用户缓冲目录：" + cacheFolder() + "\n保存文件：" +
                                      window->cacheListPath() + "成功！"));
    EXPECT_TRUE(messages().contains("文件打开失败：")); // there is no sample in this folder
    EXPECT_TRUE(list().contains("config/sample.tavix"));
}

TEST_F(Session, ADamagedListIsKeptAside)
{
    const QByteArray lists[] = {"",
                                "no json",
                                "[1, 2]",
                                R"({"pages": 5})",
                                R"({"pages": [{"pageName": 7}]})",
                                QByteArray(100000, '['),
                                "{\"pages\": [" + QByteArray("{},").repeated(600) + "]}"};
    for (const QByteArray& damaged : lists) {
        window.reset();
        QFile::remove(cacheFolder() + "/cacheList.json.bad");
        writeList(damaged);
        openWindow();
        EXPECT_EQ(window->tabWidget()->tabText(0), "page1");
        EXPECT_TRUE(messages().contains("cacheList.json.bad")) << damaged.left(20).constData();
        QFile kept(cacheFolder() + "/cacheList.json.bad");
        kept.open(QIODevice::ReadOnly);
        EXPECT_EQ(kept.readAll(), damaged);
    }
}

TEST_F(Session, AFileThatNoListNamesIsNotOverwritten)
{
    QFile other(cacheFolder() + "/page1.tavix");
    other.open(QIODevice::WriteOnly);
    other.write("of a session that ended early");
    other.close();
    enter(0, 0, "1");
    restart();
    EXPECT_TRUE(window->pageAt(0)->cacheFileName().endsWith("/page2.tavix"));
    other.open(QIODevice::ReadOnly);
    EXPECT_EQ(other.readAll(), "of a session that ended early");
}

TEST_F(Session, AMissingFileInTheCacheLeavesAnEmptyModifiedPage)
{
    enter(0, 0, "1");
    userPrompts().exit = [](const QString&) { return QString("ok"); };
    window->close();
    window.reset();
    ASSERT_EQ(cached().size(), 1);
    QFile::remove(cacheFolder() + "/" + cached()[0]);
    openWindow();
    EXPECT_TRUE(page().isModified());
    EXPECT_EQ(shown(0, 0), "");
    EXPECT_EQ(page().fileName(), ""); // a document of its name must not be overwritten
    EXPECT_TRUE(messages().contains("文件打开失败："));
}

TEST_F(Session, ASavedDocumentComesBackAfterACrash)
{
    enter(0, 0, "1");
    saveAs("saved.tavix");
    enter(0, 0, "2");
    window->saveSession(true);
    ASSERT_TRUE(window->savePage(0));
    startAgain(); // the list still names the file that the cache had
    EXPECT_EQ(shown(0, 0), "2");
    EXPECT_FALSE(page().isModified());
}

TEST_F(Session, TheListFollowsASavedPageBeforeTheEnd)
{
    enter(0, 0, "1");
    window->saveSession(true);
    saveAs("saved.tavix");
    for (QTimer* timer : window->findChildren<QTimer*>()) {
        if (timer->interval() == 60'000)
            timer->start(1);
    }
    QTest::qWait(30);
    startAgain();
    EXPECT_EQ(window->tabWidget()->tabText(0), "saved.tavix");
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_FALSE(page().isModified());
}

TEST_F(Session, WhatCannotBeKeptKeepsTheWindowOpen)
{
    enter(0, 0, "1");
    // In the place of the folder stands a file: nothing can be written below it.
    window->saveSession(true);
    QDir(cacheFolder()).removeRecursively();
    QFile obstacle(cacheFolder());
    obstacle.open(QIODevice::WriteOnly);
    obstacle.close();
    userPrompts().exit = [](const QString&) { return QString("ok"); };
    window->close();
    EXPECT_TRUE(window->isVisible());
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("page1"));
    obstacle.remove();
}

TEST_F(Session, ASecondWindowOfTheSameFolderLeavesTheListAlone)
{
    enter(0, 0, "1");
    window->saveSession(true);
    const QByteArray before = list();
    tavix* const first = theMainWindow;
    auto second = std::make_unique<tavix>();
    theMainWindow = second.get();
    EXPECT_EQ(second->tabWidget()->tabText(0), "page1");
    EXPECT_TRUE(second->messages()->toPlainText().contains("另一个Tavix正在使用"));
    second->currentView()->setCellText(0, 0, "2", false);
    userPrompts().exit = [](const QString&) { return QString("ok"); };
    SaveAnswer answer = SaveAnswer::Cancel;
    userPrompts().saveChanges = [&](const QString&) { return answer; };
    second->show();
    second->close();
    EXPECT_TRUE(second->isVisible());
    answer = SaveAnswer::Discard;
    second->close();
    EXPECT_FALSE(second->isVisible());
    second.reset();
    theMainWindow = first;
    EXPECT_EQ(list(), before);
}

TEST_F(Session, AStartThatDidNotGetThroughIsFollowedByOneWithoutCalculation)
{
    enter(0, 0, "6");
    enter(0, 1, "A1*7");
    view()->horizontalHeader()->resizeSection(2, 131);
    window->saveSession(true);
    QFile mark(cacheFolder() + "/starting");
    mark.open(QIODevice::WriteOnly);
    mark.close();
    startAgain();
    EXPECT_TRUE(messages().contains("没有重新计算"));
    EXPECT_FALSE(mark.exists());
    EXPECT_EQ(shown(0, 1), "42"); // as it was stored
    EXPECT_EQ(view()->horizontalHeader()->sectionSize(2), 131);
    enter(0, 2, "B1+1"); // a stored text is no value to calculate with
    EXPECT_NE(shown(0, 2), "43");
    goTo(5, 5);
    QTest::keyClick(view(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(shown(0, 1), "42");
    EXPECT_EQ(shown(0, 2), "43");
}

} // namespace
