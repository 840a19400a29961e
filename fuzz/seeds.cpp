// Writes the seeds of the corpus into the folder that it is given: small inputs that reach every
// corner of a reader.

#include "cell/XCellRawExtend.h"
#include "cell/XCellStyle.h"
#include "cell/XCellTable.h"
#include "cell/XDocumentFile.h"
#include "common/XByteCursor.h"
#include "script/XScript.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace huge;

namespace {

class Corpus {
public:
    explicit Corpus(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    template <class Bytes>
    void add(const std::string& target, const std::string& name, const Bytes& bytes) const
    {
        std::filesystem::create_directories(m_folder / target);
        std::ofstream file(m_folder / target / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    }

private:
    std::filesystem::path m_folder;
};

const std::vector<xstd::XString> scripts = {
    "1 + 2 * -3 ** (2) / 0x1F % 0b11",
    "1.5e3 + 0x1.8 - 2i * 1.25..3",
    "%(2 ** 61 - 1){ 3 ** 1000; 5 / 7 }",
    "var f = [n, g] { iif (n < 2, n, g(n - 1, &g) + g(n - 2, &g)) }; f(12, &f)",
    "var s = \"\"; for (var i = 0; i < 9; i += 1) { if (i == 5) { continue; } s += i; } s.reverse",
    "sqrt(-4) + exp(1.0) * sin(2.5) + ln(-1) + pow(2, 0.5)",
    "(360).factors + hash256(\"abc\").hex + base58check(\"x\") + decbase64str(\"Zm9v\")",
    "mod(3, 7).inv + (7).order(3) + gcd(12, 18) + time(2026, 11, 23).year",
    "/* a */ 'text' \"\\x41\\n\" // the end",
    "a.b(1)(2) && c || !d <= 5 |& ^ ~",
};

void addScripts(const Corpus& corpus)
{
    for (size_t i = 0; i < scripts.size(); ++i) {
        const std::string name = "seed" + std::to_string(i);
        corpus.add("script", name, scripts[i]);
        try {
            XScript script(scripts[i]);
            script.compile();
            corpus.add("program", name, script.prog());
        } catch (const std::exception&) {
            // One of them is wrong on purpose.
        }
    }
}

std::vector<uint8_t> formatImage()
{
    xstd::XByteWriter image;
    XCellStyle style;
    style.fontName = "宋体";
    style.bold = true;
    XCellRawExtend rule;
    rule.rule().mantissa = 2;
    image.putBytes(rule.ruleToBinary());
    style.toBinary(image);
    return image.bytes();
}

void addTables(const Corpus& corpus)
{
    XCellTable table(xstd::XRect(0, 0, 15, 15), 4);
    const char* const texts[] = {"5",     "=A1 + 1",          "sum(A1:B2)",    "1 +",
                                 "1 / 0", "$A$1 * r:3 + c:B", "[x] { x + A1 }"};
    int32_t row = 0;
    for (const char* text : texts) {
        XCell* cell = table.forceCell(row, row % 3);
        try {
            cell->setText_(table, text);
        } catch (const std::exception&) {
            // A failing cell is stored too.
        }
        table.linkCell(cell);
        ++row;
    }
    auto format = std::make_unique<XCellRawExtend>();
    format->fromBinary(formatImage());
    table.forceCell(1, 1)->swapExtend(std::move(format));
    corpus.add("table", "seed0", table.toVector());
    corpus.add("table", "seed1", XCellTable(xstd::XRect(0, 0, 15, 15), 4).toVector());
    corpus.add("rects", "seed0", table.saveRectsToVector(xstd::XRect(0, 0, 6, 2)));
    corpus.add("rects", "seed1", table.saveRectsToVector(xstd::XRect(9, 9, 9, 9)));
    const XDocumentFile document{table.toVector(), {1, 2, 3}};
    corpus.add("document", "seed0", document.toVector());
    corpus.add("json", "table", table.toJson().toJson(0, 1));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: tavix_fuzz_seeds FOLDER\n", stderr);
        return 2;
    }
    const Corpus corpus(argv[1]);
    addScripts(corpus);
    addTables(corpus);
    corpus.add("format", "seed0", formatImage());
    corpus.add("json", "values",
               std::string("{a: [1, -2.5, 0x1F, true, null, \"t\\n\"], 'b c': {d: {}}, e: []}"));
    corpus.add("ini", "seed0",
               std::string("; note\nname = a b ; rest\n[one]\n\"two words\" = 2\n? 3\n[two]\n"));
    return 0;
}
