#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

struct ToolResult {
    int status; // exit status, or -1 for an end by signal
    std::string out;
    std::string err;
};

/// The console tool as a person runs it: a process of its own with its three streams in files.
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

    std::filesystem::path m_folder;
};
