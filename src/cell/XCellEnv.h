#pragma once

#include "script/XScriptEnvBase.h"

namespace huge {

class XCell;

/// What the names of a cell's script mean: its references, and everything that any script knows.
/// Closures keep the environment alive beyond the cell; the cell then detaches itself, and what was
/// a reference becomes an error value.
class XCellEnv final : public XScriptEnv_base {
public:
    /// The cell is not owned and calls detach() before it goes. Enters the functions of cells.
    explicit XCellEnv(XCell* cell);

    XCell* cell() const noexcept { return m_cell; }
    void detach() noexcept { m_cell = nullptr; }

    /// A reference becomes an XCellVarRange, or the error value "range is invalid" when it is
    /// deleted or the cell is gone; anything else is the base class's.
    void resolve(HugeVariant& out, const XScriptExtendData& data) override;

    /// Fills the global table with the built-ins and the functions of cells, at the first call.
    static void initFunctions();

private:
    XCell* m_cell;
};

} // namespace huge
