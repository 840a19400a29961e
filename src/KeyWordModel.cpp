#include "KeyWordModel.h"

#include <QStringList>

#include <algorithm>

namespace {

QString unquoted(const QString& field)
{
    const QString trimmed = field.trimmed();
    if (!trimmed.startsWith('"'))
        return trimmed;
    return trimmed.mid(1, qMax(0, trimmed.size() - 2));
}

} // namespace

std::vector<KeyWordItem> parseKeyWords(const QString& text)
{
    std::vector<KeyWordItem> items;
    for (const QString& line : text.split('\n')) {
        const QStringList fields = line.split('|');
        if (fields.size() != 4)
            continue;
        items.push_back(
            {unquoted(fields[0]), unquoted(fields[1]), unquoted(fields[2]), unquoted(fields[3])});
    }
    return items;
}

uint64_t keyWordScore(const QString& text, const QString& word)
{
    QByteArray pattern = word.toUtf8().toLower();
    QByteArray longer = text.toUtf8().toLower();
    if (pattern.isEmpty() || longer.isEmpty())
        return 0;
    if (pattern.size() > longer.size())
        pattern.swap(longer);
    // From 64 bytes on a whole match is beyond what the score can count.
    constexpr int mostCounted = 63;
    pattern.truncate(mostCounted);
    uint64_t best = 0;
    for (int offset = 0; offset + pattern.size() <= longer.size(); ++offset) {
        uint64_t total = 0;
        uint64_t run = 0;
        for (int i = 0; i < pattern.size(); ++i) {
            if (longer.at(offset + i) == pattern.at(i)) {
                run = run == 0 ? 1 : 2 * run;
            } else {
                total += run;
                run = 0;
            }
        }
        best = std::max(best, total + run);
        if (run >= uint64_t(1) << (pattern.size() - 1))
            break; // the whole pattern
    }
    return best;
}

int KeyWordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_records.size());
}

QVariant KeyWordModel::data(const QModelIndex& index, int role) const
{
    const KeyWordItem* item = itemAt(index);
    if (!item || (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    return item->display;
}

Qt::ItemFlags KeyWordModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? QAbstractListModel::flags(index) : Qt::ItemIsDropEnabled;
}

void KeyWordModel::add(const KeyWordItem& item)
{
    beginInsertRows(QModelIndex(), 0, 0); // the end of the vector is the first row
    m_records.push_back({0, item});
    endInsertRows();
}

void KeyWordModel::clear()
{
    beginResetModel();
    m_records.clear();
    endResetModel();
}

const KeyWordItem* KeyWordModel::itemAt(const QModelIndex& index) const
{
    if (index.row() < 0 || index.row() >= rowCount())
        return nullptr;
    return &m_records[m_records.size() - 1 - static_cast<size_t>(index.row())].item;
}

const KeyWordItem* KeyWordModel::find(const QString& word) const
{
    const auto found =
        std::find_if(m_records.begin(), m_records.end(), [&word](const Record& record) {
            return record.item.name.compare(word, Qt::CaseInsensitive) == 0;
        });
    return found == m_records.end() ? nullptr : &found->item;
}

void KeyWordModel::filter(const QString& word)
{
    if (m_records.empty())
        return;
    for (Record& record : m_records)
        record.score = keyWordScore(record.item.name, word);
    std::stable_sort(m_records.begin(), m_records.end(), [](const Record& a, const Record& b) {
        return a.score != b.score ? a.score < b.score : a.item.name.size() > b.item.name.size();
    });
    emit dataChanged(index(0), index(rowCount() - 1));
}
