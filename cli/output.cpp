#include "cli/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace {

[[noreturn]] void fail()
{
    throw std::runtime_error(std::string("can't write the output: ") + std::strerror(errno));
}

} // namespace

void writeOutput(const std::string& text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        fail();
}

void flushOutput()
{
    if (std::fflush(stdout) != 0)
        fail();
}
