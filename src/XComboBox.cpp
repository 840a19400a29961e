#include "XComboBox.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int visibleItems = 20;

const char* const boxSheet =
    "QComboBox{combobox-popup:0;border:1px solid rgb(230,230,230);border-radius:3px;"
    "background-color:rgb(255,255,255);}"
    "QComboBox:hover{border:1px solid rgb(180,210,240);background-color:rgb(255,255,255);}"
    "QComboBox::drop-down{background-color:rgb(255,255,255);border:none;width:16px;}"
    "QComboBox::drop-down:hover{background-color:rgb(180,210,240);}"
    "QComboBox::down-arrow{image:url(./icons/combobox_down_arrow.png);}";

const char* const shortItems = "QComboBox QAbstractItemView::item{min-height:24px;}";

} // namespace

XComboBox::XComboBox(QWidget* parent) : XComboBox(shortItems, 24, parent)
{
    setList(new QListWidget(this));
}

XComboBox::XComboBox(const QString& itemRule, int iconSize, QWidget* parent)
    : QComboBox(parent), m_maxTextWidth(width())
{
    setMaxVisibleItems(visibleItems);
    setIconSize(QSize(iconSize, iconSize));
    setInsertPolicy(QComboBox::NoInsert);
    setFocusPolicy(Qt::StrongFocus);
    setStyleSheet(boxSheet + itemRule);
}

void XComboBox::setList(QListWidget* list)
{
    m_list = list;
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    const QString text = currentText();
    setModel(m_list->model());
    setView(m_list);
    showText(text);
}

void XComboBox::addItems(const QStringList& texts)
{
    const QFontMetrics metrics(font());
    for (const QString& text : texts) {
        auto* item = new QListWidgetItem(text, m_list);
        item->setFont(font());
        widen(metrics.horizontalAdvance(text));
    }
}

void XComboBox::widen(int textWidth, int margin)
{
    m_maxTextWidth = std::max(m_maxTextWidth, textWidth);
    m_list->setFixedWidth(m_maxTextWidth + margin);
}

void XComboBox::showText(const QString& text)
{
    const QSignalBlocker blocker(this);
    setCurrentIndex(findText(text));
    if (isEditable()) {
        setEditText(text);
        lineEdit()->setCursorPosition(0);
    }
}

void XComboBox::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // The base class reports a typed text only when it stands in the list. Its entry becomes
        // the current one first, or it would be reported once more when the focus goes.
        showText(currentText());
        emit textActivated(currentText());
        break;
    case Qt::Key_Escape:
        emit dismissed();
        break;
    default:
        QComboBox::keyPressEvent(event);
    }
}

void XComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
