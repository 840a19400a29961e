#include "XCellTableView.h"
#include "XCommonAction.h"
#include "XMenuProxyStyle.h"
#include "XTracingCalc.h"
#include "tavix.h"

#include <QMenu>

using huge::XCellImageMode;

namespace {

const char* const menuSheet = "\n\t\t\tQMenu{\n"
                              "\t\t\t  background:rgba(255,255,255,1);\n"
                              "\t\t\t  border:1px solid rgb(230,230,255);\n"
                              "\t\t\t}\n"
                              "\t\t\tQMenu::item:selected{\n"
                              "\t\t\t  background:rgba(225,232,250,1);\n"
                              "\t\t\t  color:black;\n"
                              "\t\t\t}\n";

QIcon iconOf(const char* name)
{
    return QIcon(QString("./icons/%1.png").arg(name));
}

void dress(QMenu* menu)
{
    menu->setStyleSheet(menuSheet);
    auto* style = new XMenuProxyStyle;
    style->setParent(menu);
    menu->setStyle(style);
}

} // namespace

template <class Tool>
void XCellTableView::startTool()
{
    const QCursor cursor = cursorFromFile("./icons/calc_cursor.png", QPoint(1, 1), Qt::CrossCursor);
    setTool(std::make_unique<Tool>(theMainWindow, cursor));
}

XCommonAction* XCellTableView::addEntry(QMenu* menu, const char* text, const char* icon,
                                        std::function<void()> command)
{
    auto* entry = new XCommonAction([command](QObject*) { command(); }, iconOf(icon), text, menu);
    menu->addAction(entry);
    return entry;
}

void XCellTableView::initMenu()
{
    m_tableMenu = new QMenu(this);
    m_tableMenu->setObjectName("tableMenu");
    dress(m_tableMenu);
    addEntry(m_tableMenu, "复制(Ctrl+C)", "copy", [this] { copyToClipboard(); });
    addEntry(m_tableMenu, "剪切(Ctrl+X)", "cut", [this] { cutSelection(); });
    addEntry(m_tableMenu, "粘贴(Ctrl+V)", "paste", [this] { paste(XCellImageMode::Everything); });
    m_pasteTextEntry =
        addEntry(m_tableMenu, "仅粘贴文本", "pasteText", [this] { paste(XCellImageMode::Values); });
    m_pasteScriptEntry = addEntry(m_tableMenu, "仅粘贴公式", "pasteScript",
                                  [this] { paste(XCellImageMode::Scripts); });
    addEntry(m_tableMenu, "仅粘贴样式", "pasteStyle", [this] { paste(XCellImageMode::Formats); });
    m_tableMenu->addSeparator();
    addEntry(m_tableMenu, "重新计算( Ctrl + R )", "refresh", [this] { recalcSelection(); });
    m_tableMenu->addSeparator();
    addEntry(m_tableMenu, "计算汇总值", "sum", [this] { startTool<XTracingCalcSum>(); });
    addEntry(m_tableMenu, "计算平均值", "avg", [this] { startTool<XTracingCalcAvg>(); });
    m_tableMenu->addSeparator();
    initStructureMenus();
    connect(m_tableMenu, &QMenu::aboutToShow, this, &XCellTableView::aboutTableMenuToShow);
}

void XCellTableView::initStructureMenus()
{
    QMenu* insert = m_tableMenu->addMenu(iconOf("insert"), "插入单元格");
    dress(insert);
    addEntry(insert, "插入行", "insertRow", [this] { insertRow(); });
    addEntry(insert, "插入列", "insertCol", [this] { insertCol(); });
    addEntry(insert, "插入单元格：单元格下移", "moveRectDown", [this] { insertRowRect(); });
    addEntry(insert, "插入单元格：单元格右移", "moveRectRight", [this] { insertColRect(); });
    QMenu* remove = m_tableMenu->addMenu(iconOf("remove"), "删除单元格");
    dress(remove);
    addEntry(remove, "删除行", "removeRow", [this] { removeRow(); });
    addEntry(remove, "删除列", "removeCol", [this] { removeCol(); });
    addEntry(remove, "删除单元格：单元格上移", "moveRectUp", [this] { removeRowRect(); });
    addEntry(remove, "删除单元格：单元格左移", "moveRectLeft", [this] { removeColRect(); });
    addEntry(m_tableMenu, "转置：行列翻转", "transpose", [this] { transposeRect(); });
}

void XCellTableView::aboutTableMenuToShow()
{
    // A cut is pasted whole, whatever is asked for.
    const bool isCut = !m_paintState.cutRects.isEmpty();
    m_pasteTextEntry->setEnabled(!isCut);
    m_pasteScriptEntry->setEnabled(!isCut);
}
