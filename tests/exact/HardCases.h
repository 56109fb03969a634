// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_EXACT_HARDCASES_H
#define ZRCORE_TESTS_EXACT_HARDCASES_H

struct HardCase {
  const char* function;
  double x, y;
};

constexpr HardCase kHardCases[] = {
    // Values close to the middle of two doubles, by the given part of a last place; found by hard_cases.
    {"sin", -0x1.db54617f99358p-3, 0.0},   // 2^-32.2
    {"sin", 0x1.c8e0483e4af08p-1, 0.0},    // 2^-31.7
    {"cos", 0x1.1e014d3c321e7p+0, 0.0},    // 2^-35.3
    {"cos", -0x1.64f37bebbb69ap+2, 0.0},   // 2^-34.1
    {"tan", 0x1.7c385f69f9b7dp-1, 0.0},    // 2^-31.3
    {"asin", -0x1.8f4a5beebb549p-3, 0.0},  // 2^-29.0
    {"acos", 0x1.55358cb5b882bp-1, 0.0},   // 2^-28.9
    {"atan", -0x1.dc30634c7f3d9p+0, 0.0},  // 2^-35.3
    {"exp", 0x1.fd350ad6f4e44p+0, 0.0},    // 2^-33.9
    {"exp", -0x1.281467c383b07p+1, 0.0},   // 2^-33.2
    {"log", 0x1.32d11ade5239ep-3, 0.0},    // 2^-36.0
    {"log", 0x1.8b6bd482093dfp-2, 0.0},    // 2^-35.2
    // The doubles closest to multiples of pi/2, below 2^15 and of all; found by continued fractions.
    {"sin", 0x1.6c6cbc45dc8dep+5, 0.0},
    {"cos", 0x1.6c6cbc45dc8dep+5, 0.0},
    {"tan", 0x1.6c6cbc45dc8dep+5, 0.0},
    {"sin", 0x1.921fb54442d18p+0, 0.0},
    {"cos", 0x1.921fb54442d18p+0, 0.0},
    {"tan", 0x1.921fb54442d18p+0, 0.0},
    {"sin", 0x1.b951f1572eba5p+23, 0.0},
    {"cos", 0x1.b951f1572eba5p+23, 0.0},
    {"tan", 0x1.b951f1572eba5p+23, 0.0},
    // Quotients that lie exactly in the middle of two subnormal numbers: the angle lies a little below.
    {"atan2", 0x0.0000000000003p-1022, 2.0},
    {"atan2", 0x0.0000000000007p-1022, 2.0},
    // Quotients that are a double: again the angle lies a little below.
    {"atan2", 0x1.8p-200, 0x1.8p-100},
    {"atan2", 0x1p-60, 1.0},
    // A hair more than a double, than the middle of two.
    {"hypot", 1.0, 0x1p-27},
    {"hypot", 1.0, 0x1.6a09e667f3bcdp-27},
    {"hypot", 0x1.0000000000001p+0, 0x1.6a09e667f3bccp-27},
};

#endif
