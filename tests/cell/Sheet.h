#pragma once

#include "cell/XCellActionSetText.h"
#include "cell/XCellTable.h"
#include "cell/cellName.h"
#include "common/XException.h"
#include "common/XUndoableActions.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

/// A format record that remembers one number, to see where records go.
class TestExtend final : public huge::XCellExtend {
public:
    explicit TestExtend(int number) : number(number) {}
    std::unique_ptr<huge::XCellExtend> clone() const override
    {
        return std::make_unique<TestExtend>(*this);
    }
    void assign(const huge::XCellExtend& other) override
    {
        *this = static_cast<const TestExtend&>(other);
    }
    void transpose() override { number = -number; }
    std::vector<uint8_t> toBinary() const override { return {static_cast<uint8_t>(number)}; }
    void fromBinary(const std::vector<uint8_t>& image) override
    {
        number = xstd::XByteCursor(image).getU8("test format");
    }

    int number;
};

/// A table with its undo stack, addressed by cell names as a person does.
class Sheet {
public:
    static xstd::XPoint point(const std::string& name)
    {
        int32_t col = 0;
        size_t i = 0;
        for (; name[i] >= 'A'; ++i)
            col = col * 26 + name[i] - 'A' + 1;
        return xstd::XPoint{std::atoi(name.c_str() + i) - 1, col - 1};
    }
    /// One cell, or "A1:B3".
    static xstd::XRect rect(const std::string& text)
    {
        const size_t colon = text.find(':');
        const xstd::XPoint from = point(text);
        const xstd::XPoint to = colon == std::string::npos ? from : point(text.substr(colon + 1));
        return xstd::XRect(from.row, from.col, to.row, to.col);
    }
    static xstd::XMergedRects rects(const std::string& text) { return rect(text); }

    huge::XCell* cell(const std::string& name)
    {
        const xstd::XPoint at = point(name);
        return table.cellAt(at.row, at.col);
    }
    huge::XCell* force(const std::string& name)
    {
        const xstd::XPoint at = point(name);
        return table.forceCell(at.row, at.col);
    }
    void set(const std::string& name, const char* text, bool replaceScript = false)
    {
        const xstd::XPoint at = point(name);
        actions.do_(std::make_unique<huge::XCellActionSetText>(&table, at.row, at.col, text,
                                                               replaceScript));
    }
    /// The failure that setting the text raises, empty if none.
    xstd::XExceptionItems refused(const std::string& name, const char* text)
    {
        try {
            set(name, text);
        } catch (const xstd::XExceptionItems& failure) {
            return failure;
        }
        return {};
    }
    xstd::XString value(const std::string& name)
    {
        return cell(name) ? cell(name)->valueText() : xstd::XString();
    }
    xstd::XString source(const std::string& name)
    {
        return cell(name) ? cell(name)->scriptText(true) : xstd::XString();
    }
    bool failed(const std::string& name) { return value(name).find("valueError: ") == 0; }

    /// Everything that a person or a file would see, one line per cell.
    std::string dump()
    {
        std::string text;
        table.forEachCell(table.mainRect(), [&](huge::XCell* cell) {
            text += huge::cellName(cell->row(), cell->col()) + " [" + cell->scriptText(true) +
                    "] = " + cell->valueText() + (cell->isLinked() ? " linked\n" : "\n");
        });
        return text;
    }

    /// dump(), with formats, flags and references, and without cells that hold nothing.
    std::string state()
    {
        std::string text;
        table.forEachCell(xstd::XRect(0, 0, huge::XCellPos::maxRow, huge::XCellPos::maxCol),
                          [&](huge::XCell* cell) {
                              if (cell->isUsed())
                                  text += stateOf(*cell);
                          });
        return text;
    }
    static std::string stateOf(huge::XCell& cell)
    {
        std::string text = huge::cellName(cell.row(), cell.col()) + " [" + cell.scriptText(true) +
                           "] = " + cell.valueText() + " state " + std::to_string(cell.state());
        if (cell.extend())
            text += " format " + std::to_string(static_cast<TestExtend*>(cell.extend())->number);
        if (cell.hold() == huge::XCellHold::Ring || cell.hold() == huge::XCellHold::Failed)
            text += cell.hold() == huge::XCellHold::Ring ? " held out" : " failed";
        for (size_t i = 0; cell.ranges() && i < cell.ranges()->size(); ++i)
            text += " " + (*cell.ranges())[i].ref.toText(true) + "," +
                    (*cell.ranges())[i].ref.toText(false);
        return text + (cell.isLinked() ? " linked\n" : "\n");
    }

    huge::XCellTable table{xstd::XRect(0, 0, 1024, 256), 4};
    xstd::XUndoableActions actions{50};
};
