#include "Tool.h"

#include <fstream>
#include <string>

namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + 1))
        text.replace(at, from.size(), to);
    return text;
}

std::string plain(const std::string& html)
{
    return replaced(replaced(replaced(html, "&lt;", "<"), "&gt;", ">"), "&amp;", "&");
}

TEST_F(Tool, CalculatesWhatTheManualSays)
{
    const std::string arrow = " ⇒ ";
    std::ifstream manual(TAVIX_MANUAL);
    int examples = 0;
    for (std::string line; std::getline(manual, line);) {
        const size_t at = line.find(arrow);
        if (at == std::string::npos)
            continue;
        const std::string script = plain(line.substr(0, at));
        EXPECT_EQ(run({"eval", "--limit", "2", "-"}, script).out,
                  plain(line.substr(at + arrow.size())) + "\n")
            << script;
        ++examples;
    }
    EXPECT_GE(examples, 90);
}

} // namespace
