#include "XMessBox.h"

#include "LongTexts.h"
#include "UserPrompts.h"
#include "common/XException.h"
#include "qtText.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr int boxWidth = 600;
constexpr int footerHeight = 40;

QString titleOr(const QString& title, const char* standard)
{
    return title.isEmpty() ? QString(standard) : title;
}

QString blueSpan(const QString& text, int size)
{
    xstd::XTextStyle style;
    style.blue = 255;
    style.size = size;
    return toQString(xstd::styledSpan(toXString(text), style));
}

} // namespace

XMBAction::XMBAction(const QIcon& icon, const QString& text, const QString& name,
                     std::function<bool(QObject*)> func, XMessBox* box)
    : QPushButton(icon, text, box), m_func(std::move(func)), m_box(box), m_name(name)
{
    if (icon.isNull()) {
        setIconSize(QSize(24, 24));
        const QFontMetrics metrics(font());
        setFixedWidth(metrics.horizontalAdvance(text) + iconSize().width() + 30);
        setFixedHeight(qMax(metrics.height(), iconSize().height()) + 6);
    }
    connect(this, &QPushButton::clicked, this, &XMBAction::onClicked);
}

void XMBAction::onClicked(bool)
{
    if (m_func && !m_func(sender()))
        return;
    m_box->setResult(m_name);
    m_box->close();
}

XMessBox::XMessBox(const QString& title, Qt::WindowFlags flags)
    : QDialog(nullptr, flags), m_layout(new QVBoxLayout(this)), m_browser(new QTextBrowser(this)),
      m_footer(new QFrame(this)), m_buttons(new QHBoxLayout(m_footer))
{
    setWindowTitle(title);
    setFont(QFont("宋体", 10));
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(1);
    m_layout->addWidget(m_browser);
    m_layout->addWidget(m_footer);
    m_browser->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_browser->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_browser->setWordWrapMode(QTextOption::WrapAnywhere);
    m_browser->setOpenLinks(false);
    connect(m_browser, &QTextBrowser::anchorClicked, this, &showFullText);
    m_footer->setFixedHeight(footerHeight);
    m_buttons->setContentsMargins(10, 4, 10, 4);
    m_buttons->setSpacing(4);
    m_buttons->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
}

void XMessBox::setText(const QStringList& lines)
{
    for (const QString& line : lines)
        m_browser->append(line);
}

void XMessBox::setText(const QString& text)
{
    m_browser->append(text);
}

void XMessBox::insertHtml(const QString& html)
{
    m_browser->insertHtml(html);
}

XMessBox& XMessBox::addButton(const QString& text, const QString& name, Callback func)
{
    return addButton(QIcon(), text, name, std::move(func));
}

XMessBox& XMessBox::addButton(const QIcon& icon, const QString& text, const QString& name,
                              Callback func)
{
    appendButton(icon, text, name, std::move(func));
    return *this;
}

XMessBox& XMessBox::addDefaultButton(const QString& text, const QString& name, Callback func)
{
    return addDefaultButton(QIcon(), text, name, std::move(func));
}

XMessBox& XMessBox::addDefaultButton(const QIcon& icon, const QString& text, const QString& name,
                                     Callback func)
{
    appendButton(icon, text, name, std::move(func))->setFocus();
    return *this;
}

XMBAction* XMessBox::appendButton(const QIcon& icon, const QString& text, const QString& name,
                                  Callback func)
{
    auto* button = new XMBAction(icon, text, name, std::move(func), this);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
    m_buttons->addWidget(button, 2);
    return button;
}

void XMessBox::fitToText()
{
    const QSize available = screen()->availableSize();
    resize(24, 24);
    m_browser->document()->adjustSize();
    m_browser->document()->setTextWidth(boxWidth);
    const QScrollBar* bar = m_browser->verticalScrollBar();
    int height = bar->maximum() - bar->minimum() + 30;
    if (height < 100)
        height = 300;
    height = qMin(height, static_cast<int>(0.7 * available.height()));
    const int whole = height + m_footer->height();
    setGeometry((available.width() - boxWidth) / 2, (available.height() - whole) / 2, boxWidth,
                whole);
    m_browser->moveCursor(QTextCursor::Start);
}

QString XMessBox::run()
{
    exec();
    return m_result;
}

QString infoHtml(const QString& title, const QString& text)
{
    return "<table>"
           "<tr style=\"padding:0px;line-height:125%;border-width:0px;\"></div>"
           "<td style=\"padding:0px;background-color:red;color:red;border-width:0px;width:5px;\">-"
           "</td>"
           "<td style=\"padding:5px;line-height:125%;border-width:0px;\">" +
           blueSpan(title, 16) +
           "<hr style=\"height:1px;border:none;border-top:1px dotted #d0d0d0;\"/>"
           "<div style=\"margin-left:2em;line-height:150%;background-color:transparent;\">" +
           blueSpan(text, 14) + "</td></tr></table>";
}

QString showInfo(const QString& text, const QString& title)
{
    const QString shownTitle = titleOr(title, "消息窗口");
    if (userPrompts().info)
        return userPrompts().info(text, shownTitle);
    XMessBox box(shownTitle);
    box.insertHtml(infoHtml(title, text));
    box.addButton("关闭", "close");
    box.fitToText();
    return box.run();
}

QString showError(const QString& html, const QString& title)
{
    const QString shownTitle = titleOr(title, "错误信息");
    if (userPrompts().error)
        return userPrompts().error(html, shownTitle);
    XMessBox box(shownTitle);
    box.insertHtml(html);
    box.addButton("关闭", "");
    box.fitToText();
    return box.run();
}
