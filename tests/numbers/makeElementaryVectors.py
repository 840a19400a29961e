#!/usr/bin/env python3
"""Writes elementaryVectors.txt: elementary functions of exact binary numbers, by mpmath.

A line is: function, limbs, arguments, value. A number is its sign, the hexadecimal digits of its
mantissa from the top bit on, "@" and its exponent, so 8@0 is 1; the value has two limbs more than
the result shall be right to. The seed is fixed, so the file comes out the same every time.
"""

import random
from mpmath import mp, mpf

random.seed(20240229)


def text(x, bits):
    """x on so many bits, rounded to the nearest."""
    if x == 0:
        return "0@0"
    with mp.workprec(bits):
        sign, mantissa, exponent, length = (+x)._mpf_
    mantissa, exponent = int(mantissa), int(exponent)
    spare = -length % 4
    digits = "%x" % (mantissa << spare)
    return "%s%s@%d" % ("-" if sign else "", digits.rstrip("0"), exponent + length - 1)


def draw(limbs, exponent, sign):
    """A random number of so many limbs; one in three has few bits, one in six only ones."""
    bits = 64 * limbs
    mantissa = random.getrandbits(bits) | 1 << (bits - 1)
    kind = random.randrange(6)
    if kind < 2:
        mantissa = (mantissa >> (bits - 8)) << (bits - 8)
    if kind == 2:
        mantissa = (1 << bits) - 1
    value = mp.ldexp(mpf(mantissa), exponent - bits + 1)
    return -value if sign < 0 else value


def near(point, limbs):
    """point plus or minus something small that still shows on so many limbs; point is 1 or -1."""
    distance = random.randrange(2, 64 * limbs)
    return point * (1 + random.choice([-1, 1]) * mp.ldexp(1, -distance))


def anyExponent(limbs):
    n = 64 * limbs
    return random.choice([0, 0, -1, 1, 2, 3, 7, -3, -10, -n // 4 - 2, -n // 4 - 3, -n // 4,
                          -n // 2 - 2, -n // 2 - 3, -n, -3 * n, random.randrange(-n, 40)])


def real(limbs):
    if random.randrange(4) == 0:
        return draw(limbs, random.choice([30, 63, 64, 65, 32 * limbs + 2, 64 * limbs + 2, 900]),
                    random.choice([-1, 1]))
    return draw(limbs, anyExponent(limbs), random.choice([-1, 1]))


def angle(limbs):
    """Any number, or a multiple of a right angle as near as it can be told."""
    if random.randrange(3) == 0:
        with mp.workprec(64 * limbs):
            return random.randrange(-50, 51) * mp.pi / 2 + 0
    return real(limbs)


def power(limbs):
    return draw(limbs, min(anyExponent(limbs), 25), random.choice([-1, 1]))


def positive(limbs):
    if random.randrange(3) == 0:
        return near(1, limbs)
    return abs(real(limbs))


def unit(limbs):
    """Inside (-1, 1)."""
    if random.randrange(3) == 0:
        return random.choice([-1, 1]) * (1 - mp.ldexp(1, -random.randrange(1, 64 * limbs)))
    return draw(limbs, min(anyExponent(limbs), -1), random.choice([-1, 1]))


def above1(limbs):
    if random.randrange(3) == 0:
        return 1 + mp.ldexp(1, -random.randrange(1, 64 * limbs - 1))
    return draw(limbs, max(anyExponent(limbs), 0), 1)


UNARY = [
    ("exp", power, mp.exp), ("exp2", power, lambda x: mp.power(2, x)),
    ("ln", positive, mp.log), ("log2", positive, lambda x: mp.log(x) / mp.log(2)),
    ("sin", angle, mp.sin), ("cos", angle, mp.cos), ("tan", angle, mp.tan),
    ("asin", unit, mp.asin), ("acos", unit, mp.acos), ("atan", real, mp.atan),
    ("sinh", power, mp.sinh), ("cosh", power, mp.cosh), ("tanh", power, mp.tanh),
    ("asinh", real, mp.asinh), ("acosh", above1, mp.acosh), ("atanh", unit, mp.atanh)]

BINARY = [
    ("pow", lambda limbs: (positive(limbs), draw(limbs, random.choice([-9, -1, 0, 1, 4]),
                                                 random.choice([-1, 1]))), mp.power),
    ("log", lambda limbs: (positive(limbs), 2 + abs(draw(limbs, random.randrange(-5, 6), 1))),
     lambda x, b: mp.log(x) / mp.log(b))]


def line(name, limbs, arguments, function):
    bits = 64 * limbs
    arguments = [mp.mpf(0) + x for x in arguments]
    words = [text(x, bits) for x in arguments]
    with mp.workprec(bits):
        arguments = [+x for x in arguments]
    # Precision enough for tiny arguments, for large angles and for what cancels near 1.
    with mp.workprec(12 * bits + 4000):
        value = function(*arguments)
        return " ".join([name, str(limbs)] + words + [text(value, bits + 128)])


def main():
    mp.prec = 20000
    lines = []
    for limbs, count in ((1, 14), (2, 6), (4, 4), (16, 2), (65, 1)):
        for name, argument, function in UNARY:
            lines += [line(name, limbs, [argument(limbs)], function) for _ in range(count)]
        for name, arguments, function in BINARY:
            lines += [line(name, limbs, arguments(limbs), function) for _ in range(count)]
    with open("elementaryVectors.txt", "w") as out:
        out.write("# Written by makeElementaryVectors.py.\n")
        out.write("\n".join(lines) + "\n")


main()
