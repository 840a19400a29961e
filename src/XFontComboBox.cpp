#include "XFontComboBox.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QListWidget>

namespace {

constexpr int faceSize = 18;
constexpr int iconWidth = 32;
constexpr int rowHeight = 34;

/// The family at the list's size. A face of symbols would show its own name as a row of stars: it
/// keeps the box's letters.
QFont faceOf(const QFontDatabase& fonts, const QString& family, const QFont& letters)
{
    QFont face = letters;
    if (!fonts.writingSystems(family).contains(QFontDatabase::Symbol))
        face = QFont(family);
    face.setPointSize(faceSize);
    return face;
}

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
    const QFontDatabase fonts;
    for (const QString& family : fonts.families()) {
        const QFont face = faceOf(fonts, family, font());
        auto* item = new QListWidgetItem(icon, family, list());
        item->setFont(face);
        item->setSizeHint(QSize(0, rowHeight));
        widen(QFontMetrics(face).horizontalAdvance(family), iconWidth + 40);
    }
    showText(current);
}
