#include "cli/stopSignals.h"

#include "common/XStop.h"

#include <cmath>
#include <csignal>
#include <sys/time.h>

namespace {

volatile std::sig_atomic_t interrupted = 0;
volatile std::sig_atomic_t stopped = 0;

void onSignal(int number)
{
    if (number == SIGINT)
        interrupted = 1;
    stopped = 1;
    xstd::XStop::request();
}

} // namespace

void installStopSignals(double limitSeconds)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    // No SA_RESTART: a read of standard input has to end on Ctrl+C as well.
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGALRM, &action, nullptr);
    if (limitSeconds <= 0)
        return;
    itimerval timer = {};
    timer.it_value.tv_sec = static_cast<time_t>(limitSeconds);
    timer.it_value.tv_usec =
        static_cast<suseconds_t>((limitSeconds - std::floor(limitSeconds)) * 1e6);
    if (timer.it_value.tv_sec == 0 && timer.it_value.tv_usec == 0)
        timer.it_value.tv_usec = 1; // all zero would switch the timer off
    setitimer(ITIMER_REAL, &timer, nullptr);
}

bool wasInterrupted()
{
    return interrupted != 0;
}

bool wasStopped()
{
    return stopped != 0;
}
