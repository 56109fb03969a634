// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_EXACT_HARDCASES_H
#define ZRCORE_TESTS_EXACT_HARDCASES_H

struct HardCase {
  const char* function;
  double x, y;
};

constexpr HardCase kHardCases[] = {
    // Values close to the middle of two doubles, by the given part of a last place; found by hard_cases.
    {"sin", -0x1.c21b3263276d7p-1, 0.0},   // 2^-37.2
    {"sin", 0x1.62d3ed2ef7641p+2, 0.0},    // 2^-36.6
    {"sin", -0x1.191d849f89076p-1, 0.0},   // 2^-34.9
    {"sin", -0x1.fbf068bbe470ap-3, 0.0},   // 2^-34.4
    {"cos", 0x1.1e014d3c321e7p+0, 0.0},    // 2^-35.3
    {"cos", 0x1.f5fb468269411p-2, 0.0},    // 2^-34.8
    {"cos", -0x1.22346fcb21a6p+1, 0.0},    // 2^-34.6
    {"cos", -0x1.64f37bebbb69ap+2, 0.0},   // 2^-34.1
    {"tan", 0x1.2e097954b189bp-3, 0.0},    // 2^-41.4
    {"tan", 0x1.74cdfc76c97e5p-2, 0.0},    // 2^-36.6
    {"tan", 0x1.9e9e90c4c31p-2, 0.0},      // 2^-34.8
    {"tan", 0x1.8dee10fcc570fp-2, 0.0},    // 2^-32.7
    {"asin", 0x1.644d324ef497dp-1, 0.0},   // 2^-32.6
    {"asin", -0x1.22e3f5e6bb21p-1, 0.0},   // 2^-32.0
    {"asin", -0x1.beb0ff0c8c19fp-3, 0.0},  // 2^-31.5
    {"asin", -0x1.d815e4af66497p-1, 0.0},  // 2^-31.0
    {"acos", 0x1.b4437351af2adp-6, 0.0},   // 2^-33.3
    {"acos", 0x1.a7b812d19c67bp-1, 0.0},   // 2^-31.3
    {"acos", -0x1.e6c7f198f5c69p-2, 0.0},  // 2^-31.2
    {"acos", 0x1.514b20cb01816p-3, 0.0},   // 2^-30.6
    {"atan", -0x1.2237f1d4e6748p+3, 0.0},  // 2^-38.1
    {"atan", -0x1.3314beda7d551p-8, 0.0},  // 2^-35.5
    {"atan", -0x1.dc30634c7f3d9p+0, 0.0},  // 2^-35.3
    {"atan", 0x1.520bb63009b84p-2, 0.0},   // 2^-32.8
    {"exp", 0x1.c3baeb7bc57ccp+0, 0.0},    // 2^-39.1
    {"exp", 0x1.583d7790a7648p+1, 0.0},    // 2^-36.0
    {"exp", -0x1.96d7e2375e841p-1, 0.0},   // 2^-35.6
    {"exp", -0x1.47b52b1ee41b1p+1, 0.0},   // 2^-34.7
    {"log", 0x1.32d11ade5239ep-3, 0.0},    // 2^-36.0
    {"log", 0x1.8b6bd482093dfp-2, 0.0},    // 2^-35.2
    {"log", 0x1.b1fec6422524ep+3, 0.0},    // 2^-35.2
    {"log", 0x1.5da6ba5c09479p+4, 0.0},    // 2^-34.4
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
