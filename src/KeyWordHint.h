#pragma once

#include "KeyWordModel.h"

#include <QDialog>

class QListView;

/// Who shows the keyword popup for the moment, and takes what is chosen in it.
class KeyWordHintInf {
public:
    virtual ~KeyWordHintInf() = default;
    /// The popup closes where `close` is set.
    virtual void insertKeyWord(const KeyWordItem* entry, bool* close) = 0;
};

/// The popup of keywords, shared by all script editors. It never takes the keyboard: the editor
/// that shows it hands its keys on.
class KeyWordHint : public QDialog {
    Q_OBJECT

public:
    explicit KeyWordHint(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    void add(const KeyWordItem& item) { m_model.add(item); }
    const KeyWordItem* find(const QString& word) const { return m_model.find(word); }
    void clearAll() { m_model.clear(); }
    /// Brings what fits the word best to the top.
    void filter(const QString& word);
    /// Makes the popup as wide as the longest entry, and as high as the list, up to 20 rows.
    void updateSize();

    /// Shows the popup at a place of the screen, where it fits.
    void showAt(KeyWordHintInf* owner, int x, int y);
    /// Closes the popup, whoever shows it.
    void hideFor(const KeyWordHintInf* owner);
    /// Forgets an owner that goes.
    void forget(const KeyWordHintInf* owner);
    void selectNext();
    void selectPrev();
    /// Takes the current entry, as a click on it does.
    void accept() override;

    QListView* list() const { return m_list; }
    const KeyWordModel& model() const { return m_model; }

public slots:
    void keyclicked(const QModelIndex& index);

private:
    void selectRow(int row);

    KeyWordModel m_model;
    QListView* m_list;
    KeyWordHintInf* m_owner = nullptr;
};
