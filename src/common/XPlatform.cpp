#include "common/XPlatform.h"

#include <chrono>
#include <cstdlib>
#include <pwd.h>
#include <ratio>
#include <stdexcept>
#include <unistd.h>

namespace xstd {

namespace {

XString environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? XString(value) : XString();
}

} // namespace

XString XPlatform::programPath()
{
    XString path(256, '\0');
    while (true) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0)
            return {};
        if (static_cast<size_t>(length) < path.size()) {
            path.resize(static_cast<size_t>(length));
            return path;
        }
        path.resize(2 * path.size()); // it may have been cut
    }
}

XString XPlatform::programDir()
{
    const XString path = programPath();
    const size_t slash = path.rfind('/');
    return slash == XString::npos ? XString() : XString(path.substr(0, slash));
}

XString XPlatform::userName()
{
    const passwd* entry = getpwuid(getuid());
    return entry && entry->pw_name ? XString(entry->pw_name) : environment("USER");
}

XString XPlatform::userDataDir()
{
    for (const char* name : {"APPDATA", "XDG_DATA_HOME"}) {
        const XString folder = environment(name);
        if (!folder.empty())
            return folder;
    }
    XString home = environment("HOME");
    if (home.empty()) {
        const passwd* entry = getpwuid(getuid());
        home = entry && entry->pw_dir ? entry->pw_dir : "";
    }
    return home.appendPath_(".local/share");
}

int64_t XPlatform::clockTicks()
{
    using Ticks = std::chrono::duration<int64_t, std::ratio<1, 10000000>>;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<Ticks>(now).count();
}

std::tm XPlatform::localTime(int64_t seconds)
{
    const std::time_t time = seconds;
    std::tm fields = {};
    if (!localtime_r(&time, &fields))
        throw std::runtime_error("time is out of range");
    return fields;
}

} // namespace xstd
