#pragma once

#include "KeyWordHint.h"
#include "common/XString.h"

#include <QMainWindow>

#include <memory>
#include <vector>

class QApplication;
class QSplashScreen;
class QSplitter;
class QTabWidget;
class QTextBrowser;
class XCellTableView;
class XMessagePane;
class XTablePage;
class tavix;

/// The application, the splash screen while the window is being built, and the window. The editors
/// and views reach the current page, and print, through the window.
extern QApplication* theApplication;
extern QSplashScreen* theSplash;
extern tavix* theMainWindow;

/// Writes a progress line on the splash screen; nothing happens without one.
void showSplashMessage(const QString& text);

/// The main window: the pages in their tabs and the message pane below. It owns the pages.
class tavix : public QMainWindow {
    Q_OBJECT

public:
    static const char* const version;

    explicit tavix(QWidget* parent = nullptr);
    ~tavix() override;

    /// Adds plain text at the end of the message pane, where it shows as soon as the event loop
    /// runs. No line feed is added.
    void printText(const QString& text);
    /// Adds a red line of HTML at the end of the message pane.
    void printError(const QString& html);

    /// Sets the application's style sheet from the file of the configuration, if there is one.
    void loadStyleSheet();
    /// Reads the keyword list of the configuration, if there is one.
    void loadKeyWords();
    const KeyWordHint& keyWordHint() const { return m_keyWordHint; }

    /// Brings back window and splitter from a file below the program's folder. False, with the
    /// standard sizes, when there is none.
    bool restLayout(const QString& fileName);
    bool saveLayout(const QString& fileName);

    /// Makes a page and its tab at `index`; null when the index is out of range.
    XTablePage* addPage(int index, const QString& name);
    /// Closes all pages without asking.
    void clearPages();
    /// "page" with the smallest number from 1 that no tab has.
    QString nextPageName() const;

    QTabWidget* tabWidget() const { return m_tabWidget; }
    /// The message pane, with all that was printed.
    QTextBrowser* messages() const;
    QSplitter* splitter() const { return m_splitter; }
    int currentTabIndex() const;
    /// The page whose tab stands at this index, or is the current one; null when there is none.
    XTablePage* pageAt(int tabIndex) const;
    XTablePage* currentPage() const;
    XCellTableView* currentView() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildForm();
    void replacePrintFunctions();
    void printWelcome();
    void shareSplitter(int upper, int lower);
    QString filePath(const QString& fileName) const;

    KeyWordHint m_keyWordHint;
    xstd::XString m_appPath;
    QTabWidget* m_tabWidget = nullptr;
    XMessagePane* m_messages = nullptr;
    QSplitter* m_splitter = nullptr;
    std::vector<std::unique_ptr<XTablePage>> m_pages; // in the order of their making
};
