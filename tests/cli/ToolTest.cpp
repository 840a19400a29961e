#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

struct ToolResult {
    int status; // exit status, or -1 for an end by signal
    std::string out;
    std::string err;
};

// The console tool as a person runs it: a process of its own with its three streams in files.
class Tool : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string folder = (std::filesystem::temp_directory_path() / "tavix-cli-XXXXXX").string();
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        m_folder = folder;
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::string write(const std::string& name, const std::string& text) const
    {
        const auto path = m_folder / name;
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }

    std::string read(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(m_folder / name, std::ios::binary).rdbuf();
        return text.str();
    }

    pid_t start(const std::vector<std::string>& words, const std::string& input) const
    {
        const std::string in = write("in", input);
        const std::string out = write("out", "");
        const std::string err = write("err", "");
        std::vector<char*> argv = {const_cast<char*>(TAVIX_CLI)};
        for (const std::string& word : words)
            argv.push_back(const_cast<char*>(word.c_str()));
        argv.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            dup2(open(in.c_str(), O_RDONLY), 0);
            dup2(open(out.c_str(), O_WRONLY), 1);
            dup2(open(err.c_str(), O_WRONLY), 2);
            execv(TAVIX_CLI, argv.data());
            _exit(127);
        }
        return child;
    }

    ToolResult finish(pid_t child) const
    {
        int state = 0;
        waitpid(child, &state, 0);
        return {WIFEXITED(state) ? WEXITSTATUS(state) : -1, read("out"), read("err")};
    }

    ToolResult run(const std::vector<std::string>& words, const std::string& input = "") const
    {
        return finish(start(words, input));
    }

private:
    std::filesystem::path m_folder;
};

TEST_F(Tool, PrintsTheResultOfAScriptAndALineFeed)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"2 ** 100", "1267650600228229401496703205376\n"},
        {"", ""},
        {"// only a comment", ""},
        {"var f = [n] { n * n }; f(12)", "144\n"},
        {"'a' + 'b'", "ab\n"},
        {"print(1, 2 > 1, 'x'); printline(); printLine('y', 5); 7", "1 true x\ny 5\n7\n"},
        {"sigma(1, 100, [i] { i })", "5050\n"},
        {"1.5 * 3", "4.5\n"},
        {"(1 + 2i) * 3i", "-6 + 3i\n"},
        {"%(101) 2 ** 100", "1\n"},
        {"decbase64('AAEC')", "0x000102\n"},
        {"time(2026, 2, 3, 4, 5, 6)", "2026-2-3 4:5:6.0\n"},
        {"true", "true\n"},
        {"1 == 1", "true\n"},
        {"avg(1, 2.5, 2.5)", "2\n"},
    };
    for (const auto& [script, expected] : cases) {
        const ToolResult fromInput = run({"eval", "-"}, script);
        EXPECT_EQ(fromInput.out, expected) << script << fromInput.err;
        EXPECT_EQ(fromInput.status, 0) << script;
        EXPECT_EQ(run({"eval", write("script", script)}).out, expected) << script;
    }
}

TEST_F(Tool, PrintsAFailureToTheErrorStreamAndEndsWith1)
{
    for (const char* script : {"1 / 0", "(1 2", "\"open", "1 | true", "`"}) {
        const ToolResult result = run({"eval", "-"}, script);
        EXPECT_EQ(result.status, 1) << script;
        EXPECT_EQ(result.out, "") << script;
        EXPECT_NE(result.err, "") << script;
    }
    EXPECT_NE(run({"eval", "-"}, "1 / 0").err.find("mess: div with zero"), std::string::npos);
    const ToolResult missing = run({"eval", "/no/such/file"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("/no/such/file"), std::string::npos);
}

TEST_F(Tool, AnswersWrongUsageWithTheUsageAnd2)
{
    const std::vector<std::vector<std::string>> cases = {{},
                                                         {"eval"},
                                                         {"evaluate", "-"},
                                                         {"eval", "-", "-"},
                                                         {"--limit"},
                                                         {"eval", "--x"},
                                                         {"eval", "--limit", "soon", "-"},
                                                         {"eval", "--limit", "-1", "-"}};
    for (const auto& words : cases) {
        const ToolResult result = run(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err.rfind("usage: tavix-cli", 0), 0U) << result.err;
    }
}

// Loops of the interpreter, of a native function and of the number kernels.
const std::vector<const char*> endless = {
    "for (var i = 0; true; i += 1) {}",
    "sigma(1, 2 ** 62, [i] { i })",
    "var a = 3 ** 400000; for (;true;) { a * a / 7 }",
};

TEST_F(Tool, StopsAtItsLimit)
{
    for (const char* script : endless) {
        const ToolResult result = run({"eval", "--limit", "0.3", "-"}, script);
        EXPECT_EQ(result.status, 1) << script;
        EXPECT_NE(result.err.find("Calculation stopped"), std::string::npos) << result.err;
    }
    EXPECT_EQ(run({"eval", "--limit", "100", "-"}, "1").out, "1\n");
}

// Waits until the process handles interrupts, which on a busy machine takes its time.
void waitUntilInterruptible(pid_t child)
{
    for (int tries = 0; tries < 1000; ++tries) {
        std::ifstream status("/proc/" + std::to_string(child) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.rfind("SigCgt:", 0) != 0)
                continue;
            const auto caught = std::stoull(line.substr(7), nullptr, 16);
            if (caught >> (SIGINT - 1) & 1)
                return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

TEST_F(Tool, EndsWith130OnAnInterrupt)
{
    for (const char* script : endless) {
        const pid_t child = start({"eval", "-"}, script);
        waitUntilInterruptible(child);
        std::this_thread::sleep_for(std::chrono::milliseconds(100)); // let it get into its loop
        kill(child, SIGINT);
        EXPECT_EQ(finish(child).status, 130) << script;
    }
}

TEST_F(Tool, SurvivesWhateverTextItIsGiven)
{
    std::string random;
    unsigned state = 20261122;
    for (int i = 0; i < 4096; ++i) {
        state = state * 1664525 + 1013904223;
        random.push_back(static_cast<char>(state >> 24));
    }
    std::string sum = "0";
    while (sum.size() < 1000000)
        sum += " + 1";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {std::string(10000, '('), "nested too deep"},
        {std::string(10000, '['), ""},
        {std::string(10000, '{'), "nested too deep"},
        {random, ""},
        {"var f = [g] { g(&g) + 1 }; f(&f)", "Closure calls are nested too deep"},
        {"9 ** (9 ** 9)", "Number size must less than 20800"},
        {"1e999999999", "Number size must less than 20800"},
        {"'never closed", "Closing quote not found for string"},
    };
    for (const auto& [script, message] : cases) {
        const ToolResult result = run({"eval", "-"}, script);
        EXPECT_EQ(result.status, 1) << script.substr(0, 40);
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err.substr(0, 400);
    }
    EXPECT_EQ(run({"eval", "-"}, sum).out, std::to_string((sum.size() - 1) / 4) + "\n");
    EXPECT_EQ(run({"eval", "-"}, "5 /* never closed").out, "5\n");
}

} // namespace
