#pragma once

#include "cell/XCell.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace huge {

/// The cells of one row of a table, by column. They stand in blocks that are made where there are
/// cells: one cell far to the right must not cost room for all that could stand to its left.
class XCellRow {
public:
    /// The cell there, or null.
    XCell* at(int32_t col) const noexcept
    {
        const size_t index = static_cast<size_t>(col);
        if (col < 0 || index / blockSize >= m_blocks.size())
            return nullptr;
        const Block& block = m_blocks[index / blockSize];
        return index % blockSize < block.size() ? block[index % blockSize].get() : nullptr;
    }
    /// Where the cell of that column, which is not negative, is kept.
    std::unique_ptr<XCell>& slot(int32_t col)
    {
        const size_t index = static_cast<size_t>(col);
        if (index / blockSize >= m_blocks.size())
            m_blocks.resize(index / blockSize + 1);
        Block& block = m_blocks[index / blockSize];
        if (index % blockSize >= block.size())
            block.resize(index % blockSize + 1);
        return block[index % blockSize];
    }
    /// One behind the last column that there ever was a cell in.
    int32_t end() const noexcept
    {
        if (m_blocks.empty())
            return 0;
        return static_cast<int32_t>((m_blocks.size() - 1) * blockSize + m_blocks.back().size());
    }
    /// Calls fn(XCell*) for every cell from `left` to `right`.
    template <class F>
    void forEach(int32_t left, int32_t right, F&& fn) const
    {
        const int32_t last = std::min(right, end() - 1);
        for (int32_t col = std::max(left, 0); col <= last; ++col) {
            const size_t index = static_cast<size_t>(col);
            if (m_blocks[index / blockSize].empty())
                col += static_cast<int32_t>(blockSize - index % blockSize - 1);
            else if (XCell* cell = at(col))
                fn(cell);
        }
    }

private:
    static constexpr size_t blockSize = 256;
    using Block = std::vector<std::unique_ptr<XCell>>;

    std::vector<Block> m_blocks;
};

} // namespace huge
