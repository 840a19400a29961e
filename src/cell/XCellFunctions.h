#pragma once

#include "values/HugeVariant.h"

namespace huge {

/// The functions that cells add to the built-ins. An argument that is a reference to cells counts
/// as all values of its rectangle; a number reference counts as its integer. A reference whose
/// first cell is empty is refused: the result is the error value "args[0] is null", with the
/// argument's index. Without arguments each gives the integer 0.
HugeVariant cellSum(const HugeVariant* args, int argc);
HugeVariant cellAvg(const HugeVariant* args, int argc);
HugeVariant cellCount(const HugeVariant* args, int argc);

/// The greatest and the least; empty references are not refused here.
HugeVariant cellMax(const HugeVariant* args, int argc);
HugeVariant cellMin(const HugeVariant* args, int argc);

/// (from, to, closure): the sum, or the product, of the closure's results for from to to, both
/// included. The integer 0 for any other arguments.
HugeVariant cellSigma(const HugeVariant* args, int argc);
HugeVariant cellPai(const HugeVariant* args, int argc);

/// Enters them in the table of built-ins under "sum", "avg", "count", "max", "min", "sigma" and
/// "pai", in place of what stands there, and makes "abs" and "sqrt" take references. To be called
/// once.
void enterCellFunctions();

} // namespace huge
