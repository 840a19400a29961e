"""Operands of the vector files, as recipes (kind, limbs, seed) that the test program follows too, and
the hashes of results: 64-bit FNV-1a.
"""
import random

MASK = (1 << 64) - 1


class Stream:
    """splitmix64"""

    def __init__(self, seed):
        self.state = seed

    def next(self):
        self.state = (self.state + 0x9E3779B97F4A7C15) & MASK
        z = self.state
        z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & MASK
        z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & MASK
        return z ^ (z >> 31)


def limbs_of(recipe):
    kind, n, seed = recipe
    stream = Stream(seed)
    if kind == 'r':  # random
        return [stream.next() for _ in range(n)]
    if kind == 'o':  # all ones
        return [MASK] * n
    if kind == 't':  # only the top bit
        return [0] * (n - 1) + [1 << 63]
    if kind == 'u':  # only bit 0
        return [1] + [0] * (n - 1)
    out = []  # 'x': zeros, ones and single bits in a mixture, which carries run through
    for _ in range(n):
        draw = stream.next()
        out.append([0, MASK, 1, 1 << 63, MASK - 1, draw][draw % 6])
    return out


def value_of(recipe):
    return sum(limb << (64 * i) for i, limb in enumerate(limbs_of(recipe)))


def fnv(data):
    h = 0xCBF29CE484222325
    for byte in data:
        h = ((h ^ byte) * 0x100000001B3) & MASK
    return h


def number_hash(x):
    data = abs(x).to_bytes((abs(x).bit_length() + 7) // 8, 'little')
    return '%016x' % fnv(data + (b'-' if x < 0 else b''))


def recipe(n):
    return (random.choice('rrrrooxxxxxtu'), n, random.randrange(1 << 32))
