#include "tavix.h"

#include "XBackgroundColor.h"
#include "XCellTableView.h"
#include "XCommonToolButton.h"
#include "XFontComboBox.h"
#include "XPanelGrid.h"
#include "XPanelScroller.h"
#include "XSelectFontColor.h"
#include "XTablePage.h"
#include "XTavixCellExtend.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>

namespace {

constexpr int panelHeight = 60;

const char* const panelButtonSheet =
    "QToolButton{background:transparent;border:1px solid transparent;padding:0px 8px;}"
    "QToolButton:hover{background:rgb(250,250,255);}"
    "QToolButton:checked{border-left:1px solid rgb(200,200,255);"
    "border-top:1px solid rgb(200,200,255);border-right:1px solid rgb(200,200,255);"
    "border-bottom:none;background:rgb(255,255,255);}";

/// A command of the current grid, for as long as there is one.
XPanelGrid::Command onView(tavix* window, void (*command)(XCellTableView&))
{
    return [window, command] {
        if (XCellTableView* view = window->currentView())
            command(*view);
    };
}

void setPointSize(QWidget* widget, int size)
{
    QFont font = widget->font();
    font.setPointSize(size);
    widget->setFont(font);
}

} // namespace

QWidget* tavix::buildPanels(QWidget* parent)
{
    m_stackedWidget = new QStackedWidget(parent);
    m_stackedWidget->setObjectName("stackedWidget");
    m_stackedWidget->setMinimumSize(0, panelHeight);
    m_stackedWidget->setMaximumHeight(panelHeight);
    m_stackedWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* basic = new QWidget(m_stackedWidget);
    basic->setObjectName("stackedWidgetPage1");
    auto* layout = new QGridLayout(basic);
    layout->setObjectName("gridLayout");
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* scroller = new XPanelScroller(basic);
    m_baseToolFrame = new QFrame;
    m_baseToolFrame->setObjectName("baseToolFrame");
    m_baseToolFrame->setMinimumHeight(panelHeight);
    m_baseToolFrame->setFrameShape(QFrame::NoFrame);
    scroller->setWidget(m_baseToolFrame);
    layout->addWidget(scroller);
    m_stackedWidget->addWidget(basic);
    auto* additional = new QWidget(m_stackedWidget);
    additional->setObjectName("stackedWidgetPage2");
    m_stackedWidget->addWidget(additional);
    return m_stackedWidget;
}

void tavix::initToolBar()
{
    m_toolBar = addToolBar("toolBar");
    m_toolBar->setObjectName("toolBar");
    m_toolBar->setMaximumHeight(30);
    m_toolBar->setMovable(false);
    m_toolBar->setStyleSheet("QToolBar{border:0px;}");
    // What a right click offers otherwise would hide the bar, with no way to bring it back.
    m_toolBar->toggleViewAction()->setVisible(false);
    addTool({"新建( Ctrl + N )", "New", "newfile"}, [this] { newPage(currentTabIndex() + 1); });
    addTool({"打开( Ctrl + O )", "Open", "openfile"}, [this] { openPage(currentTabIndex() + 1); });
    addTool({"保存( Ctrl + S )", "Save", "save"}, [this] { savePage(currentTabIndex()); });
    addTool({"保存全部", "SaveAll", "saveall"}, [this] { saveAllPages(); });
    addTool({"另存为...", "SaveAs", "saveas"}, [this] { savePageAs(currentTabIndex()); });
    addTool({"显示帮助文件", "OpenHelp", "help"}, [] {
        QDesktopServices::openUrl(
            QUrl::fromLocalFile(QFileInfo("./doc/help.pdf").absoluteFilePath()));
    });
    m_undoButton = addTool({"回退( Ctrl + Z )", "undo", "undo"},
                           onView(this, [](XCellTableView& view) { view.undo(); }));
    m_redoButton = addTool({"重做( Ctrl + Y )", "redo", "redo"},
                           onView(this, [](XCellTableView& view) { view.redo(); }));
    addTool({"刷新样式", "style", "style2"}, [this] { loadStyleSheet(); });
    m_activePanelButton = addPanelButton("基本", "基本功能", 0);
    m_activePanelButton->setChecked(true);
    addPanelButton("附加", "附加功能", 1);
}

XCommonToolButton* tavix::addTool(const XPanelGrid::Look& look, XPanelGrid::Command command)
{
    const QIcon icon(QString("./icons/%1.png").arg(look.icon));
    auto* button = new XCommonToolButton([command](QObject*) { command(); }, icon, look.text,
                                         look.tip, Qt::ToolButtonIconOnly, m_toolBar);
    m_toolBar->addWidget(button);
    button->setIconSize(QSize(24, 24)); // behind the adding, which gives the bar's own size
    return button;
}

XCommonToolButton* tavix::addPanelButton(const QString& text, const QString& toolTip, int page)
{
    const auto show = [this, page](QObject* sender) {
        auto* button = static_cast<XCommonToolButton*>(sender);
        m_activePanelButton->setChecked(false);
        m_activePanelButton = button;
        m_activePanelButton->setChecked(true); // a click on the active one leaves it checked
        m_stackedWidget->setCurrentIndex(page);
    };
    auto* button = new XCommonToolButton(show, QIcon("./icons/toolPanel.png"), text, toolTip,
                                         Qt::ToolButtonTextBesideIcon, m_toolBar);
    button->setCheckable(true);
    button->setStyleSheet(panelButtonSheet);
    m_toolBar->addWidget(button);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIconSize(QSize(24, 24));
    return button;
}

void tavix::initBaseTools()
{
    XPanelGrid panel(m_baseToolFrame);
    addClipboardTools(panel);
    panel.startGroup();
    addFormatTools(panel);
    panel.startGroup();
    addFontTools(panel);
    panel.startGroup();
    addBorderTools(panel);
    panel.startGroup();
    addAlignmentTools(panel);
    panel.startGroup();
    addNumberTools(panel);
    addRadixTools(panel);
    panel.finish();
    connect(m_tabWidget, &QTabWidget::currentChanged, this, &tavix::onPageBarChanged);
    for (XCommonToolButton* button : m_baseToolFrame->findChildren<XCommonToolButton*>()) {
        // A click turns the button, whatever becomes of the command: what counts is the cell.
        if (button->isCheckable())
            connect(button, &XCommonToolButton::released, this, &tavix::showCurrentFormat,
                    Qt::QueuedConnection);
    }
}

void tavix::addClipboardTools(XPanelGrid& panel)
{
    panel.addTall(0, {"粘贴( ctrl+v )", "Paste", "paste"}, onView(this, [](XCellTableView& view) {
                      view.paste(huge::XCellImageMode::Everything);
                  }));
    panel.addSmall(
        0, 1, {"只粘贴数值", "数值", "pasteText"},
        onView(this, [](XCellTableView& view) { view.paste(huge::XCellImageMode::Values); }));
    panel.addSmall(
        0, 2, {"只粘贴公式", "公式", "pasteScript"},
        onView(this, [](XCellTableView& view) { view.paste(huge::XCellImageMode::Scripts); }));
    panel.addWide(
        1, 1, {"只粘贴格式", "格式", "pasteStyle"},
        onView(this, [](XCellTableView& view) { view.paste(huge::XCellImageMode::Formats); }));
    panel.addSmall(0, 3, {"剪切( Ctrl + X )", "cut", "cut"},
                   onView(this, [](XCellTableView& view) { view.cutSelection(); }));
    panel.addSmall(1, 3, {"复制( Ctrl + C )", "copy", "copy"},
                   onView(this, [](XCellTableView& view) { view.copyToClipboard(); }));
}

void tavix::addFormatTools(XPanelGrid& panel)
{
    panel.addTall(0, {"格式刷", "格式刷", "stylebrush"}, [this] { startStyleBrush(); });
    panel.addTall(1, {"清除格式", "清格式", "clearStyle"}, [this] { clearStyle(); });
    panel.addSmall(
        0, 2, {"复制格式( Ctrl + Shift + C )", "CopyStyle", "stylecopy"},
        onView(this, [](XCellTableView& view) { view.copyStyle(view.selectedRects()); }));
    panel.addSmall(
        1, 2, {"粘贴格式( Ctrl + Shift + V )", "PasteStyle", "stylepaste"},
        onView(this, [](XCellTableView& view) { view.pasteStyle(view.selectedRects()); }));
}

void tavix::addFontTools(XPanelGrid& panel)
{
    m_fontNameCombo = new XFontComboBox(m_baseToolFrame);
    addCombo(m_fontNameCombo, 128, &tavix::onSetFontName);
    panel.add(m_fontNameCombo, 0, 0, 1, 4);
    m_fontSizeCombo = new XComboBox(m_baseToolFrame);
    m_fontSizeCombo->addItems({"6", "8", "9", "10", "11", "12", "14", "16", "18", "20", "22", "24",
                               "26", "28", "36", "48", "72"});
    addCombo(m_fontSizeCombo, 64, &tavix::onSetFontSize);
    panel.add(m_fontSizeCombo, 0, 4, 1, 2);
    panel.addSmall(0, 6, {"增大字体", "增大字体", "expand"}, [this] { stepFontSize(true); });
    panel.addSmall(0, 7, {"缩小字体", "缩小字体", "reduce"}, [this] { stepFontSize(false); });
    m_boldButton = panel.addState(1, 0, {"粗体", "粗体", "Blod"}, [this] { toggleBold(); });
    m_italicButton = panel.addState(1, 1, {"斜体", "斜体", "italic"}, [this] { toggleItalic(); });
    m_underlineButton =
        panel.addState(1, 2, {"下划线", "下划线", "underline"}, [this] { toggleUnderline(); });

    auto* background = new XBackgroundColor("./icons/background.png", m_baseToolFrame);
    background->setColor(Qt::transparent);
    background->setToolTip("选择背景颜色");
    setPointSize(background, 11);
    connect(background, &XToolColorButton::onColorSelected, this, &tavix::onSelectBackgroundColor);
    panel.add(background, 1, 3, 1, 2);
    auto* fore = new XSelectFontColor("./icons/setfont_color.png", m_baseToolFrame);
    fore->setToolTip("选择字体颜色(Select font color)");
    connect(fore, &XToolColorButton::onColorSelected, this, &tavix::onSetFontColor);
    panel.add(fore, 1, 5, 1, 2);
}

void tavix::addCombo(XComboBox* combo, int width, void (tavix::*slot)(const QString&))
{
    combo->setEditable(true);
    combo->setFixedSize(width, 24);
    connect(combo, &QComboBox::textActivated, this, slot);
    // The choice is made: keys belong to the grid again.
    connect(combo, &QComboBox::textActivated, this, &tavix::focusView);
    connect(combo, &XComboBox::dismissed, this, &tavix::focusView);
    // What was typed and not confirmed is no format of the cell.
    connect(combo->lineEdit(), &QLineEdit::editingFinished, this, &tavix::showCurrentFormat,
            Qt::QueuedConnection);
}

void tavix::focusView()
{
    if (XCellTableView* view = currentView())
        view->setFocus();
}

void tavix::addBorderTools(XPanelGrid& panel)
{
    m_borderColorButton =
        new XBackgroundColor("./icons/borderColor.png", "线条颜色", XToolColorButton::TextUnderIcon,
                             32, m_baseToolFrame);
    m_borderColorButton->setColor(Qt::black);
    m_borderColorButton->setToolTip("选择表格线颜色");
    setPointSize(m_borderColorButton, 11);
    connect(m_borderColorButton, &XToolColorButton::onColorSelected, this,
            &tavix::onSelectBorderColor);
    panel.add(m_borderColorButton, 0, 0, 2, 1);
    struct Border {
        XPanelGrid::Look look;
        int mode;
    };
    const Border borders[2][5] = {{{{"清除表格线", "无表格线", "nullline"}, 1},
                                   {{"粗框", "粗框", "blodborder"}, 2},
                                   {{"粗框+细内线", "粗框+细内线", "blodborder2"}, 4},
                                   {{"细框", "细框", "border"}, 3},
                                   {{"细框+细内线", "细框+细内线", "border2"}, 6}},
                                  {{{"细内线", "细内线", "innerline"}, 5},
                                   {{"左边线", "左边线", "leftline"}, 7},
                                   {{"上边线", "上边线", "topline"}, 8},
                                   {{"右边线", "右边线", "rightline"}, 9},
                                   {{"下边线", "下边线", "bottomline"}, 10}}};
    for (int row = 0; row < 2; ++row) {
        int column = 1;
        for (const Border& border : borders[row])
            panel.addSmall(row, column++, border.look,
                           [this, mode = border.mode] { setBorder(mode); });
    }
}

void tavix::addAlignmentTools(XPanelGrid& panel)
{
    m_refButton = panel.addTall(0, {"标识出单元格之间的引用关系", "标识引用关系", "ref"},
                                [this] { showRefs(m_refButton->isChecked()); });
    m_refButton->setCheckable(true);
    panel.addTall(1, {"自动换行", "自动换行", "multline"}, [this] { toggleMultLine(); });
    panel.startGroup();
    m_alignTopButton =
        panel.addState(0, 0, {"居上", "居上", "alignVTop"}, [this] { setAlignment(true, 0); });
    m_alignLeftButton =
        panel.addState(1, 0, {"居左", "居左", "alignLeft"}, [this] { setAlignment(false, 0); });
    m_alignVCenterButton = panel.addState(0, 1, {"纵向居中", "纵向居中", "alignVCenter"},
                                          [this] { setAlignment(true, 1); });
    m_alignHCenterButton = panel.addState(1, 1, {"横向居中", "横向居中", "alignCenter"},
                                          [this] { setAlignment(false, 1); });
    m_alignBottomButton =
        panel.addState(0, 2, {"居下", "居下", "alignVBottom"}, [this] { setAlignment(true, 2); });
    m_alignRightButton =
        panel.addState(1, 2, {"居右", "居右", "alignRight"}, [this] { setAlignment(false, 2); });
}

void tavix::addNumberTools(XPanelGrid& panel)
{
    m_commaButton = panel.addState(0, 0, {"逗号分隔符", "逗号分隔符", "numbersperate"},
                                   [this] { toggleBreakChar(','); });
    m_quoteButton = panel.addState(0, 1, {"单引号分隔符", "单引号分隔符", "numbersperate2"},
                                   [this] { toggleBreakChar('\''); });
    panel.addSmall(0, 2, {"增加分隔符宽度", "增加分隔符宽度", "numbersperate_add"},
                   [this] { stepBreakSize(1); });
    panel.addSmall(0, 3, {"减小分隔符宽度", "减小分隔符宽度", "numbersperate_dec"},
                   [this] { stepBreakSize(-1); });
    panel.addSmall(0, 4, {"增加小数位", "增加小数位", "dec2"}, [this] { stepMantissa(1); });
    panel.addSmall(0, 5, {"减小小数位", "减小小数位", "dec1"}, [this] { stepMantissa(-1); });
    m_mantissaCombo = new XComboBox(m_baseToolFrame);
    m_mantissaCombo->addItems({"-1", "0", "1", "2", "3", "4", "6", "8", "12", "16", "24", "32",
                               "64", "128", "258", "512", "1025"});
    addCombo(m_mantissaCombo, 56, &tavix::onSetMantissaSize);
    m_mantissaCombo->setToolTip("小数位");
    panel.add(m_mantissaCombo, 0, 6, 1, 2);
}

void tavix::addRadixTools(XPanelGrid& panel)
{
    m_percentButton =
        panel.addState(1, 0, {"显示百分号", "显示百分号", "percent"}, [this] { togglePercent(); });
    m_modButton = panel.addState(1, 1, {"显示模数", "显示模数", "mod2"}, [this] { toggleMod(); });
    m_radix10Button = panel.addState(1, 2, {"10进制，或默认进制", "10进制，或默认进制", "radix10"},
                                     [this] { setRadix(10); });
    m_signButton = panel.addState(1, 3, {"显示或不显示符号位", "显示符号位", "sign"},
                                  [this] { toggleSign(); });
    m_radix2Button = panel.addState(1, 4, {"二进制", "二进制", "radix2"}, [this] { setRadix(2); });
    m_radix8Button = panel.addState(1, 5, {"八进制", "八进制", "radix8"}, [this] { setRadix(8); });
    m_radix16Button =
        panel.addState(1, 6, {"16进制", "16进制", "radix16"}, [this] { setRadix(16); });
    m_radix58Button =
        panel.addState(1, 7, {"base58编码", "base58编码", "radix58"}, [this] { setRadix(58); });
    m_radix64Button =
        panel.addState(1, 8, {"base64编码", "base64编码", "radix64"}, [this] { setRadix(64); });
}

QColor tavix::borderColor() const
{
    return m_borderColorButton->color();
}

void tavix::showRefs(bool on)
{
    if (XCellTableView* view = currentView()) {
        XCellPaintState state = view->paintState();
        state.showRefs = on;
        view->setPaintState(state);
    }
}

void tavix::onPageBarChanged(int)
{
    if (XTablePage* page = currentPage()) {
        m_undoButton->setEnabled(page->undo().canUndo());
        m_redoButton->setEnabled(page->undo().canRedo());
        showCellFormat(page->currentCellExtend());
    }
}

void tavix::showCurrentFormat()
{
    if (const XTablePage* page = currentPage())
        showCellFormat(page->currentCellExtend());
}

void tavix::showCellFormat(const XTavixCellExtend* extend)
{
    XTablePage* page = currentPage();
    if (!page)
        return;
    m_refButton->setChecked(page->view()->paintState().showRefs);
    if (!extend)
        extend = static_cast<const XTavixCellExtend*>(page->table().extendPrototype());
    const huge::XFormatRule& rule = extend->formatRule;
    m_fontSizeCombo->showText(QString::number(extend->fontSize));
    m_fontNameCombo->showText(extend->fontName);
    m_mantissaCombo->showText(QString::number(rule.mantissa));
    m_boldButton->setChecked(extend->bold);
    m_italicButton->setChecked(extend->italic);
    m_underlineButton->setChecked(extend->underLine);
    m_alignTopButton->setChecked(extend->valign == XTavixCellExtend::AlignStart);
    m_alignVCenterButton->setChecked(extend->valign == XTavixCellExtend::AlignCenter);
    m_alignBottomButton->setChecked(extend->valign == XTavixCellExtend::AlignEnd);
    m_alignLeftButton->setChecked(extend->align == XTavixCellExtend::AlignStart);
    m_alignHCenterButton->setChecked(extend->align == XTavixCellExtend::AlignCenter);
    m_alignRightButton->setChecked(extend->align == XTavixCellExtend::AlignEnd);
    showNumberFormat(rule);
}

void tavix::showNumberFormat(const huge::XFormatRule& rule)
{
    m_commaButton->setChecked(rule.breakchar == ',');
    m_quoteButton->setChecked(rule.breakchar == '\'');
    m_percentButton->setChecked(rule.percent);
    m_modButton->setChecked(rule.mod);
    m_signButton->setChecked(rule.sign);
    m_radix2Button->setChecked(rule.radix == 2);
    m_radix8Button->setChecked(rule.radix == 8);
    m_radix10Button->setChecked(rule.radix == 10);
    m_radix16Button->setChecked(rule.radix == 16);
    m_radix58Button->setChecked(rule.radix == 58);
    m_radix64Button->setChecked(rule.radix == 64);
}
