#pragma once

#include <QAbstractListModel>
#include <QString>

#include <cstdint>
#include <vector>

/// One keyword of the script language, as the keyword list describes it.
struct KeyWordItem {
    QString name;       ///< the word that a user's text is matched against
    QString display;    ///< shown in lists
    QString insertText; ///< put into the script; an "@" marks where the cursor will stand
    QString hintInfo;   ///< one line about the word; `display` serves where it is empty
};

/// Reads a keyword list: one keyword a line, four fields separated by "|". A field loses its
/// surrounding white space, and one that begins with a double quote its first and last character.
/// Lines with more or fewer fields are passed over.
std::vector<KeyWordItem> parseKeyWords(const QString& text);

/// How well a keyword fits what was typed; more is better. Each run of n equal bytes counts
/// 2^(n - 1), at the place where the shorter text fits the longer one best. Letters of ASCII count
/// alike in both cases.
uint64_t keyWordScore(const QString& text, const QString& word);

/// The keywords in the order of their scores, the best first. Filtering takes none away.
class KeyWordModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    void add(const KeyWordItem& item);
    void clear();
    /// Null for a row that there is not.
    const KeyWordItem* itemAt(const QModelIndex& index) const;
    /// The first keyword of that name, in either case; null when there is none.
    const KeyWordItem* find(const QString& word) const;
    /// Sorts by the fit to the word; of equal ones the shorter name is first.
    void filter(const QString& word);

private:
    struct Record {
        uint64_t score;
        KeyWordItem item;
    };

    std::vector<Record> m_records; // the best at the end
};
