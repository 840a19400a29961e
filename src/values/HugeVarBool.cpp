#include "values/HugeVarBool.h"

#include "values/HugeVariant.h"
#include "values/unavailable.h"

namespace huge {

HugeVariant HugeVarBool::clone() const
{
    return HugeVariant::make<HugeVarBool>(*this);
}

HugeVariant HugeVarBool::move()
{
    return clone();
}

HugeVariant HugeVarBool::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return clone();
    case varInt:
        return HugeVariant(asInt64());
    case varFloat:
        failFloat();
    case varImag:
        failComplex();
    case varMod:
        failResidue();
    case varString:
        return HugeVariant(toString());
    default:
        return {};
    }
}

} // namespace huge
