#pragma once

#include <QComboBox>

class QListWidget;

/// The flat combo box of the panels. Its popup is a list widget that shows up to 20 entries.
///
/// A text that is typed counts when Return is pressed, whether the list has it or not, and is
/// never added to the list. The wheel belongs to the panel: turning it over a box changes nothing.
class XComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit XComboBox(QWidget* parent);

    /// Adds the texts in the box's own font and makes the popup as wide as the widest so far.
    void addItems(const QStringList& texts);
    /// Shows a text without reporting it, and makes its entry the current one if there is one.
    void showText(const QString& text);

signals:
    /// Escape was pressed: what was typed does not count.
    void dismissed();

protected:
    /// For a derived box that makes its list later: `itemRule` is added to the style sheet.
    XComboBox(const QString& itemRule, int iconSize, QWidget* parent);

    void setList(QListWidget* list);
    QListWidget* list() const { return m_list; }
    /// Fixes the list's width at the largest width told so far, with `margin` beside it.
    void widen(int textWidth, int margin = 0);

    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QListWidget* m_list = nullptr; // null until there is something to show
    int m_maxTextWidth;
};
