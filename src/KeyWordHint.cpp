#include "KeyWordHint.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QGuiApplication>
#include <QListView>
#include <QScreen>

#include <algorithm>

namespace {

constexpr int margin = 60;   // pixels around the entries
constexpr int mostRows = 20; // before the list scrolls

} // namespace

KeyWordHint::KeyWordHint(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags | Qt::FramelessWindowHint | Qt::Tool | Qt::WindowDoesNotAcceptFocus),
      m_list(new QListView(this))
{
    setObjectName("keyWordHint");
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setModel(&m_model);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(m_list);
    connect(m_list, &QListView::clicked, this, &KeyWordHint::keyclicked);
}

void KeyWordHint::filter(const QString& word)
{
    m_model.filter(word);
    selectRow(0);
}

void KeyWordHint::updateSize()
{
    const QFontMetrics metrics(font());
    const int rows = m_model.rowCount();
    int width = 0;
    for (int row = 0; row < rows; ++row)
        width = std::max(width,
                         metrics.boundingRect(m_model.itemAt(m_model.index(row))->display).width());
    setFixedWidth(width + margin);
    setFixedHeight(std::min(rows, mostRows) * metrics.height() + margin);
    selectRow(0);
}

void KeyWordHint::showAt(KeyWordHintInf* owner, int x, int y)
{
    m_owner = owner;
    QPoint place(x, y);
    if (const QScreen* screen = QGuiApplication::screenAt(place)) {
        const QRect free = screen->availableGeometry();
        place.setX(std::max(free.left(), std::min(x, free.right() - width())));
        place.setY(std::max(free.top(), std::min(y, free.bottom() - height())));
    }
    move(place);
    show();
}

void KeyWordHint::hideFor(const KeyWordHintInf*)
{
    if (isVisible())
        close();
}

void KeyWordHint::forget(const KeyWordHintInf* owner)
{
    if (m_owner != owner)
        return;
    hideFor(owner);
    m_owner = nullptr;
}

void KeyWordHint::selectRow(int row)
{
    if (row >= 0 && row < m_model.rowCount())
        m_list->setCurrentIndex(m_model.index(row));
}

void KeyWordHint::selectNext()
{
    selectRow(m_list->currentIndex().row() + 1);
}

void KeyWordHint::selectPrev()
{
    selectRow(m_list->currentIndex().row() - 1);
}

void KeyWordHint::accept()
{
    emit m_list->clicked(m_list->currentIndex());
}

void KeyWordHint::keyclicked(const QModelIndex& index)
{
    const KeyWordItem* item = m_model.itemAt(index);
    if (!item || !m_owner)
        return;
    const KeyWordItem taken = *item; // the text that it makes may filter the list anew
    bool isDone = false;
    m_owner->insertKeyWord(&taken, &isDone);
    if (isDone)
        close();
}
