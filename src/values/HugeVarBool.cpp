#include "values/HugeVarBool.h"

#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "values/HugeVariant.h"

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
        return HugeFloat(asInt64());
    case varImag:
        return HugeImag(HugeFloat(asInt64()), HugeFloat(0));
    case varMod:
        return HugeMod(HugeInteger(asInt64()), nullptr);
    case varString:
        return HugeVariant(toString());
    default:
        return {};
    }
}

} // namespace huge
