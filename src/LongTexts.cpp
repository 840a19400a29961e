#include "LongTexts.h"

#include "UserPrompts.h"
#include "XTextWindow.h"

namespace {

constexpr size_t keptTexts = 64;
constexpr qint64 keptCharacters = 32 * 1024 * 1024;

} // namespace

LongTexts& LongTexts::instance()
{
    static LongTexts store;
    return store;
}

QString LongTexts::keep(const QString& text)
{
    // A cell's value is shown again with every move of the cursor.
    if (!m_entries.empty() && m_entries.back().text == text)
        return m_entries.back().address;
    m_entries.push_back({QString("full:%1").arg(++m_lastId), text});
    m_characters += text.size();
    while (m_entries.size() > 1 && (m_entries.size() > keptTexts || m_characters > keptCharacters))
        dropOldest();
    return m_entries.back().address;
}

QString LongTexts::find(const QString& address) const
{
    for (const Entry& entry : m_entries) {
        if (entry.address == address)
            return entry.text;
    }
    return QString();
}

void LongTexts::dropOldest()
{
    m_characters -= m_entries.front().text.size();
    m_entries.pop_front();
}

QString cutText(const QString& text, int limit)
{
    if (text.size() <= limit)
        return text;
    // A cut never goes through a surrogate pair.
    const int length = limit - (text[limit - 1].isHighSurrogate() ? 1 : 0);
    return text.left(length) + QString("...（共 %1 个字符）").arg(text.size());
}

QString fullTextLink(const QString& text)
{
    return QString("<a href=\"%1\">显示全部</a>").arg(LongTexts::instance().keep(text));
}

void insertPlain(QTextCursor& cursor, const QString& text)
{
    cursor.insertText(cutText(text), QTextCharFormat());
    if (text.size() > LongTexts::shownLength)
        cursor.insertHtml(fullTextLink(text));
}

void showFullText(const QUrl& link)
{
    QString text = LongTexts::instance().find(link.toString());
    if (text.isNull())
        text = "该内容已不再保留";
    if (userPrompts().fullText) {
        userPrompts().fullText(text);
        return;
    }
    XTextWindow(text).exec();
}
