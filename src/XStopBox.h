#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;

/// Stands between a long calculation and its user. The engine calls it again and again while it
/// calculates; after half a second it shows how long that has been, and its button or Escape stops
/// the calculation. Only the box and repaints get through meanwhile: it is modal, and what else
/// waits for the event loop finds the table in the middle of a change.
class XStopBox : public QDialog {
    Q_OBJECT

public:
    /// Becomes what the engine calls, for as long as the box lives.
    XStopBox();
    ~XStopBox() override;

    /// Whether a calculation is interrupted at this moment, only to show that it goes on.
    static bool isCalculating() { return s_isCalculating; }

public slots:
    /// Escape, the button and the close button of the window stop the calculation.
    void reject() override;

private:
    void look();
    void rest();

    QLabel* m_label;
    QElapsedTimer m_clock; // since the calculation began; invalid between two
    QElapsedTimer m_lastLook;
    bool m_isWanted = false; // the stop
    static inline bool s_isCalculating = false;
};
