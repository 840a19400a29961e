#!/usr/bin/env python3
"""Writes floatVectors.txt: float results by Python's exact integers.

An operand is its sign, limb count, exponent and mantissa in hexadecimal, and so is a result; a zero
has the mantissa 0. A result whose exponent leaves 32 bits is the word "range". Run it in its folder
to renew the file.
"""
import math
import random

random.seed(20240817)
MASK = (1 << 64) - 1
LOWEST, HIGHEST = -(1 << 31), (1 << 31) - 1
SIZES = [1, 1, 1, 2, 2, 3, 4, 5, 8, 9, 17]


def normal(sign, n, mantissa, exponent):
    """The number with this mantissa of n limbs, whose top bit is set or which is 0."""
    if mantissa == 0:
        return ('+', n, 0, 0)
    if not LOWEST <= exponent <= HIGHEST:
        return 'range'
    return (sign, n, exponent, mantissa)


def cut(sign, n, value, scale):
    """value * 2^scale truncated to n limbs."""
    if value == 0:
        return ('+', n, 0, 0)
    excess = value.bit_length() - 64 * n
    mantissa = value >> excess if excess >= 0 else value << -excess
    return normal(sign, n, mantissa, scale + value.bit_length() - 1)


def times(s, t):
    return '+' if s == t else '-'


def negated(a):
    return a if a[3] == 0 else (times(a[0], '-'), *a[1:])


def placed(a, n):
    return a[3] << 64 * (n - a[1])


def add(a, b):
    if b[3] == 0:
        return a
    if a[3] == 0:
        return b
    n = max(a[1], b[1])
    top = max(a[2], b[2])
    # A shift past the mantissa leaves nothing, however long it is.
    x = placed(a, n) >> min(top - a[2], 64 * n)
    y = placed(b, n) >> min(top - b[2], 64 * n)
    total = (x if a[0] == '+' else -x) + (y if b[0] == '+' else -y)
    return cut('-' if total < 0 else '+', n, abs(total), top - 64 * n + 1)


def sub(a, b):
    return add(a, negated(b))


def mul(a, b):
    if a[3] == 0:
        return a
    n = max(a[1], b[1])
    return cut(times(a[0], b[0]), n, a[3] * b[3], a[2] + b[2] - 64 * (a[1] + b[1]) + 2)


def div(a, b):
    if a[3] == 0:
        return a
    n = max(a[1], b[1])
    spare = 64 * (n + b[1] + 1)
    quotient = (a[3] << spare) // b[3]
    return cut(times(a[0], b[0]), n, quotient, a[2] - b[2] - 64 * (a[1] - b[1]) - spare)


def trunc(a):
    sign, n, exponent, mantissa = a
    drop = 64 * n - exponent - 1
    return a if drop <= 0 else cut(sign, n, mantissa >> drop, 0)


def mod(a, b):
    quotient = div(a, b)
    product = quotient if quotient == 'range' else mul(trunc(quotient), b)
    return product if product == 'range' else sub(a, product)


def sqrt(a):
    n = a[1]
    if a[3] == 0:
        return a
    scale = a[2] - 64 * n + 1
    spare = 64 * n + 2 + scale % 2
    return cut('+', n, math.isqrt(a[3] << spare), (scale - spare) // 2)


def resize(a, n, rounded):
    drop = 64 * (a[1] - n)
    if drop <= 0:
        return (a[0], n, a[2], a[3] << -drop)
    mantissa = (a[3] >> drop) + (rounded and a[3] >> (drop - 1) & 1)
    if mantissa >> 64 * n:
        return normal(a[0], n, 1 << (64 * n - 1), a[2] + 1)
    return normal(a[0], n, mantissa, a[2])


def mantissa_of(n):
    bits = 64 * n
    top = 1 << (bits - 1)
    kind = random.randrange(7)
    if kind == 0:
        return (1 << bits) - 1
    if kind == 1:
        return top
    if kind == 2:  # one more bit, often at the end of a limb
        return top | 1 << random.choice([0, bits - 2, 64 * random.randrange(n), bits // 2])
    if kind == 3:  # ones down to some place
        return (1 << bits) - (1 << random.randrange(bits))
    if kind == 4:
        limbs = [random.choice([0, MASK, 1, 1 << 63, MASK - 1]) for _ in range(n)]
        return top | sum(limb << 64 * i for i, limb in enumerate(limbs))
    return top | random.getrandbits(bits)


def exponent_near(exponent, n):
    return exponent + random.choice([0, 0, 1, -1, 2, 63, -63, 64, -64, 65, 64 * n - 1, -64 * n,
                                     1 - 64 * n, 64 * n + 5, random.randrange(-70 * n, 70 * n)])


def number(exponent, n):
    if random.randrange(14) == 0:
        return ('+', n, 0, 0)
    return (random.choice('+-'), n, exponent, mantissa_of(n))


def extreme(n):
    exponent = random.choice([LOWEST, LOWEST + 1, HIGHEST, HIGHEST - 1, 0, 1 << 30, -(1 << 30)])
    return (random.choice('+-'), n, exponent, mantissa_of(n))


def neighbour(a):
    """A number as long as a that differs in its last bits: a difference that cancels."""
    top = 1 << (64 * a[1] - 1)
    return (a[0], a[1], a[2], top | (a[3] + random.choice([0, 1, 2, -1])) & (top - 1))


def pair():
    kind = random.randrange(8)
    n = random.choice(SIZES)
    if kind == 0:
        return extreme(n), extreme(random.choice(SIZES))
    a = number(random.choice([0, 0, 1, -1, 63, 64, 1000, -1000]), n)
    if kind == 1 and a[3] != 0:
        return a, neighbour(a)
    m = random.choice(SIZES)
    return a, number(exponent_near(a[2], max(n, m)), m)


def text(a):
    return a if a == 'range' else '%s %d %d %x' % a


def main():
    lines = []
    for name, call in (('add', add), ('sub', sub), ('mul', mul), ('div', div), ('mod', mod)):
        while sum(line.startswith(name) for line in lines) < 220:
            a, b = pair()
            if b[3] != 0 or name in ('add', 'sub', 'mul'):
                lines.append('%s %s %s %s' % (name, text(a), text(b), text(call(a, b))))
    for i in range(260):
        n = random.choice(SIZES + [33])
        a = extreme(n) if i % 8 == 0 else number(random.randrange(-200, 200), n)
        a = ('+', *a[1:])
        if i % 5 == 0 and a[3] != 0:  # a square, or just below one
            root = mantissa_of(n) >> 32 * n
            square = root * root - i // 5 % 2
            a = cut('+', n, square, random.randrange(-200, 200))
        lines.append('sqrt %s %s' % (text(a), text(sqrt(a))))
    for _ in range(150):
        n = random.choice(SIZES)
        a = number(exponent_near(32 * n, n), n)
        lines.append('trunc %s %s' % (text(a), text(trunc(a))))
    for name, rounded in (('cut', 0), ('round', 1)):
        for _ in range(80):
            a = extreme(random.choice(SIZES))
            n = random.choice(SIZES)
            lines.append('%s %s %d %s' % (name, text(a), n, text(resize(a, n, rounded))))
    with open('floatVectors.txt', 'w') as out:
        out.write('\n'.join(lines) + '\n')


main()
