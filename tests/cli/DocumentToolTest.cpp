#include "Tool.h"
#include "cell/XCellTable.h"
#include "cell/XDocumentFile.h"

#include <map>

namespace {

const std::vector<uint8_t> viewImage = {1, 0, 0, 0, 80, 0, 0, 0, 0, 0, 0, 0};

class DocumentTool : public Tool {
protected:
    /// Writes a document of these cells; returns its path.
    std::string document(const std::map<xstd::XPoint, const char*>& texts)
    {
        huge::XCellTable table(xstd::XRect(0, 0, 16, 16), 4);
        for (const auto& [at, text] : texts) {
            huge::XCell* cell = table.forceCell(at.row, at.col);
            try {
                cell->setText_(table, text);
            } catch (const xstd::XExceptionItems&) {
                // The document holds failing cells too.
            }
            table.linkCell(cell);
        }
        const std::string path = (m_folder / "doc.tavix").string();
        huge::XDocumentFile{table.toVector(), viewImage}.save(xstd::XString(path));
        return path;
    }
};

TEST_F(DocumentTool, ShowsCalculatedValues)
{
    const std::string doc = document({{{0, 0}, "2 ** 70"},
                                      {{1, 0}, "A1 + 1"},
                                      {{1, 2}, "sum(A1:A2)"},
                                      {{3, 1}, "'a\\tb, \"c\"'"}});
    const ToolResult all = run({"show", doc});
    EXPECT_EQ(all.err, "");
    EXPECT_EQ(all.out, "1180591620717411303424\t\t\n"
                       "1180591620717411303425\t\t2361183241434822606849\n"
                       "\t\t\n"
                       "\t\"a\\tb, \\\"c\\\"\"\t\n");
    EXPECT_EQ(run({"show", doc, "A2"}).out, "1180591620717411303425\n");
    EXPECT_EQ(run({"show", doc, "B4:A3", "--csv"}).out, ",\n,\"a\tb, \"\"c\"\"\"\n");
    EXPECT_EQ(run({"show", document({})}).out, "");
    const ToolResult failing = run({"show", document({{{0, 0}, "1 / 0"}})});
    EXPECT_EQ(failing.status, 0);
    EXPECT_EQ(failing.out.rfind("\"valueError: mess: div with zero\\n", 0), 0u) << failing.out;
}

TEST_F(DocumentTool, SetsCellsAndKeepsTheView)
{
    const std::string doc = document({{{0, 0}, "1"}, {{0, 1}, "A1 * 2"}, {{5, 5}, "(1 2"}});
    const std::string before = read("doc.tavix");
    const std::string other = (m_folder / "other").string();
    const ToolResult toOther = run({"set", doc, "A1=21", "C1==B1 == 42", "B20=7", "-o", other});
    EXPECT_EQ(toOther.status, 0) << toOther.err;
    EXPECT_EQ(read("doc.tavix"), before);
    EXPECT_EQ(run({"show", other, "A1:C1"}).out, "21\t42\ttrue\n");
    EXPECT_EQ(run({"show", other, "B20"}).out, "7\n");
    EXPECT_EQ(huge::XDocumentFile::load(xstd::XString(other)).view, viewImage);
    EXPECT_EQ(run({"set", doc, "A1="}).status, 0);
    EXPECT_EQ(run({"show", doc, "A1"}).out, "\n");
    EXPECT_NE(run({"json", doc}).out.find("text: \"(1 2\""), std::string::npos);
}

TEST_F(DocumentTool, WritesNothingWhenATextFails)
{
    const std::string doc = document({{{0, 0}, "B1"}, {{0, 1}, "1"}});
    const std::string before = read("doc.tavix");
    for (const char* text : {"B1=A1", "C1=(1 2", "C1=1/0", "C1", "1C=2", "r:5=1", "A1048577=1"}) {
        const ToolResult result = run({"set", doc, "D1=5", text});
        EXPECT_EQ(result.status, 1) << text;
        EXPECT_NE(result.err, "");
        EXPECT_EQ(read("doc.tavix"), before);
    }
}

TEST_F(DocumentTool, PrintsJson)
{
    EXPECT_EQ(run({"json", document({{{1, 0}, "5"}})}).out,
              "{\n    baseSize: 4, \n    cells: [\n        [\n            {\n"
              "                col: 0, \n                row: 1, \n                state: {\n"
              "                    isDeleted: false, \n                    isInvalid: false\n"
              "                }, \n                text: \"5\", \n                value: \"5\"\n"
              "            }\n        ]\n    ], \n    mainRect: [\n        0, \n        0, \n"
              "        16, \n        16\n    ], \n    maxCol: 0, \n    maxRow: 1\n}\n");
}

TEST_F(DocumentTool, NamesWhatIsWrongWithAFile)
{
    const std::string doc = document({{{0, 0}, "5"}, {{0, 1}, "6"}});
    const std::string good = read("doc.tavix");
    for (size_t size = 0; size < good.size(); size += 7) {
        const ToolResult result = run({"show", write("cut", good.substr(0, size))});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("cut: "), std::string::npos);
        EXPECT_NE(result.err.find(" at offset "), std::string::npos) << result.err;
    }
    std::string flipped = good;
    flipped[4 + 8] = '\xff'; // the table's last row is below its first
    flipped[4 + 11] = '\xff';
    const std::string bad = write("bad", flipped);
    EXPECT_NE(run({"json", bad})
                  .err.find("the table in " + bad +
                            " is damaged: The bottom of the "
                            "table is out of range: "),
              std::string::npos);
    std::string outside = good;
    outside[4 + 28 + 4] = 99; // the row of the first record
    const ToolResult partly = run({"show", write("part", outside)});
    EXPECT_EQ(partly.status, 0);
    EXPECT_EQ(partly.out, "\t6\n");
    EXPECT_NE(partly.err.find("part: The row of a cell is out of range: 99 at offset 32"),
              std::string::npos);
    EXPECT_EQ(run({"show", "/dev/zero"}).status, 1);
}

TEST_F(DocumentTool, CanBeStopped)
{
    const std::string doc = document({{{0, 0}, "3"}});
    const std::string before = read("doc.tavix");
    const char* endless = "A1=for (var i = 0; true; i += 1) {}";
    const ToolResult result = run({"set", doc, endless, "--limit", "0.3"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("Calculation stopped"), std::string::npos);
    EXPECT_EQ(read("doc.tavix"), before);
}

TEST_F(DocumentTool, TakesOnlyItsOwnOptions)
{
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"show"},
                                               {"show", "a", "A1", "B1"},
                                               {"set", "a"},
                                               {"set", "a", "A1=1", "--csv"},
                                               {"json", "a", "--csv"},
                                               {"show", "a", "-o", "b"},
                                               {"set", "a", "A1=1", "-o"}})
        EXPECT_EQ(run(words).status, 2);
}

TEST_F(DocumentTool, TheSampleCalculatesWithoutAFailure)
{
    const ToolResult result = run({"show", TAVIX_SAMPLE});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.find("Error"), std::string::npos);
    const auto pi =
        result.out.find("3.14159265358979323846264338327950288419716939937510582097494");
    EXPECT_NE(pi, std::string::npos);
    EXPECT_EQ(result.out.find('\t', pi) - pi, 202u);
    EXPECT_NE(result.out.find("\n100\t354224848179261915075\t"), std::string::npos);
}

} // namespace
