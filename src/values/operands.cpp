#include "values/operands.h"

#include "numbers/HugeFloat.h"
#include "numbers/HugeInteger.h"

#include <algorithm>
#include <limits>

namespace huge {

int64_t shiftCount(const HugeVariant& value)
{
    constexpr int64_t greatest = std::numeric_limits<int64_t>::max();
    const HugeVariant& end = value.final();
    const bool isFloat = end.holds(HugeVarClass::Float);
    const bool tooLong = isFloat ? end.asFloat().exponent() >= 63
                                 : end.holds(HugeVarClass::Int) && !end.asInt().fitsInt64();
    if (tooLong)
        return end.isNegative() ? -greatest : greatest;
    return std::max(end.asInt64(), -greatest);
}

} // namespace huge
