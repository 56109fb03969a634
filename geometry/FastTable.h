// SPDX-License-Identifier: Apache-2.0
// clang-format off
// Made by geometry/exact/generate/make.sh (fast.py): do not edit.
#ifndef ZRCORE_GEOMETRY_FASTTABLE_H
#define ZRCORE_GEOMETRY_FASTTABLE_H

#include <cstdint>

/// Polynomials of the projection's fast forms.
namespace geometry::fast {

/// (sin(r) - r) / r^3 in r^2, |r| <= 42.53 degrees, within 2^-52.8.
inline constexpr double kSine[] = {-0x1.5555555555555p-3, 0x1.1111111110e03p-7, -0x1.a01a019f17269p-13, 0x1.71de3860274afp-19, -0x1.ae60e8b964733p-26, 0x1.5e5f7972f48b6p-33};

/// (cos(r) - 1 + r^2/2) / r^4 in r^2, |r| <= 42.53 degrees, within 2^-56.6.
inline constexpr double kCosine[] = {0x1.5555555555555p-5, -0x1.6c16c16c16a8fp-10, 0x1.a01a019f987e6p-16, -0x1.27e4fa7cbf6cbp-22, 0x1.1eebd7ddd2abbp-29, -0x1.90d2163945302p-37};

/// (2 atanh(z) - 2 z) / z^3 in z^2, |z| <= 0.1716, within 2^-49.8.
inline constexpr double kLogarithm[] = {0x1.5555555555555p-1, 0x1.9999999999a38p-2, 0x1.2492492476cccp-2, 0x1.c71c720159177p-3, 0x1.745cf9048dd95p-3, 0x1.3b1c355a8f7a2p-3, 0x1.0fbe95d716020p-3, 0x1.0c039c49989c6p-3};

/// exp(r), |r| <= 0.3466, within 2^-52.6.
inline constexpr double kExponential[] = {0x1p+0, 0x1p+0, 0x1.0000000000011p-1, 0x1.555555555555ap-3, 0x1.555555554f0bap-5, 0x1.111111110f21ep-7, 0x1.6c16c1880029fp-10, 0x1.a01a01b1461c5p-13, 0x1.a01991a10d9aep-16, 0x1.71ddf56d8deb5p-19, 0x1.28b4101c77212p-22, 0x1.af632a0f7e2cep-26};

/// (atan(u) - u) / u^3 in u^2, |u| <= 0.4143, within 2^-35.4.
inline constexpr double kArctangent[] = {-0x1.5555555555546p-2, 0x1.9999999990a9fp-3, -0x1.2492491dd4b29p-3, 0x1.c71c6dd1ca28cp-4, -0x1.745c7f8421f5cp-4, 0x1.3b068efc532d3p-4, -0x1.105e40d85ead1p-4, 0x1.d5eb9ad0804d0p-5, -0x1.6f4657797fec4p-5, 0x1.74bea059cee82p-6};

}  // namespace geometry::fast

#endif
