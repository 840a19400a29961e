#include "Tool.h"

#include <csignal>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

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

TEST_F(Tool, ListsTheProgramOfAScriptBehindItsDigestAndReferences)
{
    const ToolResult result = run({"list", "-"}, "A1 + sum($B$2:C3, r:5)");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.find("hash: "), 0u);
    const std::string head =
        "\nranges:\n(1, 1):(2, 2)\nr:5\n(0, 0)\nMAXSTACK\t2\n\ncode: A1 + sum(";
    EXPECT_EQ(result.out.find(head), std::string("hash: ").size() + 40) << result.out;
    EXPECT_NE(result.out.find("EXEC         extend{ sum{0, 0} }, param:int{ 2 }\n"),
              std::string::npos)
        << result.out;
    const ToolResult failing = run({"list", "-"}, "(1 2");
    EXPECT_EQ(failing.status, 1);
    EXPECT_EQ(failing.out, "");
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
