#pragma once

#include <QTextBrowser>
#include <QTimer>

#include <deque>

/// The message pane, which is the program's log. It keeps a bounded number of lines and characters.
/// Plain text waits until the event loop runs, and what would be pushed out again by then is
/// dropped: a script may print a million times, and laying out a document after each would take
/// minutes.
class XMessagePane final : public QTextBrowser {
    Q_OBJECT

public:
    explicit XMessagePane(QWidget* parent = nullptr);

    /// Adds plain text at the end; a long one is shown cut, with a way to see all of it.
    void addText(const QString& text);
    /// Adds HTML at the end, at once, behind all text added before.
    void addHtml(const QString& html);
    /// Puts the waiting text into the document.
    void flush();

private:
    /// Texts added one after the other, as far as they are short, or one long text.
    struct Waiting {
        QString text;
        int lines = 0; // line feeds in it
    };

    void dropWhatIsPushedOut();
    void followEnd(int start, int end);
    QTextCursor endCursor();

    std::deque<Waiting> m_waiting;
    qint64 m_waitingCharacters = 0; // as far as they will be shown
    qint64 m_waitingLines = 0;
    QTimer m_flushTimer;
};
