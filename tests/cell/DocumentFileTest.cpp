#include "cell/XDocumentFile.h"
#include "imageTesting.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using huge::XDocumentFile;

class DocumentFile : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string folder = (fs::temp_directory_path() / "tavix-document-XXXXXX").string();
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        m_folder = folder;
    }
    void TearDown() override { fs::remove_all(m_folder); }

    std::string path(const char* name) const { return (m_folder / name).string(); }
    void write(const char* name, const Bytes& bytes) const
    {
        std::ofstream(path(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<long>(bytes.size()));
    }
    Bytes read(const char* name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(file), {});
    }
    size_t fileCount() const
    {
        return static_cast<size_t>(std::distance(fs::directory_iterator(m_folder), {}));
    }

    fs::path m_folder;
};

const XDocumentFile small{{1, 2, 3}, {4, 5}};
const Bytes smallBytes = {3, 0, 0, 0, 1, 2, 3, 2, 0, 0, 0, 4, 5};

TEST_F(DocumentFile, IsTwoBlocks)
{
    small.save(path("a.tavix"));
    EXPECT_EQ(read("a.tavix"), smallBytes);
    const XDocumentFile loaded = XDocumentFile::load(path("a.tavix"));
    EXPECT_EQ(loaded.table, small.table);
    EXPECT_EQ(loaded.view, small.view);
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(DocumentFile, KeepsLinksAndPermissions)
{
    write("real", {9});
    chmod(path("real").c_str(), 0640);
    fs::create_symlink("real", path("link"));
    small.save(path("link"));
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_EQ(read("real"), smallBytes);
    struct stat state = {};
    stat(path("real").c_str(), &state);
    EXPECT_EQ(state.st_mode & 0777, 0640u);
}

TEST_F(DocumentFile, NamesTheFileAndWhatIsWrong)
{
    for (size_t size = 0; size < smallBytes.size(); ++size) {
        write("cut", Bytes(smallBytes.begin(), smallBytes.begin() + static_cast<long>(size)));
        const std::string text = failureOf([&] { XDocumentFile::load(path("cut")); });
        EXPECT_EQ(text.rfind("can't read " + path("cut") + ": The ", 0), 0u) << text;
        EXPECT_NE(text.find(" at offset "), std::string::npos);
    }
    write("long", smallBytes + Bytes{7});
    mkfifo(path("pipe").c_str(), 0600);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {path("long"),
         "can't read " + path("long") + ": The document goes on behind its end at offset 13"},
        {path("none"), "can't open " + path("none") + ": No such file or directory"},
        {path("pipe"), "can't read " + path("pipe") + ": it is no regular file"},
        {m_folder.string(), "can't read " + m_folder.string() + ": it is no regular file"},
        {"/dev/zero", "can't read /dev/zero: it is no regular file"}};
    for (const auto& [file, text] : cases)
        EXPECT_EQ(failureOf([&, &name = file] { XDocumentFile::load(name); }), text);
    EXPECT_NE(failureOf([&] { small.save(path("no/folder")); }), "");
    EXPECT_EQ(failureOf([&] { small.save(m_folder.string()); }),
              "can't write " + m_folder.string() + ": it is no regular file");
}

TEST_F(DocumentFile, AFileThatCanNotBeWrittenWholeLeavesTheOldOne)
{
    write("old", smallBytes);
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit before = limit;
    limit.rlim_cur = 1000; // the first write is cut here, the second one fails
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const XDocumentFile large{Bytes(5000, 1), {}};
    const std::string text = failureOf([&] { large.save(path("old")); });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(text, "can't write " + path("old") + ": File too large");
    EXPECT_EQ(read("old"), smallBytes);
    EXPECT_EQ(fileCount(), 1u);
}

} // namespace
