#!/usr/bin/env python3
"""Writes theoryVectors.txt: powers and inverses modulo a number by Python's own arithmetic.

All numbers are hexadecimal; the result is "none" where there is no inverse. Run it in its folder to
renew the file.
"""
import random

random.seed(20240709)

ONES = (1 << 64) - 1


def number(n, kind='random'):
    """A number of n limbs: random, only ones, one bit, or limbs that carries run through."""
    if kind == 'ones':
        return (1 << (64 * n)) - 1
    if kind == 'bit':
        return 1 << (64 * n - random.choice([1, 33, 63]))
    limbs = [random.getrandbits(64) for _ in range(n)]
    if kind == 'mixed':
        limbs = [random.choice([0, ONES, 1, 1 << 63, ONES - 1, limb]) for limb in limbs]
    return sum(limb << (64 * i) for i, limb in enumerate(limbs))


def inverse(a, m):
    try:
        return '%x' % pow(a, -1, m)
    except ValueError:
        return 'none'


with open('theoryVectors.txt', 'w') as out:
    for n in [1, 1, 2, 2, 3, 4, 5, 8, 9, 16]:
        moduli = [number(n, kind) for kind in ['random', 'mixed', 'ones', 'bit']]
        moduli += [moduli[0] | 1, moduli[1] | 1, moduli[3] + 1, moduli[3] + random.randrange(99)]
        for m in moduli:
            if m < 2:
                continue
            a = number(max(1, n + random.choice([-1, 0, 0, 1])), random.choice(['random', 'mixed']))
            e = random.choice([2, 3, 0x10001, number(1), number(n), number(n + 1, 'mixed') + 2])
            print('power %x %x %x %x' % (a, e, m, pow(a, e, m)), file=out)
            print('inverse %x %x %s' % (a, m, inverse(a, m)), file=out)
            print('inverse %x %x %s' % (a | 1, m, inverse(a | 1, m)), file=out)
