#include "XMessagePane.h"

#include "LongTexts.h"

#include <QScrollBar>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int keptLines = 2000;
constexpr int keptCharacters = 1000000;
constexpr int longestLine = 16000;
// Short texts wait joined up to this length.
constexpr int joinedLength = 4000;
static_assert(joinedLength <= LongTexts::shownLength, "joined texts must not be cut");

qint64 shownLength(const QString& text)
{
    return std::min<qint64>(text.size(), LongTexts::shownLength);
}

} // namespace

XMessagePane::XMessagePane(QWidget* parent) : QTextBrowser(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAnywhere);
    setOpenLinks(false);
    document()->setMaximumBlockCount(keptLines);
    m_flushTimer.setSingleShot(true);
    connect(&m_flushTimer, &QTimer::timeout, this, &XMessagePane::flush);
    connect(this, &QTextBrowser::anchorClicked, this, &showFullText);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &XMessagePane::followEnd);
}

void XMessagePane::addText(const QString& text)
{
    const int lines = text.count('\n');
    if (!m_waiting.empty() && m_waiting.back().text.size() + text.size() <= joinedLength) {
        m_waiting.back().text += text;
        m_waiting.back().lines += lines;
    } else {
        m_waiting.push_back({text, lines});
    }
    m_waitingCharacters += shownLength(text);
    m_waitingLines += lines;
    dropWhatIsPushedOut();
    if (!m_flushTimer.isActive())
        m_flushTimer.start(0);
}

void XMessagePane::dropWhatIsPushedOut()
{
    while (m_waiting.size() > 1) {
        const Waiting& oldest = m_waiting.front();
        const bool isPushedOut = m_waitingLines - oldest.lines > keptLines ||
                                 m_waitingCharacters - shownLength(oldest.text) > keptCharacters;
        if (!isPushedOut)
            return;
        m_waitingCharacters -= shownLength(oldest.text);
        m_waitingLines -= oldest.lines;
        m_waiting.pop_front();
    }
}

void XMessagePane::addHtml(const QString& html)
{
    flush();
    endCursor().insertHtml(html);
    moveCursor(QTextCursor::End);
}

void XMessagePane::flush()
{
    m_flushTimer.stop();
    if (m_waiting.empty())
        return;
    QTextCursor edit(document());
    edit.beginEditBlock(); // one layout for all
    for (const Waiting& waiting : m_waiting) {
        QTextCursor cursor = endCursor();
        insertPlain(cursor, waiting.text);
    }
    edit.endEditBlock();
    m_waiting.clear();
    m_waitingCharacters = 0;
    m_waitingLines = 0;
    moveCursor(QTextCursor::End);
}

/// A long document is laid out bit by bit, and its end moves down meanwhile.
void XMessagePane::followEnd(int, int end)
{
    if (textCursor().atEnd())
        verticalScrollBar()->setValue(end);
}

QTextCursor XMessagePane::endCursor()
{
    QTextCursor cursor(document());
    if (document()->characterCount() > keptCharacters) {
        cursor.setPosition(keptCharacters / 2, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    cursor.movePosition(QTextCursor::End);
    // A script may print without ever ending a line, and each addition lays the line out anew.
    if (cursor.positionInBlock() > longestLine)
        cursor.insertBlock();
    return cursor;
}
