#include "cell/XCellTable.h"
#include "cell/XCellTableLoader.h"

#include <stdexcept>

namespace huge {

namespace {

constexpr int64_t usualBaseSize = 4;
constexpr uint16_t deletedBit = 0x01;
constexpr uint16_t invalidBit = 0x02;

/// The integer under a path, which has to lie between two bounds.
int32_t intIn(const xstd::XKVNode& node, const xstd::XString& path, int64_t least, int64_t most)
{
    const xstd::XKVNode* entry = node.at(path);
    if (!entry || !entry->isInt())
        throw std::runtime_error("\"" + path + "\" is no integer");
    const int64_t value = entry->asInt64();
    if (value < least || value > most)
        throw std::runtime_error("\"" + path + "\" is out of range: " + std::to_string(value));
    return static_cast<int32_t>(value);
}

xstd::XString textAt(const xstd::XKVNode& node, const char* key)
{
    const xstd::XKVNode* entry = node.at(key);
    return entry ? entry->toText() : xstd::XString();
}

bool flagAt(const xstd::XKVNode& node, const char* path)
{
    const xstd::XKVNode* entry = node.at(path);
    return entry && entry->asBool();
}

xstd::XRect rectIn(const xstd::XKVNode& node)
{
    xstd::XRect rect;
    rect.top = intIn(node, "mainRect[0]", 0, XCellPos::maxRow);
    rect.left = intIn(node, "mainRect[1]", 0, XCellPos::maxCol);
    rect.bottom = intIn(node, "mainRect[2]", rect.top, XCellPos::maxRow);
    rect.right = intIn(node, "mainRect[3]", rect.left, XCellPos::maxCol);
    return rect;
}

int32_t baseSizeIn(const xstd::XKVNode& node)
{
    const xstd::XKVNode* entry = node.at("baseSize");
    if (!entry || entry->asInt64() == 0)
        return usualBaseSize;
    return intIn(node, "baseSize", 1, XCellPos::maxRow);
}

} // namespace

xstd::XJson XCell::toJson() const
{
    xstd::XJson node;
    node["row"] = m_row;
    node["col"] = int(m_col);
    node["state"]["isDeleted"] = (m_state & deletedBit) != 0;
    node["state"]["isInvalid"] = (m_state & invalidBit) != 0;
    node["text"] = scriptText(false);
    node["value"] = plainValueText();
    if (m_extend)
        node["extend"] = m_extend->toJson();
    return node;
}

xstd::XPoint XCell::jsonPosition(const xstd::XKVNode& node)
{
    return {intIn(node, "row", 0, XCellPos::maxRow), intIn(node, "col", 0, XCellPos::maxCol)};
}

void XCell::fromJson(XCellTable& table, const xstd::XKVNode& node, XCellImageMode mode,
                     const XCellExtend* prototype)
{
    const xstd::XPoint position = jsonPosition(node);
    m_state = static_cast<uint16_t>((flagAt(node, "state.isDeleted") ? deletedBit : 0) |
                                    (flagAt(node, "state.isInvalid") ? invalidBit : 0));
    const xstd::XKVNode* format = node.at("extend");
    if (format && (mode == XCellImageMode::Formats || mode == XCellImageMode::Everything)) {
        std::unique_ptr<XCellExtend> extend = newExtend(prototype);
        extend->fromJson(*format);
        swapExtend(std::move(extend));
    }
    if (mode == XCellImageMode::Values)
        setText_(table, textAt(node, "value"), position.row, position.col);
    else if (mode != XCellImageMode::Formats)
        setText_(table, textAt(node, "text"), position.row, position.col);
}

xstd::XJson XCellTable::toJson()
{
    xstd::XJson node;
    xstd::XKVNode& sides = node["mainRect"];
    sides.setType(xstd::XKVNode::typeArray);
    for (const int32_t side :
         {m_mainRect.top, m_mainRect.left, m_mainRect.bottom, m_mainRect.right})
        sides.at(static_cast<int64_t>(sides.size())) = side;
    node["maxRow"] = m_maxRow;
    node["maxCol"] = m_maxCol;
    node["baseSize"] = m_baseSize;
    xstd::XKVNode& cells = node["cells"];
    cells.setType(xstd::XKVNode::typeArray);
    const XCellLevels levels = imageOrder();
    for (size_t level = 0; level < levels.count(); ++level) {
        xstd::XKVNode& inner = cells.at(static_cast<int64_t>(level));
        inner.setType(xstd::XKVNode::typeArray);
        for (size_t i = levels.starts[level]; i < levels.end(level); ++i)
            inner.at(static_cast<int64_t>(inner.size())) = levels.cells[i]->toJson();
    }
    return node;
}

XCellLoadNotes XCellTable::fromJson(const xstd::XKVNode& node, XCellImageMode mode)
{
    const xstd::XRect limits = rectIn(node);
    const int32_t baseSize = baseSizeIn(node);
    const int32_t lastRow = intIn(node, "maxRow", 0, XCellPos::maxRow);
    const int32_t lastCol = intIn(node, "maxCol", 0, XCellPos::maxCol);
    const xstd::XKVNode* cells = node.at("cells");
    if (!cells || !cells->isArray())
        throw std::runtime_error("\"cells\" is no array");

    const auto positionOf = [&](const xstd::XKVNode& cell) {
        const xstd::XPoint position = XCell::jsonPosition(cell);
        if (!limits.contains(position.row, position.col))
            throw std::runtime_error("A cell lies outside of the table: row " +
                                     std::to_string(position.row) + ", column " +
                                     std::to_string(position.col));
        return position;
    };
    XCellTableLoader loader(*this, limits, baseSize);
    for (const xstd::XKVNode& level : cells->elements()) {
        for (const xstd::XKVNode& record : level.elements())
            loader.load(
                [&] { return positionOf(record); },
                [&](XCell& cell) { cell.fromJson(*this, record, mode, extendPrototype()); });
    }
    return loader.finish(lastRow, lastCol);
}

} // namespace huge
