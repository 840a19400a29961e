#pragma once

#include "XTracingAction.h"
#include "common/XString.h"

/// Writes a formula over the cells that were selected when the tool was made into the one cell that
/// is marked next.
class XTracingCalc : public XTracingAction {
public:
    /// Raises "You can only put the calculation results in one cell", and what the action on the
    /// cell raises.
    void fire() override;

protected:
    /// `function` is the name of the script's function.
    XTracingCalc(tavix* owner, const QCursor& cursor, const char* function);

private:
    xstd::XString m_text;
};

/// The sum of the selection.
class XTracingCalcSum final : public XTracingCalc {
public:
    XTracingCalcSum(tavix* owner, const QCursor& cursor) : XTracingCalc(owner, cursor, "sum") {}
};

/// The average of the selection.
class XTracingCalcAvg final : public XTracingCalc {
public:
    XTracingCalcAvg(tavix* owner, const QCursor& cursor) : XTracingCalc(owner, cursor, "avg") {}
};
