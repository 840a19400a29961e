#include "WindowFixture.h"

#include <QDialog>

namespace {

class EscapedExceptions : public WindowFixture {
protected:
    /// Runs the program's loop; `act` happens in it as an event's handler would.
    void runWith(std::function<void()> act)
    {
        QTimer::singleShot(0, qApp, std::move(act));
        runEventLoop(testApplication());
    }
};

TEST_F(EscapedExceptions, AreShownAndTheLoopGoesOn)
{
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++ticks == 1)
            throw xstd::XExceptionItems().add(
                xstd::XExceptionItem(X_HERE, "test").setMess("first tick"));
        if (ticks == 2)
            throw std::runtime_error("second <tick>");
        qApp->quit();
    });
    timer.start(1);
    userPrompts().error = [this](const QString& html, const QString& title) {
        EXPECT_EQ(title, "错误信息");
        errors.append(plainOf(html));
        return QString();
    };
    runEventLoop(testApplication());
    EXPECT_EQ(ticks, 3);
    ASSERT_EQ(errors.size(), 2);
    EXPECT_TRUE(errors[0].contains("first tick"));
    EXPECT_TRUE(errors[1].contains("second <tick>"));
    EXPECT_TRUE(errors[1].contains("type:main"));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(EscapedExceptions, LeaveADialogsLoopToo)
{
    runWith([] {
        QDialog dialog;
        QTimer::singleShot(0, &dialog, [] { throw std::runtime_error("inside"); });
        dialog.exec();
    });
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("inside"));
    enter(0, 0, "1+1");
    EXPECT_EQ(shown(0, 0), "2");
}

TEST_F(EscapedExceptions, ThatAreNoneOfOursLeaveTheProgram)
{
    EXPECT_THROW(runWith([] { throw 42; }), int);
}

} // namespace
