#pragma once

#include "XPanelGrid.h"
#include "XToolColorButton.h"
#include "common/XMergedRects.h"
#include "common/XString.h"

#include <QMainWindow>

#include <map>
#include <memory>
#include <vector>

class QApplication;
class QFrame;
class QSplashScreen;
class QSplitter;
class QStackedWidget;
class QTabWidget;
class QTextBrowser;
class QToolBar;
class KeyWordHint;
class XBackgroundColor;
class XCellTableView;
class XComboBox;
class XCommonToolButton;
class XFontComboBox;
class XMessagePane;
class XSessionLock;
class XTablePage;
class XTavixCellExtend;
class tavix;
enum class XFormatField : uint8_t;
namespace huge {
class XCellAction;
struct XFormatRule;
} // namespace huge

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
    KeyWordHint& keyWordHint() { return *m_keyWordHint; }

    /// Brings back window and splitter from a file below the program's folder. False, with the
    /// standard sizes, when there is none.
    bool restLayout(const QString& fileName);
    bool saveLayout(const QString& fileName);

    /// Makes a page and its tab at `index`; null when the index is out of range.
    XTablePage* addPage(int index, const QString& name);
    /// Closes a page without asking; nothing without one.
    void removePage(int tabIndex);
    /// Closes all pages without asking.
    void clearPages();
    void setTabColor(int index, const QColor& color);

    // Commands on pages (tavixPages.cpp). An index behind the last tab means the place there.

    void newPage(int index);
    /// Asks for a document and opens it in a page of its own; one that is open already is shown.
    void openPage(int index);
    /// Opens the document at this path. False, with an empty page and a red line, if that fails.
    bool openDocument(const QString& path, int index);
    /// Saves to the page's document, or to one that is asked for. False if nothing was saved.
    bool savePage(int tab);
    bool savePageAs(int tab);
    void saveAllPages();
    /// Asks about a modified page. False if it stays open.
    bool closePage(int tab);
    /// Prints the listing of a script at this position.
    void printListing(const QString& text, int row, int col);
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

public slots:
    void tabCloseRequested(int index);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Documents that are dropped on the window are opened.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildForm();
    bool saveTo(XTablePage& page, const QString& named);
    bool mayOverwrite(const XTablePage& page, const QString& path, bool isNamed);

    void replacePrintFunctions();
    void printWelcome();
    void shareSplitter(int upper, int lower);
    QString filePath(const QString& fileName) const;

    std::unique_ptr<KeyWordHint> m_keyWordHint; // a window of its own
    xstd::XString m_appPath;
    QTabWidget* m_tabWidget = nullptr;
    XMessagePane* m_messages = nullptr;
    QSplitter* m_splitter = nullptr;
    std::vector<std::unique_ptr<XTablePage>> m_pages; // in the order of their making

    // Session (tavixSession.cpp)

public:
    /// The folder of the session below the user's data, made if so asked.
    QString cacheDir(bool create) const;
    QString cacheListPath() const;
    /// Notes the pages of this session, and puts the modified ones into the cache. What could not
    /// be written is told by the result, one line of text for each page or file; it is empty when
    /// all is safe.
    QStringList saveSession(bool write);

private:
    /// Makes the list of the first start, with the sample.
    void initUserCache();
    bool hasUserCache() const;
    /// Opens the pages of the list. False where there is none that can be read.
    bool loadSession();
    void startSession();
    bool keepPagesAtExit();
    void saveSometimes();
    void printRecovery();
    void keepDamagedList(const QString& reason);

    std::unique_ptr<XSessionLock> m_sessionLock; // null where another program has the session
    bool m_isRecovering = false; // the last start did not get through its pages
    std::map<const XTablePage*, uint64_t> m_keptChanges; // what the cache has of each page
    // End of session

    // Tools

public:
    /// "undo" and "redo" of the tool bar; the page enables them.
    XCommonToolButton* undoButton() const { return m_undoButton; }
    XCommonToolButton* redoButton() const { return m_redoButton; }
    /// The colour that the border commands use.
    QColor borderColor() const;
    /// Brings the panel in line with a cell's format; with null that is the format of new cells.
    void showCellFormat(const XTavixCellExtend* extend);

public slots:
    /// Shows the state of the page that came to the front.
    void onPageBarChanged(int _tab_index);

private:
    QWidget* buildPanels(QWidget* parent);
    void initToolBar();
    void initBaseTools();
    XCommonToolButton* addTool(const XPanelGrid::Look& look, XPanelGrid::Command command);
    XCommonToolButton* addPanelButton(const QString& text, const QString& toolTip, int page);
    void addClipboardTools(XPanelGrid& panel);
    void addFormatTools(XPanelGrid& panel);
    void addFontTools(XPanelGrid& panel);
    void addBorderTools(XPanelGrid& panel);
    void addAlignmentTools(XPanelGrid& panel);
    void addNumberTools(XPanelGrid& panel);
    void addRadixTools(XPanelGrid& panel);
    void addCombo(XComboBox* combo, int width, void (tavix::*slot)(const QString&));
    void focusView();
    void showRefs(bool on);
    void showCurrentFormat();
    void showNumberFormat(const huge::XFormatRule& rule);

    QToolBar* m_toolBar = nullptr;
    QStackedWidget* m_stackedWidget = nullptr;
    QFrame* m_baseToolFrame = nullptr;
    XCommonToolButton* m_undoButton = nullptr;
    XCommonToolButton* m_redoButton = nullptr;
    XFontComboBox* m_fontNameCombo = nullptr;
    XComboBox* m_fontSizeCombo = nullptr;
    XComboBox* m_mantissaCombo = nullptr;
    XCommonToolButton* m_boldButton = nullptr;
    XCommonToolButton* m_italicButton = nullptr;
    XCommonToolButton* m_underlineButton = nullptr;
    XCommonToolButton* m_alignTopButton = nullptr;
    XCommonToolButton* m_alignBottomButton = nullptr;
    XCommonToolButton* m_alignVCenterButton = nullptr;
    XCommonToolButton* m_alignLeftButton = nullptr;
    XCommonToolButton* m_alignRightButton = nullptr;
    XCommonToolButton* m_alignHCenterButton = nullptr;
    XCommonToolButton* m_commaButton = nullptr;
    XCommonToolButton* m_quoteButton = nullptr;
    XCommonToolButton* m_percentButton = nullptr;
    XCommonToolButton* m_modButton = nullptr;
    XCommonToolButton* m_signButton = nullptr;
    XCommonToolButton* m_radix2Button = nullptr;
    XCommonToolButton* m_radix8Button = nullptr;
    XCommonToolButton* m_radix10Button = nullptr;
    XCommonToolButton* m_radix16Button = nullptr;
    XCommonToolButton* m_radix58Button = nullptr;
    XCommonToolButton* m_radix64Button = nullptr;
    XCommonToolButton* m_refButton = nullptr;
    XCommonToolButton* m_activePanelButton = nullptr;
    XBackgroundColor* m_borderColorButton = nullptr;
    // End of tools

    // Commands: each changes the selection of the current page, by one action. Without a selection
    // nothing happens.

public:
    /// Runs an action on the current page's table and shows what it changed. Undo goes back to the
    /// cell that is the current one now.
    void perform(std::unique_ptr<huge::XCellAction> action);

    /// Off when any selected cell has it, else on.
    void toggleBold();
    void toggleItalic();
    void toggleUnderline();
    void toggleSign();
    /// Off when the first selected cell has it, else on.
    void toggleMultLine();
    void togglePercent();
    void toggleMod();
    void toggleBreakChar(char breakChar);
    /// One step from the largest of the selection. Below 0 the places behind the point become as
    /// many as a value has.
    void stepMantissa(int step);
    void stepBreakSize(int step);
    void stepFontSize(bool expand);
    void setRadix(int radix);
    void setAlignment(bool vertical, int value);
    /// `mode` is one of XActionSetBorder's, the colour is borderColor().
    void setBorder(int mode);
    void clearStyle();
    /// The next cells that are marked get the look of the selection.
    void startStyleBrush();

public slots:
    /// Of the combo boxes: only what a person chooses counts, and then the box has the focus.
    void onSetFontName(const QString& _name);
    void onSetFontSize(const QString& _size);
    void onSetMantissaSize(const QString& _size);
    /// Of the colour buttons.
    void onSetFontColor(const QColor& _color, XToolColorButton::Position _pos);
    void onSelectBackgroundColor(const QColor& _color, XToolColorButton::Position _pos);
    /// A click on the icon gives the present borders the colour; a choice in the popup does not.
    void onSelectBorderColor(const QColor& _color, XToolColorButton::Position _pos);

private:
    xstd::XMergedRects selection() const;
    huge::XFormatRule firstRule() const;
    void setMantissa(int size);
    void applyFormatRule(XFormatField field, const huge::XFormatRule& rule);
    template <class Action, class... Args>
    void changeStyle(const Args&... args);
    template <class Action>
    void toggleAny(bool XTavixCellExtend::*bit);
    // End of commands
};
