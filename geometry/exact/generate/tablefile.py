# SPDX-License-Identifier: Apache-2.0
"""What the generators of the tables share: rounding to doubles, fitted polynomials with proven errors, the files' form."""
import sys
from mpmath import mp, mpf, chebyfit, floor, ldexp, polyval

mp.prec = 400


def nearest(value):
    """The double nearest to a number (mpmath rounds to nearest, ties to even), within the normal range."""
    return float(value)


def pair(value):
    """A number as the sum of two doubles."""
    high = nearest(value)
    return high, nearest(value - mpf(high))


def rounded_to(value, bits):
    """The multiple of 2^-bits nearest to a number, exactly."""
    return ldexp(floor(ldexp(value, bits) + mpf(1) / 2), -bits)


def fit(series, low, high, count):
    """`count` doubles c with sum c[n] u^n close to the power series sum series[n] u^n on [low, high], and a bound of
    the difference. The bound is proven, up to the rounding of 400-bit arithmetic: the difference is a power series
    itself; it is evaluated on a grid, and between two points of the grid it cannot change by more than the sum of its
    coefficients' derivatives allows. `series` must be so long that what follows is below 2^-120."""
    low, high = mpf(low), mpf(high)
    value = lambda u: polyval(series[::-1], u)
    fitted = [nearest(c) for c in chebyfit(value, [low, high], count)[::-1]]
    difference = [mpf(c) - mpf(fitted[n] if n < count else 0) for n, c in enumerate(series)]
    reach = max(abs(low), abs(high))
    slope = sum(n * abs(c) * reach ** (n - 1) for n, c in enumerate(difference) if n)
    steps = 4000
    width = (high - low) / steps
    bound = max(abs(polyval(difference[::-1], low + i * width)) for i in range(steps + 1))
    return fitted, bound + slope * width / 2


def power_of_two(bound):
    """The exponent of the least power of two, in tenths, that is not below a bound."""
    return float(mp.ceil(mp.log(bound, 2) * 10) / 10)


def hex_double(value):
    return value.hex().replace("0x0.0p+0", "0.0").replace(".0000000000000p", "p")


class Header:
    """A C++ header of constants. It is written to the folder given on the command line (default: the one above)."""

    def __init__(self, name, says, space="exact::tables", room="GEOMETRY_EXACT"):
        self.name = name
        self.space = space
        guard = f"ZRCORE_{room}_{name.upper()}_H"
        self.lines = ["// SPDX-License-Identifier: Apache-2.0",
                      "// clang-format off",
                      "// Made by geometry/exact/generate/make.sh (" + sys.argv[0].split("/")[-1] + "): do not edit.",
                      "#ifndef " + guard, "#define " + guard, "", "#include <cstdint>", "", "/// " + says, f"namespace {space} {{", ""]

    def constant(self, name, value, says):
        self.lines += ["/// " + says, f"inline constexpr double {name} = {hex_double(value)};", ""]

    def polynomial(self, name, coefficients, says):
        body = ", ".join(hex_double(c) for c in coefficients)
        self.lines += ["/// " + says, f"inline constexpr double {name}[] = {{{body}}};", ""]

    def rows(self, name, record, rows, says, per_line=1):
        """Rows of doubles as an array of records."""
        self.lines += ["/// " + says, f"inline constexpr {record} {name}[] = {{"]
        texts = ["{" + ", ".join(hex_double(value) for value in row) + "}," for row in rows]
        for i in range(0, len(texts), per_line):
            self.lines.append(" ".join(texts[i:i + per_line]))
        self.lines += ["};", ""]

    def record(self, name, members):
        self.lines += [f"struct {name} {{", f"  double {', '.join(members)};", "};", ""]

    def words(self, name, rows, says):
        """Rows of 64-bit words, most significant word last in each row."""
        self.lines += ["/// " + says, f"inline constexpr std::uint64_t {name}[][{len(rows[0])}] = {{"]
        self.lines += ["{" + ", ".join(f"0x{word:016x}" for word in row) + "}," for row in rows]
        self.lines += ["};", ""]

    def write(self):
        folder = sys.argv[1] if len(sys.argv) > 1 else "."
        with open(f"{folder}/{self.name}.h", "w") as out:
            out.write("\n".join(self.lines) + f"\n}}  // namespace {self.space}\n\n#endif\n")
