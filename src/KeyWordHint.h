#pragma once

#include <QString>

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

/// The keywords that the program knows, shared by all script editors.
class KeyWordHint {
public:
    void add(const KeyWordItem& item) { m_items.push_back(item); }
    const std::vector<KeyWordItem>& items() const { return m_items; }

private:
    std::vector<KeyWordItem> m_items;
};
