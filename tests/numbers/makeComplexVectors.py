#!/usr/bin/env python3
"""Writes complexVectors.txt: functions of complex numbers, calculated by mpmath.

The values are those of the defining formulas, worked on so many bits that their cancellations
don't matter; the root and the logarithm of a negative real number lie above the real axis. A line
holds the function, the limbs of the argument, its parts, for powers the parts of the exponent, and
the parts of the value. A number is written as an integer in hexadecimal and a power of two,
"-0x3:-1" for -1.5.
"""

import random

from mpmath import mp, mpc, mpf


def ln(z):
    return mp.log(z) if z.imag != 0 or z.real > 0 else mpc(mp.log(-z.real), mp.pi)


def root(z):
    return mpc(mp.sqrt(z)) if z.imag != 0 or z.real >= 0 else mpc(0, mp.sqrt(-z.real))


def across(z):
    return mp.exp(mpc(-z.imag, z.real))


I = mpc(0, 1)
FORMULAS = {
    "sqrt": root,
    "ln": ln,
    "exp": mp.exp,
    "sin": lambda z: (across(z) - 1 / across(z)) / (2 * I),
    "cos": lambda z: (across(z) + 1 / across(z)) / 2,
    "tan": lambda z: (across(z) - 1 / across(z)) / ((across(z) + 1 / across(z)) * I),
    "sinh": lambda z: (mp.exp(z) - mp.exp(-z)) / 2,
    "cosh": lambda z: (mp.exp(z) + mp.exp(-z)) / 2,
    "tanh": lambda z: (mp.exp(z) - mp.exp(-z)) / (mp.exp(z) + mp.exp(-z)),
    "asin": lambda z: ln(z * I + root(1 - z * z)) * -I,
    "acos": lambda z: ln(z + root(1 - z * z) * I) * -I,
    "atan": lambda z: ln((I - z) / (I + z)) / (2 * I),
    "asinh": lambda z: ln(z + root(z * z + 1)),
    "acosh": lambda z: ln(z + root(z * z - 1)),
    "atanh": lambda z: ln((1 + z) / (1 - z)) / 2,
}


def power(z, w):
    return mp.exp(ln(z) * w)


def text(x):
    sign, mantissa, exponent, _ = mpf(x)._mpf_
    return f"{'-' if sign else ''}{hex(mantissa)}:{exponent}"


def random_part(draw, limbs, size):
    """A number of that many limbs with an exponent near size."""
    value = mpf(draw.getrandbits(64 * limbs) | 1 << (64 * limbs - 1))
    return mp.ldexp(value, size - 64 * limbs) * draw.choice((1, -1))


def random_argument(draw, limbs, k):
    near = 2 + 8 * limbs
    sizes = [(1, 1), (0, 0), (-near, -near), (3, 4), (4, -30), (1, -near), (-near, 1)]
    if k < len(sizes):
        return mpc(*(random_part(draw, limbs, size) for size in sizes[k]))
    one = draw.choice((mpc(1, 0), mpc(-1, 0), mpc(0, 1), mpc(0, -1)))
    tiny = mpc(random_part(draw, limbs, -40), random_part(draw, limbs, -41))
    return one + mpc(cut(tiny.real, 60), cut(tiny.imag, 60))


def cut(x, bits):
    return mp.ldexp(mp.floor(mp.ldexp(x, bits)), -bits)


def on_the_axes():
    """Where a cut begins or ends a formula's range."""
    return [mpc(x, 0) for x in (2, -2, 0.5, -0.5)] + [mpc(0, y) for y in (2, -2, 0.5, -0.5)]


def rounded(value, limbs):
    """The parts to one limb more than asked for; noise where a part is 0 becomes 0."""
    size = abs(value)
    parts = []
    for part in (value.real, value.imag):
        if abs(part) < mp.ldexp(size, 200 - mp.prec):
            part = mpf(0)
        parts.append(part)
    with mp.workprec(64 * limbs + 64):
        return [text(+part) for part in parts]


def main():
    draw = random.Random(20240229)
    mp.prec = 3000
    lines = []
    for name, function in FORMULAS.items():
        arguments = [(1, z) for z in on_the_axes()]
        arguments += [(limbs, random_argument(draw, limbs, k)) for limbs in (1, 2) for k in range(8)]
        for limbs, z in arguments:
            parts = [text(z.real), text(z.imag)]
            lines.append(" ".join([name, str(limbs), *parts, *rounded(function(z), limbs)]))
    exponents = [mpc(5), mpc(-7), mpc(1000), mpc(2.5), mpc(-0.5), mpc(0.75), mpc(0, 3), mpc(2, -1)]
    for w in exponents:
        for limbs, size in ((1, 1), (2, 2)):
            z = mpc(random_part(draw, limbs, size), random_part(draw, limbs, size))
            parts = [text(x) for x in (z.real, z.imag, w.real, w.imag)]
            lines.append(" ".join(["pow", str(limbs), *parts, *rounded(power(z, w), limbs)]))
    with open("complexVectors.txt", "w", encoding="ascii") as out:
        out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
