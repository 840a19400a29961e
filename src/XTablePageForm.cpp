#include "XTablePage.h"

#include "LongTexts.h"
#include "XCellScriptEditor.h"
#include "XCellTableView.h"
#include "XCommonToolButton.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

const char* const whiteFrame = "QFrame{background:white;}";

template <class Layout>
Layout* tightLayout(QWidget* widget, const char* name)
{
    auto* layout = new Layout(widget);
    layout->setObjectName(name);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

QFrame* namedFrame(QWidget* parent, const char* name)
{
    auto* frame = new QFrame(parent);
    frame->setObjectName(name);
    return frame;
}

void setStretch(QWidget* widget, int horizontal)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setHorizontalStretch(horizontal);
    widget->setSizePolicy(policy);
}

} // namespace

void XTablePage::buildForm()
{
    m_tab = new QWidget;
    m_tab->setObjectName("tab");
    m_tab->setFont(QFont("微软雅黑 Light"));
    auto* layout = tightLayout<QGridLayout>(m_tab, "gridLayout_2");
    m_splitter = new QSplitter(Qt::Vertical, m_tab);
    m_splitter->setObjectName("splitter");
    layout->addWidget(m_splitter);

    QFrame* script = namedFrame(m_splitter, "frameScript");
    script->setMinimumHeight(60);
    buildScriptPane(script);
    m_view = new XCellTableView(m_splitter);
    m_view->setObjectName("tableView");
    m_view->setFont(QFont("Courier New", 10));
    m_view->setFrameShape(QFrame::NoFrame);
    m_splitter->setSizes({1000, 9000});
}

void XTablePage::buildScriptPane(QFrame* frame)
{
    auto* grid = tightLayout<QGridLayout>(frame, "gridLayout_8");
    auto* row = new QHBoxLayout;
    row->setObjectName("horizontalLayout");
    row->setSpacing(0);
    grid->addLayout(row, 0, 0);
    row->addWidget(buildCellName(frame));

    QFrame* right = namedFrame(frame, "frameScriptRight");
    right->setStyleSheet(whiteFrame);
    row->addWidget(right, 1);
    auto* column = tightLayout<QVBoxLayout>(right, "verticalLayout_2");
    column->addWidget(buildToolRow(right));

    auto* panes = new QSplitter(Qt::Horizontal, right);
    panes->setObjectName("splitter_3");
    panes->setHandleWidth(3);
    column->addWidget(panes, 1);
    m_scriptEdit = new XCellScriptEditor(panes);
    m_scriptEdit->setObjectName("teCellScript");
    m_scriptEdit->setFont(QFont("Courier New", 11));
    setStretch(m_scriptEdit, 70);
    m_valueView = new QTextBrowser(panes);
    m_valueView->setObjectName("tbCellValue");
    m_valueView->setFont(QFont("Courier New", 11));
    m_valueView->setStyleSheet("\n\t\tQTextEdit{border:1px solid rgb(230,230,230);}\n"
                               "\t\tQTextEdit:!focus{background-color:rgb(250,250,250);}\n"
                               "\t\tQTextEdit:focus{background-color:rgb(255,255,255);}\n\t");
    m_valueView->setWordWrapMode(QTextOption::WrapAnywhere);
    m_valueView->setOpenLinks(false);
    connect(m_valueView, &QTextBrowser::anchorClicked, this, &showFullText);
    setStretch(m_valueView, 30);
}

QFrame* XTablePage::buildCellName(QWidget* parent)
{
    QFrame* frame = namedFrame(parent, "frameCellName");
    frame->setStyleSheet(whiteFrame);
    frame->setFrameShape(QFrame::NoFrame);
    auto* layout = tightLayout<QGridLayout>(frame, "gridLayout_5");
    layout->setContentsMargins(10, 0, 10, 0);
    auto* label = new QLabel("单元:", frame);
    label->setObjectName("label");
    label->setFont(QFont("微软雅黑 Light", 10));
    m_rangeLabel = new QLabel(frame);
    m_rangeLabel->setObjectName("lrangeName");
    m_rangeLabel->setFont(QFont("微软雅黑", 10));
    m_rangeLabel->setMinimumWidth(40);
    m_rangeLabel->setMaximumWidth(60);
    layout->addWidget(label, 0, 0);
    layout->addWidget(m_rangeLabel, 0, 1);
    return frame;
}

QFrame* XTablePage::buildToolRow(QWidget* parent)
{
    QFrame* frame = namedFrame(parent, "frame_2");
    frame->setFixedHeight(28);
    auto* layout = tightLayout<QHBoxLayout>(frame, "horizontalLayout_2");
    m_scriptTools = namedFrame(frame, "frameScriptTools");
    m_scriptTools->setFixedHeight(28);
    m_hintLabel = new QLabel(frame);
    m_hintLabel->setObjectName("lhintInfo");
    m_hintLabel->setFixedHeight(28);
    m_hintLabel->setFont(QFont("Courier New", 9));
    m_hintLabel->setTextFormat(Qt::PlainText);
    layout->addWidget(m_scriptTools);
    layout->addWidget(m_hintLabel, 1);
    return frame;
}

void XTablePage::buildScriptTools()
{
    auto* layout = new QHBoxLayout(m_scriptTools);
    layout->setObjectName("frameScriptToolsLayout");
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    m_scriptTools->setStyleSheet(whiteFrame);
    const auto addTool = [&](const char* tip, const char* text, const char* icon,
                             void (XCellEditor::*command)()) {
        auto* button = new XCommonToolButton(
            [this, command](QObject*) { (m_editor.*command)(); },
            QIcon(QString("./icons/%1.png").arg(icon)), text, tip, Qt::ToolButtonTextBesideIcon,
            m_scriptTools);
        button->setIconSize(QSize(24, 24));
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        // A click must not take the focus from the pane: that alone would confirm or cancel.
        button->setFocusPolicy(Qt::NoFocus);
        layout->addWidget(button);
    };
    addTool("取消(Esc)", "(Esc)", "cancel", &XCellEditor::cancel);
    addTool("确认(Ctrl+S)", "(Ctrl+S)", "ok", &XCellEditor::confirm);
}
