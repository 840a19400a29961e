#include "cli/scriptCommands.h"

#include "cell/XCellEnv.h"
#include "cell/XCellScript.h"
#include "cli/output.h"
#include "script/XScript.h"
#include "script/XScriptEnvBase.h"
#include "values/HugeVariant.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

struct CloseFile {
    void operator()(FILE* file) const noexcept { std::fclose(file); }
};

std::string readAll(FILE* file, const std::string& path)
{
    std::string text;
    char buffer[65536];
    errno = 0;
    while (const size_t count = std::fread(buffer, 1, sizeof buffer, file))
        text.append(buffer, count);
    if (std::ferror(file))
        throw std::runtime_error("can't read " + path + ": " + std::strerror(errno));
    return text;
}

std::string readScript(const std::string& path)
{
    if (path == "-")
        return readAll(stdin, "standard input");
    const std::unique_ptr<FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        throw std::runtime_error("can't open " + path + ": " + std::strerror(errno));
    return readAll(file.get(), path);
}

huge::HugeVariant print(huge::HugeVariant* args, int argc)
{
    for (int i = 0; i < argc; ++i) {
        if (i > 0)
            writeOutput(" ");
        writeOutput(args[i].toString());
    }
    return {};
}

huge::HugeVariant printLine(huge::HugeVariant* args, int argc)
{
    print(args, argc);
    writeOutput("\n");
    return {};
}

// The built-in "print" tells truth values only; here a person reads the output.
std::shared_ptr<huge::XScriptEnv_base> makeEnvironment()
{
    auto env = std::make_shared<huge::XScriptEnv_base>();
    huge::XCellEnv::initFunctions();
    env->setVar("print", huge::HugeFunction(print));
    env->setVar("printline", huge::HugeFunction(printLine));
    env->setVar("printLine", huge::HugeFunction(printLine));
    return env;
}

} // namespace

void evalCommand(const std::string& path)
{
    huge::XScript script{xstd::XString(readScript(path))};
    script.compile();
    const huge::HugeVariant result = script.run(makeEnvironment());
    if (!result.isNull())
        writeOutput(result.toString() + "\n");
    flushOutput();
}

void listCommand(const std::string& path)
{
    huge::XCellScript::list(xstd::XString(readScript(path)), 0, 0,
                            [](const xstd::XString& line) { writeOutput(line + "\n"); });
    flushOutput();
}
