#include "WindowFixture.h"
#include "XStopBox.h"
#include "common/XStop.h"

#include <QLabel>
#include <QPushButton>

#include <functional>

namespace {

class StopBox : public WindowFixture {
protected:
    /// Does this as soon as the box shows, while the calculation runs.
    void whenShown(std::function<void()> act)
    {
        auto* timer = new QTimer(&m_box);
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer, act] {
            if (!m_box.isVisible())
                return;
            timer->stop();
            ++m_count;
            act();
        });
        timer->start(5);
    }
    /// A text from a program, so that nothing but the calculation takes time.
    void set(int row, int col, const char* text)
    {
        try {
            view()->setCellText(row, col, text, false);
        } catch (const xstd::XExceptionItems&) {
            // The stop, which the event loop would show.
        }
    }

    XStopBox m_box;
    int m_count = 0;
};

TEST_F(StopBox, StopsEveryKindOfLongCalculation)
{
    const char* const texts[] = {
        "for (var i = 0; true; i += 1) {}",
        "((2 ** 521 - 1) * (2 ** 607 - 1)).factors",
        "sigma(1, 2 ** 62, [i] { i })",
    };
    set(0, 0, "5");
    for (const char* text : texts) {
        whenShown([this] {
            EXPECT_TRUE(XStopBox::isCalculating());
            QTest::keyClick(&m_box, Qt::Key_Escape);
        });
        set(0, 0, text);
        EXPECT_TRUE(shown(0, 0).contains("Calculation stopped")) << text;
        EXPECT_FALSE(m_box.isVisible());
        view()->undo();
        EXPECT_EQ(shown(0, 0), "5") << text;
    }
    EXPECT_EQ(m_count, 3);
}

TEST_F(StopBox, ItsButtonStopsAndTheRestOfTheTableWaits)
{
    set(0, 0, "1");
    set(0, 1, "A1+1");
    whenShown([this] {
        EXPECT_TRUE(m_box.findChild<QLabel*>()->text().contains("秒"));
        view()->viewport()->repaint(); // in the middle of the calculation
        QTest::mouseClick(m_box.findChild<QPushButton*>(), Qt::LeftButton);
    });
    set(0, 0, "for (var i = 0; true; i += 1) {}");
    EXPECT_EQ(m_count, 1);
    view()->undo();
    EXPECT_EQ(shown(0, 1), "2");
    set(0, 2, "B1*2");
    EXPECT_EQ(shown(0, 2), "4");
}

TEST_F(StopBox, AStopThatCameTooLateSpoilsNothingThatFollows)
{
    set(0, 0, "3 ** 100000");
    set(0, 1, "A1 + 1");
    const QString path = folder() + "/late.tavix";
    for (const auto& work : std::initializer_list<std::function<void()>>{
             [&] { EXPECT_TRUE(page().saveFile(path)); },
             [&] { EXPECT_TRUE(page().loadFile(path)); },
             [&] { EXPECT_NO_THROW(page().toCacheJson()); },
             [&] { EXPECT_NO_THROW(view()->copyToClipboard()); },
             [&] { EXPECT_NO_THROW(view()->recalcSelection()); }}) {
        xstd::XStop::request();
        work();
        EXPECT_FALSE(xstd::XStop::requested()); // or painting would stop
        view()->select(xstd::XRect(0, 0, 0, 1), true);
    }
    EXPECT_TRUE(shown(0, 1).startsWith("1334971414"));
}

TEST_F(StopBox, StopsADocumentThatIsOpened)
{
    whenShown([this] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    set(0, 0, "4");
    set(0, 1, "A1*2");
    set(2, 0, "for (var i = 0; true; i += 1) {}");
    const QString path = folder() + "/long.tavix";
    ASSERT_TRUE(page().saveFile(path));
    whenShown([this] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    EXPECT_TRUE(window->openDocument(path, 1));
    EXPECT_EQ(m_count, 2);
    EXPECT_NE(page().table().cellAt(2, 0), nullptr); // nothing of it is lost
    EXPECT_EQ(page().table().cellAt(0, 1)->scriptText(false), "A1*2");
}

} // namespace
