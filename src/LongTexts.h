#pragma once

#include <QString>
#include <QTextCursor>
#include <QUrl>

#include <deque>

/// A result may have hundreds of thousands of digits, and laying those out stops the window for
/// seconds. Panes and boxes therefore show the head of a long text, its length and a link; this
/// store keeps the whole text behind the link. It holds the newest texts within a bound, so that
/// a script which prints in a loop does not fill the memory.
class LongTexts {
public:
    /// Texts up to this many characters are shown whole.
    static constexpr int shownLength = 4096;

    static LongTexts& instance();

    /// Keeps `text` and returns the address of its link.
    QString keep(const QString& text);
    /// The text behind an address; a null string when it was none of ours or has been dropped.
    QString find(const QString& address) const;

private:
    struct Entry {
        QString address;
        QString text;
    };
    void dropOldest();

    std::deque<Entry> m_entries;
    qint64 m_characters = 0;
    qint64 m_lastId = 0;
};

/// The head of a text that is longer than `limit`, with its length; a shorter one as it is.
QString cutText(const QString& text, int limit = LongTexts::shownLength);
/// HTML of a link to the whole text, which is kept for it.
QString fullTextLink(const QString& text);
/// Inserts `text` as plain text at the cursor: whole, or cut and with the link behind it.
void insertPlain(QTextCursor& cursor, const QString& text);
/// Shows the text behind a link in a window of its own.
void showFullText(const QUrl& link);
