#!/usr/bin/env python3
"""Writes integerVectors.txt: integer results by Python's own arithmetic.

Operands are recipes (kind, limbs, seed) that the test program follows too, so that a line stays
short whatever the size; results are 64-bit FNV-1a hashes. Run it in its folder to renew the file.
"""
import math
import random

from vectorRecipes import MASK, fnv, limbs_of, number_hash, recipe, value_of

SIZES = [1, 1, 1, 2, 2, 3, 4, 5, 7, 8, 9, 12, 15, 16, 17, 31, 33, 64, 65, 130, 257]
random.seed(20240611)


def text_hash(text):
    return '%016x' % fnv(text.encode())


def decimal(x):
    """str() without its limit of digits."""
    if x < 10 ** 1000:
        return str(x)
    half = int(x.bit_length() * 0.1505)
    high, low = divmod(x, 10 ** half)
    return decimal(high) + decimal(low).rjust(half, '0')


def line(op, *fields):
    words = [op]
    for field in fields:
        words.extend(map(str, field) if isinstance(field, tuple) else [str(field)])
    out.write(' '.join(words) + '\n')


def extended(limbs, n):
    top = MASK if limbs[-1] >> 63 else 0
    return sum((limbs[i] if i < len(limbs) else top) << (64 * i) for i in range(n))


def pair():
    return recipe(random.choice(SIZES)), recipe(random.choice(SIZES))


def isqrt(x):
    root = 1 << ((x.bit_length() + 1) // 2)
    while True:
        better = (root + x // root) // 2
        if better >= root:
            return root
        root = better


with open('integerVectors.txt', 'w') as out:
    for _ in range(150):
        a, b = pair()
        x, y = value_of(a), value_of(b)
        line('sum', a, b, number_hash(x + y), number_hash(x - y))
    for _ in range(120):
        a, b = pair()
        line('product', a, b, number_hash(value_of(a) * value_of(b)))
    for _ in range(250):
        a, b = pair()
        if random.randrange(3) != 0 and a[1] < b[1]:
            a, b = b, a
        x, y = value_of(a), value_of(b)
        if y != 0:
            line('division', a, b, number_hash(x // y), number_hash(x % y))
    for _ in range(100):
        a = recipe(random.choice(SIZES))
        b = recipe(a[1])
        m = limbs_of(recipe(1))[0] or 7
        x, y, size = value_of(a), value_of(b), 1 << (64 * a[1])
        line('limb', a, b, m, number_hash(x * m), number_hash(x // m), x % m,
             number_hash(y + x * m), number_hash((y - x * m) % size), -((y - x * m) // size))
    for _ in range(80):
        a = recipe(random.choice(SIZES))
        n = random.choice([0, 1, 63, 64, 65, 127, 128, random.randrange(64 * a[1] + 70)])
        x = value_of(a)
        line('shift', a, n, number_hash((x << n) % (1 << (64 * a[1]))), number_hash(x >> n))
    for _ in range(60):
        a, b = pair()
        n = max(a[1], b[1])
        x, y = limbs_of(a), limbs_of(b)
        x, y = extended(x, n if a[1] < b[1] else a[1]), extended(y, n)
        line('bits', a, b, number_hash(x & y), number_hash(x | y), number_hash(x ^ y))
    for _ in range(60):
        a = recipe(random.choice(SIZES))
        x = value_of(a)
        line('text', a, text_hash(decimal(x)), text_hash(bin(x)), text_hash('0c' + oct(x)[2:]),
             text_hash('0x' + hex(x)[2:].upper()))
    for _ in range(60):
        a, b = pair()
        common = value_of(recipe(random.choice([1, 2, 5])))
        line('gcd', a, b, common & MASK,
             number_hash(math.gcd(value_of(a) * (common & MASK), value_of(b) * (common & MASK))))
    for _ in range(60):
        a = recipe(random.choice(SIZES))
        line('root', a, number_hash(isqrt(value_of(a)) if value_of(a) else 0))
    for _ in range(30):
        a = recipe(random.choice([1, 1, 2, 3]))
        e = random.choice([2, 3, 4, 5, 7, 8, 15, 16, 31, 100])
        line('power', a, e, number_hash(value_of(a) ** e))
