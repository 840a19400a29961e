#include "FrmExit.h"

#include "UserPrompts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

FrmExit::FrmExit(const QString& version, QWidget* parent) : QDialog(parent)
{
    setWindowTitle("退出提示");
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->setHorizontalSpacing(14);
    layout->setVerticalSpacing(8);

    auto* icon = new QLabel(this);
    icon->setPixmap(windowIcon().pixmap(48, 48));
    auto* name = new QLabel("Tavix", this);
    name->setFont(QFont("微软雅黑", 16));
    auto* question = new QLabel("确定要退出系统吗？", this);
    question->setObjectName("lquestion");
    auto* versionLabel = new QLabel("版本号：", this);
    auto* versionText = new QLabel(version, this);
    versionText->setObjectName("lversion");
    auto* exitButton = new QPushButton("退出", this);
    exitButton->setObjectName("btnExit");
    exitButton->setDefault(true);
    auto* cancelButton = new QPushButton("取消", this);
    cancelButton->setObjectName("btnCancel");

    layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(name, 0, 1, 1, 2);
    layout->addWidget(question, 1, 1, 1, 2);
    layout->addWidget(versionLabel, 2, 1);
    layout->addWidget(versionText, 2, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(exitButton);
    buttons->addWidget(cancelButton);
    layout->addLayout(buttons, 3, 0, 1, 3);
    layout->setColumnStretch(2, 1);

    connect(exitButton, &QPushButton::clicked, this, &FrmExit::onExit);
    connect(cancelButton, &QPushButton::clicked, this, &FrmExit::onCancel);
}

void FrmExit::onExit()
{
    m_answer = "ok";
    close();
}

void FrmExit::onCancel()
{
    m_answer = "cancel";
    close();
}

QString askExit(const QString& version, QWidget* parent)
{
    if (userPrompts().exit)
        return userPrompts().exit(version);
    FrmExit dialog(version, parent);
    dialog.exec();
    return dialog.answer();
}
