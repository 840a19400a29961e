#pragma once

#include <QApplication>

#include <deque>
#include <exception>

/// The application object. An exception that unwinds through Qt's own frames leaves Qt broken: a
/// timer whose slot threw never fires again. So whatever leaves an event's handler is caught at
/// the event, kept, and the event loop is left in the regular way; the caller of exec() throws it
/// again from there and enters the loop anew.
class XTavixApplication : public QApplication {
    Q_OBJECT

public:
    XTavixApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

    bool hasEscaped() const { return !m_escaped.empty(); }
    /// Throws the oldest exception that left a handler and forgets it.
    void rethrowEscaped();
    /// True once the last window has been closed: nobody is left to go on for.
    bool windowsClosed() const { return m_windowsClosed; }

private slots:
    void onLastWindowClosed();

private:
    std::deque<std::exception_ptr> m_escaped;
    bool m_windowsClosed = false;
};

/// Runs the event loop until the program is to end and returns its code. Each exception that left
/// a handler is shown in the error box, and the loop goes on; one that is no std::exception leaves
/// this function.
int runEventLoop(XTavixApplication& application);
