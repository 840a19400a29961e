#include "XFontComboBox.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QListWidget>

namespace {

constexpr int faceSize = 18;
constexpr int iconWidth = 32;
constexpr int rowHeight = 34;

} // namespace

XFontComboBox::XFontComboBox(QWidget* parent) : XComboBox(QString(), iconWidth, parent)
{
    setEditable(true);
}

void XFontComboBox::showPopup()
{
    if (!list())
        buildList();
    QComboBox::showPopup();
}

void XFontComboBox::buildList()
{
    auto* families = new QListWidget(this);
    families->setObjectName("fontNameList");
    families->setStyleSheet("QListView{height:34px;}QListView::item{height:34px;}");
    // Rows of one height: a list that asks each row for its size would load every face.
    families->setUniformItemSizes(true);
    setList(families);
    setCursor(Qt::WaitCursor);
    fillList();
    unsetCursor();
}

void XFontComboBox::fillList()
{
    const QIcon icon("./icons/fonticon.png");
    const QString current = currentText();
    for (const QString& family : QFontDatabase().families()) {
        const QFont face(family, faceSize);
        auto* item = new QListWidgetItem(icon, family, list());
        item->setFont(face);
        item->setSizeHint(QSize(0, rowHeight));
        widen(QFontMetrics(face).horizontalAdvance(family), iconWidth + 40);
    }
    showText(current);
}
