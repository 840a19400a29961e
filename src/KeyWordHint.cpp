#include "KeyWordHint.h"

#include <QStringList>

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
