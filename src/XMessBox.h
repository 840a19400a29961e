#pragma once

#include <QDialog>
#include <QIcon>
#include <QPushButton>
#include <QString>
#include <QStringList>

#include <functional>

class QFrame;
class QHBoxLayout;
class QTextBrowser;
class QVBoxLayout;
class XMessBox;

/// A button of a message box. It closes the box under its name, unless its callback says no.
class XMBAction : public QPushButton {
    Q_OBJECT

public:
    XMBAction(const QIcon& icon, const QString& text, const QString& name,
              std::function<bool(QObject*)> func, XMessBox* box);

private slots:
    void onClicked(bool checked);

private:
    std::function<bool(QObject*)> m_func;
    XMessBox* m_box;
    QString m_name;
};

/// The modal box of the program: a body of HTML and a row of buttons at the right. The result is
/// the name of the button that closed it, and empty when the window's own button did.
class XMessBox : public QDialog {
    Q_OBJECT

public:
    using Callback = std::function<bool(QObject*)>;

    explicit XMessBox(const QString& title, Qt::WindowFlags flags = Qt::WindowFlags());

    /// Appends paragraphs to the body.
    void setText(const QStringList& lines);
    void setText(const QString& text);
    void insertHtml(const QString& html);

    /// Adds a button. `func` gets the button; the box stays open while it returns false. The
    /// default button has the focus.
    XMessBox& addButton(const QString& text, const QString& name, Callback func = {});
    XMessBox& addButton(const QIcon& icon, const QString& text, const QString& name,
                        Callback func = {});
    XMessBox& addDefaultButton(const QString& text, const QString& name, Callback func = {});
    XMessBox& addDefaultButton(const QIcon& icon, const QString& text, const QString& name,
                               Callback func = {});

    void setResult(const QString& name) { m_result = name; }
    const QString& result() const { return m_result; }

    /// Gives the box the height of its text, within the screen, and centres it.
    void fitToText();
    /// Shows the box until it is closed and returns the result.
    QString run();

    QTextBrowser* browser() const { return m_browser; }

private:
    XMBAction* appendButton(const QIcon& icon, const QString& text, const QString& name,
                            Callback func);

    QVBoxLayout* m_layout;
    QTextBrowser* m_browser;
    QFrame* m_footer;
    QHBoxLayout* m_buttons;
    QString m_result;
};

/// The body of an information box: a title over a text, both HTML.
QString infoHtml(const QString& title, const QString& text);
/// Shows HTML text with one button "关闭"; returns the name of the button that closed the box.
QString showInfo(const QString& text, const QString& title = QString());
/// Shows an error given as HTML, usually errorHtml() of what was caught.
QString showError(const QString& html, const QString& title = QString());
