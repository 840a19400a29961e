#pragma once

#include <QColor>
#include <QIcon>
#include <QWidget>

#include <memory>

class FrmSelectColor;

/// A button that holds a colour. A click on its icon reports that colour again; a press on the
/// arrow opens the colour popup, whose choice becomes the colour and is reported too.
class XToolColorButton : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor actColor READ actColor WRITE setActColor)

public:
    /// Where a reported colour comes from.
    enum Position { FromIcon = 0, FromPopup = 1 };
    enum Style { IconOnly = 0, TextOnly = 1, TextBesideIcon = 2, TextUnderIcon = 3 };

    XToolColorButton(const QString& text, Style style, int iconSize, QWidget* parent);
    ~XToolColorButton() override;

    const QColor& color() const { return m_color; }
    /// Changes the colour and the icon without reporting it.
    void setColor(const QColor& color);
    /// What fills the part under the pointer; set by the style sheet.
    const QColor& actColor() const { return m_actColor; }
    void setActColor(const QColor& color) { m_actColor = color; }

    /// The two halves, in the widget's coordinates: one reports the colour, one opens the popup.
    QRect iconRect() const;
    QRect arrowRect() const;
    QSize sizeHint() const override;

signals:
    void onColorSelected(const QColor& _color, XToolColorButton::Position _pos);

protected:
    /// The icon for a colour: a plain square.
    virtual QPixmap drawIcon(const QColor& color) const;
    /// A picture with a bar of the colour at its foot.
    QPixmap drawBar(const QIcon& picture, const QColor& color) const;

    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private slots:
    void __onColorSelected(const QColor& _color);

private:
    void openPopup();
    void setInside(bool inside, const QPoint& position);
    void drawArrow(QPainter& painter, QPoint top) const;
    int textWidth() const;

    QIcon m_icon;
    std::unique_ptr<FrmSelectColor> m_popup; // made when it first opens
    QString m_text;
    int m_arrowWidth = 12;
    int m_margin = 2;
    int m_iconSize;
    bool m_inside = false;
    bool m_inArrow = false;
    bool m_inIcon = false;
    QColor m_actColor = QColor(150, 200, 230);
    QColor m_color = Qt::black;
    Style m_style;
};
