#pragma once

namespace huge {

/// The failures of operations whose result is a kind of number that this program cannot calculate
/// with. One place, one wording.
[[noreturn]] void failFloat();
[[noreturn]] void failComplex();
[[noreturn]] void failResidue();
/// Base58 and Base64 text.
[[noreturn]] void failBaseText();

} // namespace huge
