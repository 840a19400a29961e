#include "values/HugeVarModeler.h"

#include "numbers/HugeFloat.h"
#include "numbers/byteForms.h"
#include "values/HugeVariant.h"

namespace huge {

std::vector<uint8_t> HugeVarModeler::data() const
{
    std::vector<uint8_t> bytes;
    if (m_modulus)
        appendLimbs(bytes, m_modulus->limbs(), m_modulus->size());
    return bytes;
}

HugeVariant HugeVarModeler::clone() const
{
    return HugeVariant::make<HugeVarModeler>(m_modulus);
}

HugeVariant HugeVarModeler::move()
{
    return HugeVariant::make<HugeVarModeler>(std::move(m_modulus));
}

HugeVariant HugeVarModeler::asType(int typeCode) const
{
    if (!m_modulus)
        return {};
    switch (typeCode) {
    case varBool:
        return true;
    case varInt:
        return *m_modulus;
    case varFloat:
        return HugeFloat(*m_modulus);
    default:
        return {};
    }
}

} // namespace huge
