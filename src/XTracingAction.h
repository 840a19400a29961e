#pragma once

#include <QCursor>

class tavix;

/// A tool that waits for the next cells which the user marks in the grid, under a pointer of its
/// own. The view owns it, calls fire() when the mouse is released and ends the tool when that
/// succeeds; a tool that raises stays, so that the user can mark other cells.
class XTracingAction {
public:
    /// `owner` outlives the tool.
    XTracingAction(tavix* owner, const QCursor& cursor);
    virtual ~XTracingAction();
    XTracingAction(const XTracingAction&) = delete;
    XTracingAction& operator=(const XTracingAction&) = delete;

    /// Does the tool's work on what is selected now.
    virtual void fire() = 0;
    virtual QCursor cursor() const { return m_toolCursor; }

protected:
    tavix* owner() const { return m_owner; }

private:
    tavix* m_owner;
    QCursor m_toolCursor;
};
