# SPDX-License-Identifier: Apache-2.0
"""Tables of the sine, the tangent, the arctangent and the arcsine, and the reduction of angles."""
from mpmath import mp, mpf, pi, sin, cos, tan, atan, asin, sqrt, factorial, bernoulli, floor, ldexp
from tablefile import Header, fit, pair, nearest, power_of_two, rounded_to

STEPS = 256  # to a half turn
STEP = pi / STEPS
REACH = STEP / 2 * (1 + mpf(2) ** -30)  # of a reduced angle

reduction = Header("AngleTable", "An angle is a whole number of steps of pi/256 and a rest of at most half a step.")
first = rounded_to(STEP, 37)
second = nearest(STEP - first)
third = nearest(STEP - first - mpf(second))
reduction.constant("kStepsPerRadian", nearest(1 / STEP), "256/pi")
reduction.constant("kStepFirst", nearest(first), "pi/256 in three parts: 31 bits, so that 2^22 times it is exact,")
reduction.constant("kStepSecond", second, "53 bits,")
reduction.constant("kStepThird", third, "and 53 bits.")
reduction.write()

sines = Header("SineTable", "Sines of the multiples of pi/256.")
sines.record("SineRow", ["high", "low"])
sines.rows("kQuarterOfSines", "SineRow", [pair(sin(k * STEP)) for k in range(STEPS // 2 + 1)],
           "sin(k pi/256) as pairs, k from 0 to 128. The low part errs by at most 2^-108.", 2)
series = [(-1) ** (n + 1) / factorial(2 * n + 3) for n in range(8)]
coefficients, bound = fit(series, 0, REACH**2, 3)
sines.polynomial("kSine", coefficients, f"(sin(r) - r) / r^3 in r^2, |r| <= pi/512, within 2^{power_of_two(bound)}.")
series = [mpf((-1) ** (n + 1)) / factorial(2 * n + 2) for n in range(8)]
coefficients, bound = fit(series, 0, REACH**2, 3)
sines.polynomial("kCosine", coefficients, f"(cos(r) - 1) / r^2 in r^2, |r| <= pi/512, within 2^{power_of_two(bound)}.")
sines.write()

tangents = Header("TangentTable", "The tangent of a small angle.")
series = [abs(bernoulli(2 * n)) * 4**n * (4**n - 1) / factorial(2 * n) for n in range(2, 14)]
coefficients, bound = fit(series, 0, REACH**2, 3)
tangents.polynomial("kTangent", coefficients, f"(tan(r) - r) / r^3 in r^2, |r| <= pi/512, within 2^{power_of_two(bound)}.")
tangents.write()

arctangents = Header("ArctangentTable", "Arctangents of the middles of 16 intervals a binade, from 2^-8 to 2^6.")
arctangents.record("ArctangentRow", ["middle", "high", "low"])
middles = [mpf(0)] + [mpf(2) ** e * (1 + mpf(2 * j + 1) / 32) for e in range(-8, 6) for j in range(16)]
arctangents.rows("kArctangents", "ArctangentRow", [(nearest(c), *pair(atan(c))) for c in middles],
                 "atan(middle) as pairs. Row 0 is for everything below 2^-8. The low part errs by at most 2^-107.")
series = [mpf((-1) ** (n + 1)) / (2 * n + 3) for n in range(18)]
coefficients, bound = fit(series, 0, mpf(2) ** -12, 4)
arctangents.polynomial("kArctangent", coefficients,
                       f"(atan(t) - t) / t^3 in t^2, |t| <= 2^-6, within 2^{power_of_two(bound)}.")
half = pair(pi / 2)
whole = pair(pi)
arctangents.constant("kHalfPiHigh", half[0], "pi/2 as a pair, which errs by less than 2^-109;")
arctangents.constant("kHalfPiLow", half[1], "twice it is pi.")
arctangents.write()

arcsines = Header("ArcsineTable", "Arcsines of the multiples of 1/64 up to 46/64, above sin(pi/4).")
arcsines.record("ArcsineRow", ["cosineHigh", "cosineLow", "high", "low"])
arcsines.rows("kArcsines", "ArcsineRow",
              [(*pair(sqrt(1 - (mpf(i) / 64) ** 2)), *pair(asin(mpf(i) / 64))) for i in range(47)],
              "sqrt(1 - c^2) and asin(c) of c = i/64 as pairs, which err by at most 2^-107.")
series = [factorial(2 * n) / (4**n * factorial(n) ** 2 * (2 * n + 1)) for n in range(1, 20)]
coefficients, bound = fit(series, 0, mpf("0.0114") ** 2, 4)
arcsines.polynomial("kArcsine", coefficients,
                    f"(asin(v) - v) / v^3 in v^2, |v| <= 0.0114, within 2^{power_of_two(bound)}.")
arcsines.write()
