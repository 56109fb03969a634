# SPDX-License-Identifier: Apache-2.0
"""Polynomials of the projection's fast forms."""
from mpmath import mpf, pi, sqrt, tan, log, factorial
from tablefile import Header, fit, power_of_two

fast = Header("FastTable", "Polynomials of the projection's fast forms.", "geometry::fast", "GEOMETRY")


def add(name, series, low, high, count, says):
    coefficients, bound = fit(series, low, high, count)
    fast.polynomial(name, coefficients, f"{says}, within 2^{power_of_two(bound)}.")


half = (mpf("85.06") * pi / 360) ** 2  # of the square of half the latitude
add("kSine", [(-1) ** (n + 1) / factorial(2 * n + 3) for n in range(14)], 0, half, 6, "(sin(r) - r) / r^3 in r^2, |r| <= 42.53 degrees")
add("kCosine", [(-1) ** n / factorial(2 * n + 4) for n in range(14)], 0, half, 6, "(cos(r) - 1 + r^2/2) / r^4 in r^2, |r| <= 42.53 degrees")
z = ((sqrt(2) - 1) / (sqrt(2) + 1)) ** 2
add("kLogarithm", [mpf(2) / (2 * n + 3) for n in range(28)], 0, z, 8, "(2 atanh(z) - 2 z) / z^3 in z^2, |z| <= 0.1716")
reach = log(2) / 2 * mpf("1.0001")
add("kExponential", [1 / factorial(n) for n in range(30)], -reach, reach, 12, "exp(r), |r| <= 0.3466")
add("kArctangent", [mpf((-1) ** (n + 1)) / (2 * n + 3) for n in range(60)], 0, tan(pi / 8) ** 2, 10,
    "(atan(u) - u) / u^3 in u^2, |u| <= 0.4143")
fast.write()
