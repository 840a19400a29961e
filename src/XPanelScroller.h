#pragma once

#include <QScrollArea>

class QToolButton;

/// Holds a tool panel in a window that may be narrower: what does not fit is reached by the wheel
/// or by the button at the edge behind which more of the panel lies.
class XPanelScroller : public QScrollArea {
    Q_OBJECT

public:
    explicit XPanelScroller(QWidget* parent);

    QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QToolButton* addEdge(Qt::ArrowType arrow, int direction);
    void scroll(int pixels);
    void showEdges();

    QToolButton* m_left;
    QToolButton* m_right;
};
