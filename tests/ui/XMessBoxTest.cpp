#include "XMessBox.h"
#include "UserPrompts.h"
#include "XTavixApplication.h"
#include "errorHtml.h"

#include <QFrame>
#include <QScreen>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace {

XMBAction* buttonOf(XMessBox& box, int index = 0)
{
    return box.findChildren<XMBAction*>().value(index);
}

/// Runs `act` on the box that a function shows.
template <class F>
void onceShown(F act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto* box = qobject_cast<XMessBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        act(*box);
    });
}

TEST(MessageBox, ItsResultIsTheNameOfTheButtonThatClosedIt)
{
    XMessBox box("title");
    box.addButton("one", "first").addDefaultButton("two", "second");
    QTimer::singleShot(0, &box, [&] { QTest::mouseClick(buttonOf(box, 1), Qt::LeftButton); });
    EXPECT_EQ(box.run(), "second");
    box.setResult("");
    QTimer::singleShot(0, &box, &QWidget::close);
    EXPECT_EQ(box.run(), "");
}

TEST(MessageBox, ACallbackCanKeepItOpen)
{
    XMessBox box("title");
    bool allowed = false;
    QObject* asked = nullptr;
    box.addButton("one", "first", [&](QObject* button) {
        asked = button;
        return allowed;
    });
    box.show();
    QTest::mouseClick(buttonOf(box), Qt::LeftButton);
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.result(), "");
    EXPECT_EQ(asked, buttonOf(box));
    allowed = true;
    QTest::mouseClick(buttonOf(box), Qt::LeftButton);
    EXPECT_FALSE(box.isVisible());
    EXPECT_EQ(box.result(), "first");
}

TEST(MessageBox, ItsHeightFollowsTheTextWithinTheScreen)
{
    const int screenHeight = QApplication::primaryScreen()->availableSize().height();
    XMessBox small("title");
    small.setText("short");
    small.fitToText();
    EXPECT_EQ(small.size(), QSize(600, 340));
    XMessBox large("title");
    for (int i = 0; i < 400; ++i)
        large.setText(QStringList{"line", "line"});
    large.fitToText();
    EXPECT_EQ(large.height(), static_cast<int>(0.7 * screenHeight) + 40);
    EXPECT_EQ(large.browser()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

TEST(MessageBox, TheFunctionsHaveTheirTitlesAndButtons)
{
    QStringList titles;
    const auto closeByButton = [&](XMessBox& box) {
        titles.append(box.windowTitle());
        EXPECT_EQ(buttonOf(box)->text(), "关闭");
        QTest::mouseClick(buttonOf(box), Qt::LeftButton);
    };
    onceShown(closeByButton);
    EXPECT_EQ(showInfo("text", ""), "close");
    onceShown(closeByButton);
    EXPECT_EQ(showInfo("text", "own"), "close");
    onceShown(closeByButton);
    EXPECT_EQ(showError("text", ""), "");
    EXPECT_EQ(titles, (QStringList{"消息窗口", "own", "错误信息"}));
}

TEST(MessageBox, TheBodyOfAnInformationIsATitleOverAText)
{
    const QString span = "<span style=\"color:#0000FF;font-size:%1px;font-weight: "
                         "lighter;font-style:normal;text-decoration:normal;\">%2</span>";
    EXPECT_EQ(infoHtml("标题", "text"),
              "<table><tr style=\"padding:0px;line-height:125%;border-width:0px;\"></div>"
              "<td style=\"padding:0px;background-color:red;color:red;border-width:0px;"
              "width:5px;\">-</td><td style=\"padding:5px;line-height:125%;border-width:0px;\">" +
                  span.arg(16).arg("标题") +
                  "<hr style=\"height:1px;border:none;border-top:1px dotted #d0d0d0;\"/>"
                  "<div style=\"margin-left:2em;line-height:150%;background-color:transparent;\">" +
                  span.arg(14).arg("text") + "</td></tr></table>");
}

TEST(ErrorText, IsEscapedAndCutWithALink)
{
    xstd::XExceptionItems failure;
    failure.add(xstd::XExceptionItem(X_HERE, "test")
                    .setMess("a < b & c")
                    .setExtend("text", xstd::XString(std::string(200000, '7'))));
    const QString html = errorHtml(failure);
    EXPECT_LT(html.size(), 8000);
    EXPECT_TRUE(html.contains("共 200000 个字符"));
    QTextDocument document;
    document.setHtml(html);
    EXPECT_TRUE(document.toPlainText().contains("a < b & c"));
}

} // namespace
