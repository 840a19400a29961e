#pragma once

#include <QDialog>
#include <QString>

/// The question before the program ends.
class FrmExit : public QDialog {
    Q_OBJECT

public:
    explicit FrmExit(const QString& version, QWidget* parent = nullptr);

    /// "ok" or "cancel", by the button that closed the dialog; empty when neither did.
    const QString& answer() const { return m_answer; }

private slots:
    void onExit();
    void onCancel();

private:
    QString m_answer;
};

/// Asks whether the program shall end; returns the dialog's answer.
QString askExit(const QString& version, QWidget* parent);
