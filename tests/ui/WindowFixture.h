#pragma once

#include "UserPrompts.h"
#include "XCellScriptEditor.h"
#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "XTablePage.h"
#include "XTavixApplication.h"
#include "qtText.h"
#include "tavix.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

inline QString plainOf(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

inline XTavixApplication& testApplication()
{
    return *static_cast<XTavixApplication*>(qApp);
}

/// The real window, started in an empty folder. Error boxes are answered and their texts kept.
class WindowFixture : public ::testing::Test {
protected:
    WindowFixture()
    {
        QDir::setCurrent(m_folder.path());
        qputenv("APPDATA", (m_folder.path() + "/data").toUtf8());
        writeList(R"({"activeIndex": 0, "pages": [
            {"pageName": "page1", "cacheFileName": "", "fileName": "",
             "splitteSize1": 1000, "splitteSize2": 9000}]})");
        userPrompts().error = [this](const QString& html, const QString&) {
            errors.append(plainOf(html));
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            return QString();
        };
        openWindow();
    }

    ~WindowFixture() override
    {
        window.reset();
        theMainWindow = nullptr;
        userPrompts() = UserPrompts();
        QDir::setCurrent(QDir::rootPath());
    }

    void openWindow()
    {
        window = std::make_unique<tavix>();
        theMainWindow = window.get();
        window->show();
        QApplication::setActiveWindow(window.get());
        view()->setFocus();
    }

    QString cacheFolder() const { return folder() + "/data/tavix/cache"; }
    /// Makes this the list of the session that the next window takes up.
    void writeList(const QByteArray& json)
    {
        QDir().mkpath(cacheFolder());
        QFile list(cacheFolder() + "/cacheList.json");
        list.open(QIODevice::WriteOnly);
        list.write(json);
    }
    /// Ends the program as its close dialog does, and starts it again.
    void restart()
    {
        userPrompts().exit = [](const QString&) { return QString("ok"); };
        window->close();
        window.reset();
        openWindow();
    }

    XTablePage& page() { return *window->currentPage(); }
    XCellTableView* view() { return window->currentView(); }
    XCellScriptEditor* pane() { return page().scriptEdit(); }
    QString folder() const { return m_folder.path(); }

    void goTo(int row, int col) { view()->setCurrentIndex(page().model()->index(row, col)); }
    QString shown(int row, int col)
    {
        return page().model()->index(row, col).data(Qt::DisplayRole).toString();
    }

    /// Puts a text into a cell as a person does: go there, write in the pane, confirm.
    void enter(int row, int col, const QString& text)
    {
        goTo(row, col);
        pane()->setFocus();
        pane()->selectAll();
        QTest::keyClick(pane(), Qt::Key_Delete);
        QTest::keyClicks(pane(), text);
        QTest::keyClick(pane(), Qt::Key_S, Qt::ControlModifier);
        showEscaped();
    }

    /// Lets the event loop of the program show what left a handler.
    void showEscaped()
    {
        if (testApplication().hasEscaped())
            runEventLoop(testApplication());
    }

    std::unique_ptr<tavix> window;
    QStringList errors;

private:
    QTemporaryDir m_folder;
};
