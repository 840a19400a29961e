#include "FrmSelectColor.h"
#include "WindowFixture.h"
#include "XBackgroundColor.h"

#include <QScreen>
#include <QToolButton>

#include <functional>
#include <vector>

namespace {

struct Reported {
    QColor color;
    XToolColorButton::Position position;
};

/// A colour button alone on the screen, with what it reports.
class ColorButton : public ::testing::Test {
protected:
    ColorButton()
    {
        QObject::connect(&button, &XToolColorButton::onColorSelected,
                         [this](const QColor& color, XToolColorButton::Position position) {
                             reported.push_back({color, position});
                         });
        button.resize(button.sizeHint());
        button.show();
    }

    ~ColorButton() override { userPrompts() = UserPrompts(); }

    /// Opens the popup as a person does and lets `act` happen in it.
    void inPopup(const std::function<void(FrmSelectColor&)>& act)
    {
        QTimer::singleShot(0, [&act] {
            auto* popup = qobject_cast<FrmSelectColor*>(QApplication::activePopupWidget());
            ASSERT_NE(popup, nullptr);
            act(*popup);
            popup->close();
        });
        QTest::mouseClick(&button, Qt::LeftButton, {}, button.arrowRect().center());
    }

    static QToolButton* swatch(FrmSelectColor& popup, const QString& tip)
    {
        for (QToolButton* each : popup.findChildren<QToolButton*>()) {
            if (each->toolTip() == tip)
                return each;
        }
        return nullptr;
    }

    static void click(FrmSelectColor& popup, const QString& tip)
    {
        QToolButton* found = swatch(popup, tip);
        ASSERT_NE(found, nullptr) << tip.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
    }

    XBackgroundColor button{"./icons/none.png", nullptr};
    std::vector<Reported> reported;
};

} // namespace

TEST_F(ColorButton, ReportsItsColorFromTheIconAndAChoiceFromThePopup)
{
    EXPECT_EQ(button.color(), QColor(Qt::white));
    QTest::mouseClick(&button, Qt::LeftButton, {}, button.iconRect().center());
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].color, QColor(Qt::white));
    EXPECT_EQ(reported[0].position, 0);

    inPopup([](FrmSelectColor& popup) { click(popup, "红色: rgb(255, 0, 0, 255)"); });
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(reported[1].color, QColor(255, 0, 0));
    EXPECT_EQ(reported[1].position, 1);
    EXPECT_EQ(button.color(), QColor(255, 0, 0));

    inPopup([](FrmSelectColor&) {}); // closed without a choice
    EXPECT_EQ(reported.size(), 2u);
}

TEST_F(ColorButton, HasAnArrowBesideTheIconOrUnderIt)
{
    EXPECT_EQ(button.iconRect(), QRect(0, 0, 26, button.height()));
    EXPECT_EQ(button.arrowRect(), QRect(26, 0, button.width() - 26, button.height()));
    XBackgroundColor tall("./icons/none.png", "线条颜色", XToolColorButton::TextUnderIcon, 32,
                          nullptr);
    tall.resize(80, 58);
    EXPECT_EQ(tall.iconRect(), QRect(0, 0, 80, 34));
    EXPECT_EQ(tall.arrowRect(), QRect(0, 34, 80, 24));
}

TEST_F(ColorButton, OffersEachNamedColorInFortyEightShades)
{
    const char* const tips[] = {"灰色: rgb(0, 0, 0, 255)",        "灰色: rgb(127, 127, 127, 255)",
                                "橙色: rgb(19, 10, 5, 255)",      "橙色: rgb(228, 120, 51, 255)",
                                "蓝色: rgb(7, 7, 255, 255)",      "黄花: rgb(218, 165, 105, 255)",
                                "黄花: rgb(255, 255, 255, 255)",  "深蓝色: rgb(25, 25, 112, 255)",
                                "无颜色(透明色): rgb(0, 0, 0, 0)"};
    inPopup([&tips](FrmSelectColor& popup) {
        for (const char* tip : tips)
            EXPECT_NE(swatch(popup, tip), nullptr) << tip;
        int swatches = 0;
        for (const QToolButton* each : popup.findChildren<QToolButton*>())
            swatches += each->isCheckable() && each->toolTip().startsWith("紫色: ");
        EXPECT_EQ(swatches, 48);
        const QRect screen = popup.screen()->availableGeometry();
        EXPECT_LE(popup.width(), screen.width());
        EXPECT_LE(popup.height(), screen.height());
        EXPECT_TRUE(screen.contains(popup.geometry()));
    });
}

TEST_F(ColorButton, KeepsOneShadeCheckedAndOffersWhatWasChosenLast)
{
    inPopup([](FrmSelectColor& popup) { click(popup, "青色: rgb(0, 255, 255, 255)"); });
    inPopup([](FrmSelectColor& popup) {
        EXPECT_TRUE(swatch(popup, "青色: rgb(0, 255, 255, 255)")->isChecked());
        click(popup, "无颜色(透明色): rgb(0, 0, 0, 0)");
        EXPECT_FALSE(swatch(popup, "青色: rgb(0, 255, 255, 255)")->isChecked());
    });
    EXPECT_EQ(button.color().alpha(), 0);
    inPopup([](FrmSelectColor& popup) { click(popup, "最近使用: rgb(0, 255, 255, 255)"); });
    EXPECT_EQ(button.color(), QColor(0, 255, 255));
    EXPECT_EQ(reported.size(), 3u);
}

TEST_F(ColorButton, AsksForAnyOtherColor)
{
    userPrompts().color = [](const QColor&) { return QColor(1, 2, 3); };
    inPopup([](FrmSelectColor& popup) { click(popup, "更多颜色..."); });
    EXPECT_EQ(button.color(), QColor(1, 2, 3));
    userPrompts().color = [](const QColor&) { return QColor(); };
    inPopup([](FrmSelectColor& popup) { click(popup, "更多颜色..."); });
    EXPECT_EQ(button.color(), QColor(1, 2, 3));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].position, 1);
}

TEST_F(ColorButton, APressOnThePopupIsNotReplayedBelowIt)
{
    inPopup([](FrmSelectColor& popup) {
        EXPECT_FALSE(popup.testAttribute(Qt::WA_NoMouseReplay));
        QTest::mousePress(&popup, Qt::LeftButton, {}, QPoint(-5, -5));
        EXPECT_TRUE(popup.testAttribute(Qt::WA_NoMouseReplay));
    });
}
