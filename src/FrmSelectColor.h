#pragma once

#include <QColor>
#include <QDialog>

#include <map>
#include <vector>

class QFrame;
class QGridLayout;
class QToolButton;

/// The colour popup: a table of named colours in 48 shades each, no colour at all, the colours
/// that were chosen last from any popup, and a way to every other colour.
class FrmSelectColor : public QDialog {
    Q_OBJECT

public:
    explicit FrmSelectColor(QWidget* parent);

    /// Makes the swatches small enough for a screen of this size; 24 pixels at the most.
    void fitInto(const QSize& screen);
    const QColor& selected() const { return m_selected; }

signals:
    void onColorSelected(const QColor& _color);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private slots:
    void onColorClicked(bool checked);

private:
    void addTopRow();
    void addNamedColor(int row, const QString& name, const QColor& color);
    QToolButton* addSwatch(int row, int column, const QString& name, const QColor& color);
    void setSwatch(QToolButton* button, const QString& name, const QColor& color);
    void showRecent();
    void askColor();
    void choose(const QColor& color);

    QFrame* m_frame = nullptr;
    QGridLayout* m_grid = nullptr;
    std::map<QToolButton*, QColor> m_colors;
    std::vector<QToolButton*> m_recent;
    QColor m_selected;
    QToolButton* m_current = nullptr;
    int m_side = 24;
};
