#pragma once

#include "numbers/HugeInteger.h"
#include "values/HugeVar.h"

#include <memory>
#include <utility>

namespace huge {

/// The modulus of a modulus scope. All residues of the scope, and copies of this value, share the
/// one object.
class HugeVarModeler final : public HugeVar {
public:
    explicit HugeVarModeler(std::shared_ptr<HugeInteger> modulus) noexcept
        : HugeVar(HugeVarClass::Modeler), m_modulus(std::move(modulus))
    {}

    const std::shared_ptr<HugeInteger>& value() const noexcept { return m_modulus; }

    int typeId() const override { return varModeler; }
    const std::type_info& typeInfo() const override { return typeid(std::shared_ptr<HugeInteger>); }
    /// The run-time name of the pointer's type.
    xstd::XString typeName() const override { return typeInfo().name(); }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_modulus == nullptr; }
    bool isZero() const override { return m_modulus == nullptr; }
    void* payload() override { return &m_modulus; }
    /// The limbs of the modulus, each least significant byte first.
    std::vector<uint8_t> data() const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    int64_t asInt64() const override { return m_modulus ? m_modulus->asInt64() : 0; }
    double asDouble() const override { return double(asInt64()); }

private:
    std::shared_ptr<HugeInteger> m_modulus;
};

} // namespace huge
