# SPDX-License-Identifier: Apache-2.0
"""Tables of the exponential function and of the logarithm."""
from mpmath import mp, mpf, log, factorial, floor
from tablefile import Header, fit, pair, nearest, power_of_two, rounded_to

STEPS = 256  # to a doubling
STEP = log(2) / STEPS

exponentials = Header("ExponentialTable", "Powers of two by 256ths.")
exponentials.constant("kStepsPerUnit", nearest(1 / STEP), "256/ln 2")
first = rounded_to(STEP, 43)
exponentials.constant("kLogStepFirst", nearest(first), "ln 2/256 in two parts: 35 bits, so that 2^18 times it is exact,")
exponentials.constant("kLogStepSecond", nearest(STEP - first), "and 53 bits; together within 2^-97.")
def power_row(i):
    power = mpf(2) ** (mpf(i) / STEPS)
    return nearest(power), nearest(log(power / mpf(nearest(power))))


exponentials.record("PowerRow", ["high", "left"])
exponentials.rows("kPowers", "PowerRow", [power_row(i) for i in range(STEPS)],
                  "2^(i/256) is high exp(left); left errs by at most 2^-107.", 2)
series = [1 / factorial(n + 2) for n in range(16)]
coefficients, bound = fit(series, -STEP / 2 * (1 + mpf(2) ** -20), STEP / 2 * (1 + mpf(2) ** -20), 4)
exponentials.polynomial("kExponential", coefficients,
                        f"(exp(r) - 1 - r) / r^2, |r| <= ln 2/512, within 2^{power_of_two(bound)}.")
exponentials.write()

# The mantissa m lies in [0.6875, 1.375), cut into 256 intervals. r is 1/m roughly, in so few bits that m r - 1 is a
# double.
logarithms = Header("LogarithmTable", "Logarithms of 256 numbers from 0.6875 to 1.375.")
rows = []
reach = mpf(0)
START = mpf("0.6875")
for i in range(256):
    # The index counts steps of 2^-8 of the binade's mantissa: 2^-9 below 1, 2^-8 above.
    low = START + mpf(i) / 512 if i < 160 else 1 + mpf(i - 160) / 256
    high = low + (mpf(1) / 512 if i < 160 else mpf(1) / 256)
    bits = 8 if high <= 1 else 9
    r = rounded_to(2 / (low + high), bits)
    if low <= 1 <= high:
        r = mpf(1)
    ends = [low * r - 1, high * r - 1]
    reach = max(reach, *(abs(z) for z in ends))
    assert max(abs(z) for z in ends) <= mpf(2) ** -8
    main = rounded_to(-log(r), 42)
    rows.append((nearest(r), nearest(main), nearest(-log(r) - main)))
logarithms.record("LogarithmRow", ["inverse", "high", "low"])
logarithms.rows("kLogarithms", "LogarithmRow", rows,
                "r, and -ln r as a multiple of 2^-42 and the rest, which errs by at most 2^-96.")
main = rounded_to(log(2), 42)
logarithms.constant("kLogTwoHigh", nearest(main), "ln 2 as a multiple of 2^-42,")
logarithms.constant("kLogTwoLow", nearest(log(2) - main), "and the rest, which errs by less than 2^-96.")
series = [mpf((-1) ** n) / (n + 3) for n in range(22)]
coefficients, bound = fit(series, -reach, reach, 5)
logarithms.polynomial("kLogarithm", coefficients,
                      f"(ln(1 + z) - z + z^2/2) / z^3, |z| <= {float(reach):.6f}, within 2^{power_of_two(bound)}.")
reach = mpf(2) ** -6
coefficients, bound = fit(series + [mpf((-1) ** n) / (n + 3) for n in range(22, 34)], -reach, reach, 9)
logarithms.polynomial("kLogarithmNearOne", coefficients,
                      f"(ln(1 + z) - z + z^2/2) / z^3, |z| <= 2^-6, within 2^{power_of_two(bound)}.")
logarithms.write()
