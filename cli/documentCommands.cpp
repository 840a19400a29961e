#include "cli/documentCommands.h"

#include "cell/XCellActionSetText.h"
#include "cell/XCellPos.h"
#include "cell/XCellTable.h"
#include "cell/XDocumentFile.h"
#include "cli/output.h"
#include "cli/stopSignals.h"
#include "common/XStop.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace {

/// A document in memory, calculated.
struct Document {
    explicit Document(const std::string& path) : file(huge::XDocumentFile::load(path))
    {
        huge::XCellLoadNotes notes;
        try {
            notes = table.fromVector(file.table, huge::XCellImageMode::Everything);
        } catch (const std::runtime_error& damage) {
            throw std::runtime_error("the table in " + path + " is damaged: " + damage.what());
        }
        for (const xstd::XString& text : notes.texts)
            std::fprintf(stderr, "%s: %s\n", path.c_str(), text.c_str());
        if (notes.count > notes.texts.size())
            std::fprintf(stderr, "%s: and %zu more\n", path.c_str(),
                         notes.count - notes.texts.size());
    }

    huge::XDocumentFile file;
    huge::XCellTable table{xstd::XRect(0, 0, 0, 0), 4}; // the document says how large it is
};

xstd::XPoint cellOf(const std::string& name)
{
    huge::XCellPos pos;
    if (!huge::XCellPos::parse(xstd::XString(name), pos) || !pos.isCell())
        throw std::runtime_error("\"" + name + "\" is no cell");
    return {pos.row, pos.signedCol()};
}

xstd::XRect rectOf(const std::string& range)
{
    const size_t colon = range.find(':');
    const xstd::XPoint from = cellOf(range.substr(0, colon));
    const xstd::XPoint to = colon == range.npos ? from : cellOf(range.substr(colon + 1));
    return xstd::XRect(from.row, from.col, to.row, to.col).normalize_();
}

/// From the first cell to the last that is used; null if none is.
xstd::XRect usedRect(const huge::XCellTable& table)
{
    xstd::XRect used(0, 0, -1, -1);
    table.forEachCell(table.mainRect(), [&](const huge::XCell* cell) {
        if (!cell->hasContent())
            return;
        used.bottom = std::max(used.bottom, cell->row());
        used.right = std::max(used.right, cell->col());
    });
    return used;
}

std::string csvField(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == text.npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

std::string plainField(const std::string& text)
{
    return text.find_first_of("\t\r\n") == text.npos ? text : xstd::escapeText(xstd::XString(text));
}

} // namespace

void showCommand(const std::string& path, const std::string& range, bool csv)
{
    const Document document(path);
    const huge::XCellTable& table = document.table;
    const xstd::XRect rect = range.empty() ? usedRect(table) : rectOf(range);
    for (int32_t row = rect.top; row <= rect.bottom; ++row) {
        xstd::XStop::poll();
        std::string line;
        for (int32_t col = rect.left; col <= rect.right; ++col) {
            if (col != rect.left)
                line += csv ? ',' : '\t';
            const huge::XCell* cell = table.cellAt(row, col);
            if (cell && cell->hasContent())
                line += csv ? csvField(cell->valueText()) : plainField(cell->valueText());
        }
        writeOutput(line + "\n");
    }
    flushOutput();
}

void setCommand(const std::string& path, const std::vector<std::string>& texts,
                const std::string& output)
{
    Document document(path);
    for (const std::string& text : texts) {
        const size_t equals = text.find('=');
        if (equals == text.npos)
            throw std::runtime_error("\"" + text + "\" has no text for a cell");
        const xstd::XPoint cell = cellOf(text.substr(0, equals));
        huge::XCellActionSetText(&document.table, cell.row, cell.col,
                                 xstd::XString(text.substr(equals + 1)), false)
            .do_();
        // An action lowers the flag when it ends: a signal of that moment must not be lost.
        if (wasStopped())
            xstd::XStop::request();
        xstd::XStop::poll();
    }
    document.file.table = document.table.toVector();
    document.file.save(xstd::XString(output.empty() ? path : output));
}

void jsonCommand(const std::string& path)
{
    constexpr int indent = 4;
    Document document(path);
    writeOutput(document.table.toJson().toJson(0, indent) + "\n");
    flushOutput();
}
