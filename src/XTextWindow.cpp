#include "XTextWindow.h"

#include <QPlainTextEdit>
#include <QTextOption>
#include <QVBoxLayout>

XTextWindow::XTextWindow(const QString& text, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QString("全部内容（%1 个字符）").arg(text.size()));
    resize(800, 600);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* edit = new QPlainTextEdit(this);
    edit->setReadOnly(true);
    edit->setFont(QFont("Courier New", 10));
    // Looking for word ends in a number of 400,000 digits takes most of a minute.
    edit->setWordWrapMode(QTextOption::WrapAnywhere);
    edit->setPlainText(text);
    layout->addWidget(edit);
}
