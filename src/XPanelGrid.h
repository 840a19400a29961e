#pragma once

#include <QGridLayout>
#include <QString>

#include <functional>

class QFrame;
class XCommonToolButton;

/// Lays the controls of a tool panel out: two rows, groups from left to right with a line between
/// them, and at the end what is left over. Columns count from the left of the current group.
class XPanelGrid {
public:
    using Command = std::function<void()>;

    /// A button: its tool tip, its text, and its picture as the name of a file of "./icons".
    struct Look {
        const char* tip;
        const char* text;
        const char* icon;
    };

    /// The frame gets the layout and owns the controls.
    explicit XPanelGrid(QFrame* frame);

    /// Ends the group with a line over both rows and starts the next behind it.
    void startGroup();
    /// Takes up the width that no group needs.
    void finish();

    /// A button with a small icon alone; one that shows a state; one over both rows with a large
    /// icon and its text under it.
    XCommonToolButton* addSmall(int row, int column, const Look& look, Command command);
    XCommonToolButton* addState(int row, int column, const Look& look, Command command);
    XCommonToolButton* addTall(int column, const Look& look, Command command);
    /// A small button with its text beside the icon, two columns wide.
    XCommonToolButton* addWide(int row, int column, const Look& look, Command command);
    void add(QWidget* control, int row, int column, int rows, int columns);

private:
    XCommonToolButton* makeButton(const Look& look, Command command, Qt::ToolButtonStyle style,
                                  int iconSize);

    QFrame* m_frame;
    QGridLayout* m_grid;
    int m_first = 0; // column of the grid where the group starts
};
