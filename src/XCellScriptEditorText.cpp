#include "XCellScriptEditor.h"

#include "XCellEditor.h"
#include "XCellTableView.h"

#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>

namespace {

struct Look {
    QColor color;
    bool isBold;
};

const Look looks[scriptStyleCount] = {
    {Qt::black, false},            // other
    {QColor(0, 0, 255), true},     // keyword
    {QColor(0, 0, 200), true},     // reference
    {Qt::red, true},               // hovered reference
    {QColor(170, 90, 255), false}, // identifier
    {QColor(128, 0, 0), false},    // member
    {QColor(100, 100, 255), false},
    {QColor(0, 128, 255), false},  // real
    {QColor(0, 128, 255), false},  // integer
    {Qt::darkRed, true},           // assignment
    {Qt::darkMagenta, false},      // imaginary
    {Qt::gray, false},             // operator
    {QColor(128, 0, 200), false},  // bracket
    {QColor(255, 80, 255), false}, // string
    {Qt::red, true},               // active bracket
    {QColor(), false},             // error
    {QColor(0, 168, 168), false},  // comment
};

/// What may stand in front of a reference.
bool takesReference(const QString& token)
{
    static const QStringList tokens{"+",  "-",  "*",  "**", "/",  "&",      "|",  "!",  "~",
                                    "^",  "%",  "=",  "!=", "&&", "||",     ">",  ">=", "<",
                                    "<=", "+=", "-=", "*=", "/=", "&=",     "|=", "^=", "%=",
                                    ":",  ",",  "(",  "[",  "{",  "return", "ret"};
    return tokens.contains(token);
}

bool isSamePlace(const huge::XCellRangeRef& a, const huge::XCellRangeRef& b)
{
    return a.textPos == b.textPos && a.textLen == b.textLen && a.start == b.start && a.end == b.end;
}

} // namespace

void XCellScriptEditor::makeFormats()
{
    for (int i = 0; i < scriptStyleCount; ++i) {
        QTextCharFormat& format = m_formats[static_cast<size_t>(i)];
        format = QTextCharFormat();
        if (looks[i].color.isValid())
            format.setForeground(looks[i].color);
        if (looks[i].isBold)
            format.setFontWeight(QFont::Bold);
    }
    QTextCharFormat& error = m_formats[static_cast<size_t>(XScriptStyle::Error)];
    error.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    error.setUnderlineColor(Qt::red);
}

void XCellScriptEditor::rescan()
{
    m_text = toPlainText();
    m_scan = XScriptScan(m_text);
    m_references = m_scan.references();
    const auto current =
        std::find_if(m_references.begin(), m_references.end(),
                     [this](const auto& range) { return isSamePlace(range, m_currentMark); });
    if (current == m_references.end())
        m_currentMark = huge::XCellRangeRef();
    else
        std::rotate(m_references.begin(), current, current + 1);
    m_hoverRange = huge::XCellRangeRef();
    m_activeBracket = XBracketPair();
    showExtraSelections(); // those of the text before would stay
    applyFormats();
}

/// Formats belong to the layout of each line and not to the document: they are no edit, and a line
/// whose tokens stay is not laid out anew.
void XCellScriptEditor::applyFormats()
{
    auto span = m_scan.spans().begin();
    const auto end = m_scan.spans().end();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const int first = block.position();
        const int last = first + block.length();
        QVector<QTextLayout::FormatRange> formats;
        while (span != end && span->begin + span->length <= first)
            ++span;
        for (auto it = span; it != end && it->begin < last; ++it) {
            QTextLayout::FormatRange range;
            range.start = std::max(0, it->begin - first);
            range.length = std::min(last, it->begin + it->length) - first - range.start;
            range.format = m_formats[static_cast<size_t>(it->style)];
            formats.append(range);
        }
        if (formats == block.layout()->formats())
            continue;
        block.layout()->setFormats(formats);
        document()->markContentsDirty(first, block.length());
    }
}

void XCellScriptEditor::onTextChanged()
{
    const QString text = toPlainText();
    if (text == m_text)
        return; // a format, or the same text set again
    rescan();
    showActiveBracket();
    showHintLine();
    if (m_editor)
        m_editor->onTextChanged(this);
}

void XCellScriptEditor::onCursorPositionChanged()
{
    if (toPlainText() != m_text)
        return; // the change of the text follows
    showActiveBracket();
    showHintLine();
}

QTextCursor XCellScriptEditor::cursorOver(int begin, int end) const
{
    QTextCursor cursor(document());
    const int last = document()->characterCount() - 1;
    cursor.setPosition(std::clamp(begin, 0, last));
    cursor.setPosition(std::clamp(end, 0, last), QTextCursor::KeepAnchor);
    return cursor;
}

void XCellScriptEditor::showExtraSelections()
{
    QList<ExtraSelection> selections;
    const auto add = [&](int begin, int end, XScriptStyle style) {
        selections.append({cursorOver(begin, end), m_formats[static_cast<size_t>(style)]});
    };
    for (const int place : {m_activeBracket.left, m_activeBracket.right}) {
        if (m_activeBracket.kind != 0 && place >= 0)
            add(place, place + 1, XScriptStyle::ActiveBracket);
    }
    if (m_hoverRange.textLen > 0)
        add(m_scan.placeOf(m_hoverRange.textPos),
            m_scan.placeOf(m_hoverRange.textPos + m_hoverRange.textLen),
            XScriptStyle::HoveredReference);
    setExtraSelections(selections);
}

void XCellScriptEditor::showActiveBracket()
{
    const int place = textCursor().position();
    const auto& brackets = m_scan.brackets();
    const auto around = std::find_if(brackets.begin(), brackets.end(), [place](const auto& pair) {
        return pair.left >= 0 && pair.left < place && (pair.right < 0 || place <= pair.right);
    });
    const XBracketPair found = around == brackets.end() ? XBracketPair() : *around;
    if (found == m_activeBracket)
        return;
    m_activeBracket = found;
    showExtraSelections();
}

QString XCellScriptEditor::callName() const
{
    const Word word = cursorWord();
    const bool isCall = word.end < m_text.size() &&
                        (m_text[word.end] == '(' || m_text[word.end] == '[') &&
                        textCursor().position() > word.begin;
    if (!isCall || !isScriptIdentifier(word.text) || readScriptReference(word.text))
        return QString();
    return (word.begin > 0 && m_text[word.begin - 1] == '.' ? "." : "") + word.text;
}

void XCellScriptEditor::showHintLine()
{
    if (!m_editor)
        return;
    const QString call = callName();
    if (!call.isEmpty()) {
        m_editor->showHintInfo(call);
        return;
    }
    const int place = textCursor().position();
    for (const XBracketPair& pair : m_scan.brackets()) {
        const bool isAround =
            pair.left >= 0 && pair.left < place && (pair.right < 0 || place <= pair.right);
        if (!isAround || pair.name.isEmpty())
            continue;
        m_editor->showHintInfo(pair.name);
        return;
    }
    m_editor->showHintInfo(QString());
}

XCellScriptEditor::Word XCellScriptEditor::wordAt(int place) const
{
    Word word;
    word.begin = word.end = std::clamp(place, 0, static_cast<int>(m_text.size()));
    while (word.begin > 0 && isScriptWordCharacter(m_text[word.begin - 1]))
        --word.begin;
    while (word.end < m_text.size() && isScriptWordCharacter(m_text[word.end]))
        ++word.end;
    word.text = m_text.mid(word.begin, word.end - word.begin);
    return word;
}

/// The next word in this direction beyond blanks, or the one character that is part of none.
QString XCellScriptEditor::neighbour(int place, int step) const
{
    const auto isInside = [this](int i) { return i >= 0 && i < m_text.size(); };
    while (isInside(place) && m_text[place].isSpace())
        place += step;
    if (!isInside(place))
        return QString();
    if (!isScriptWordCharacter(m_text[place]))
        return m_text.mid(place, 1);
    return wordAt(step > 0 ? place : place + 1).text;
}

bool XCellScriptEditor::canTakeReference() const
{
    const Word word = cursorWord();
    if (textCursor().selectedText() != word.text)
        return false;
    const QString left = neighbour(word.begin - 1, -1);
    const QString right = neighbour(word.end, 1);
    return (left.isEmpty() || takesReference(left)) &&
           (right.isEmpty() || !isScriptWordCharacter(right[0]));
}

void XCellScriptEditor::insertReference(const QString& text)
{
    const Word word = cursorWord();
    QTextCursor cursor = cursorOver(word.begin, word.end);
    cursor.insertText(text);
    setTextCursor(cursorOver(word.begin + text.size(), word.begin + text.size()));
}

void XCellScriptEditor::replaceReference(const huge::XCellRangeRef& mark, const QString& text)
{
    const int begin = m_scan.placeOf(mark.textPos);
    const int end = m_scan.placeOf(mark.textPos + mark.textLen);
    cursorOver(begin, end).insertText(text);
    setTextCursor(cursorOver(begin + text.size(), begin + text.size()));
}

void XCellScriptEditor::highlightReference(const huge::XCellRangeRef& range)
{
    if (isSamePlace(range, m_hoverRange))
        return;
    m_hoverRange = range;
    showExtraSelections();
}

huge::XCellRangeRef XCellScriptEditor::referenceAt(const QPoint& position) const
{
    const Word word = wordAt(cursorForPosition(position).position());
    huge::XCellRangeRef range;
    if (!readScriptReference(word.text, &range))
        return huge::XCellRangeRef();
    range.textPos = m_scan.byteOf(word.begin);
    range.textLen = static_cast<uint16_t>(word.text.size());
    return range;
}
