# SPDX-License-Identifier: Apache-2.0
"""Constants in 256 bits and more, for the careful phase."""
from mpmath import mp, mpf, pi, log, factorial, floor, ldexp
from tablefile import Header

mp.prec = 2000


def words(value, count):
    """The first 64*count binary places of a number in [0, 1), rounded down; the most significant word last."""
    whole = int(floor(ldexp(value, 64 * count)))
    return [(whole >> (64 * i)) & (2**64 - 1) for i in range(count)]


wide = Header("WideTable", "Constants in 256 bits and more: binary places of fractions, rounded down.")
wide.words("kTwoOverPi", [words(2 / pi, 24)], "2/pi, 1536 places.")
wide.words("kHalfOfHalfPi", [words(pi / 4, 4)], "pi/4")
wide.words("kLogTwo", [words(log(2), 4)], "ln 2")
wide.words("kInverseFactorials", [words(1 / factorial(n), 4) for n in range(2, 59)], "1/n!, n from 2 to 58")
wide.write()
