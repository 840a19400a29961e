#include "values/unavailable.h"

#include <stdexcept>

namespace huge {

void failFloat()
{
    throw std::runtime_error("floats are not available");
}

void failComplex()
{
    throw std::runtime_error("complex numbers are not available");
}

void failResidue()
{
    throw std::runtime_error("residues are not available");
}

void failBaseText()
{
    throw std::runtime_error("Base58 and Base64 are not available");
}

} // namespace huge
