#include "common/XStop.h"

#include "common/XException.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

using namespace xstd;

namespace {

class Stop : public ::testing::Test {
protected:
    void TearDown() override
    {
        XStop::setHandler({});
        XStop::clear();
    }

    /// Polls until a poll throws, at most for some seconds; whether one threw.
    static bool pollUntilStopped()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        try {
            while (std::chrono::steady_clock::now() < end)
                XStop::poll();
        } catch (const XExceptionItems& failure) {
            return XStop::isStop(failure);
        }
        return false;
    }
};

} // namespace

TEST_F(Stop, ThrowsWhileTheFlagIsUp)
{
    EXPECT_NO_THROW(XStop::poll());
    XStop::request();
    for (int i = 0; i < 2; ++i) {
        try {
            XStop::poll();
            FAIL() << "the flag is up";
        } catch (const XExceptionItems& failure) {
            EXPECT_STREQ(failure.what(), "mess: Calculation stopped\ntype: stop");
            EXPECT_TRUE(XStop::isStop(failure));
        }
    }
    XStop::clear();
    EXPECT_NO_THROW(XStop::poll());
    EXPECT_FALSE(XStop::isStop(XExceptionItems().add(XExceptionItem(X_HERE, "cell"))));
}

TEST_F(Stop, CanBeAskedForByASignal)
{
    const auto previous = std::signal(SIGINT, [](int) { XStop::request(); });
    std::raise(SIGINT);
    std::signal(SIGINT, previous);
    EXPECT_TRUE(pollUntilStopped());
}

TEST_F(Stop, CallsTheHandlerFromTimeToTimeAndNotFromWithinItself)
{
    using Clock = std::chrono::steady_clock;
    std::vector<Clock::time_point> calls;
    bool inside = false;
    XStop::setHandler([&] {
        EXPECT_FALSE(inside);
        inside = true;
        for (const auto end = Clock::now() + std::chrono::milliseconds(30); Clock::now() < end;)
            XStop::poll();
        inside = false;
        calls.push_back(Clock::now());
        if (calls.size() == 3)
            XStop::request();
    });
    EXPECT_TRUE(pollUntilStopped());
    EXPECT_EQ(calls.size(), 3U);
}

TEST_F(Stop, ComesToRestAfterAHandlerThatThrows)
{
    int calls = 0;
    XStop::setHandler([&] {
        ++calls;
        throw std::runtime_error("handler");
    });
    for (int i = 0; i < 2; ++i)
        EXPECT_THROW(pollUntilStopped(), std::runtime_error);
    EXPECT_EQ(calls, 2);
    XStop::setHandler([&] { // it may take itself away
        XStop::setHandler({});
        XStop::request();
    });
    EXPECT_TRUE(pollUntilStopped());
}
