// SPDX-License-Identifier: Apache-2.0
// clang-format off
// Made by geometry/exact/generate/make.sh (circle.py): do not edit.
#ifndef ZRCORE_GEOMETRY_EXACT_ARCSINETABLE_H
#define ZRCORE_GEOMETRY_EXACT_ARCSINETABLE_H

#include <cstdint>

/// Arcsines of the multiples of 1/64 up to 46/64, above sin(pi/4).
namespace exact::tables {

struct ArcsineRow {
  double cosineHigh, cosineLow, high, low;
};

/// sqrt(1 - c^2) and asin(c) of c = i/64 as pairs, which err by at most 2^-107.
inline constexpr ArcsineRow kArcsines[] = {
{0x1p+0, 0.0, 0.0, 0.0},
{0x1.ffefffbffdfffp-1, -0x1.003802a02101bp-55, 0x1.0002aabdde94cp-6, 0x1.130cd26cdfa37p-62},
{0x1.ffbffbff7fec0p-1, -0x1.c05410835ab2ep-56, 0x1.000aabde0b9c8p-5, 0x1.d6d94551be3e9p-61},
{0x1.ff6febba4bfeap-1, 0x1.d6d4ea9aa5695p-57, 0x1.8024091fdb0a9p-5, 0x1.80650020adbcap-60},
{0x1.feffbfdfebf1fp-1, 0x1.5dee51994f18bp-55, 0x1.002abde953619p-4, 0x1.182e2dc6ddeedp-58},
{0x1.fe6f634576477p-1, -0x1.0f8806016f092p-60, 0x1.405390240e6fdp-4, 0x1.1ed0159037972p-58},
{0x1.fdbeba917c3f5p-1, 0x1.2c0681a46a556p-55, 0x1.809092913e52ep-4, 0x1.cf6b1f9befb16p-60},
{0x1.fceda421efdb5p-1, -0x1.64fa09c1806ebp-59, 0x1.c0e5e80f7172dp-4, 0x1.d8eeba8bc0030p-58},
{0x1.fbfbf7ebc755fp-1, -0x1.b2a94084da0b6p-55, 0x1.00abe0c129e1ep-3, 0x1.7ceb0ee49d42ap-60},
{0x1.fae987541497fp-1, 0x1.99878449315f4p-55, 0x1.20f530308cc20p-3, -0x1.ed63934b583b4p-57},
{0x1.f9b61d0237250p-1, 0x1.d3ca3915d1a44p-55, 0x1.41510cb011423p-3, -0x1.15d675180eda8p-58},
{0x1.f8617caabd6f6p-1, 0x1.cd851109c4193p-56, 0x1.61c1ab9d55d30p-3, -0x1.95a37debb0f64p-57},
{0x1.f6eb62d27730dp-1, -0x1.401d95ca1ce34p-55, 0x1.82494ed0e78fcp-3, -0x1.443c2697a7d2fp-57},
{0x1.f553848924e81p-1, 0x1.7377b3e691f21p-56, 0x1.a2ea462b4998ep-3, -0x1.51d494caa9d70p-57},
{0x1.f3998f1b1886cp-1, 0x1.6b699b6f7882ep-55, 0x1.c3a6f13aae84bp-3, -0x1.7739d10fe8bc1p-57},
{0x1.f1bd27b9002c4p-1, 0x1.56e59d2cf3bc3p-56, 0x1.e481c0fce7134p-3, 0x1.c9bcb7ab7132bp-62},
{0x1.efbdeb14f4edap-1, -0x1.3a145fe1be078p-55, 0x1.02be9ce0b87cdp-2, 0x1.e5d09da2e0f04p-58},
{0x1.ed9b6cf3c4663p-1, 0x1.9c03e66f9aa9ep-59, 0x1.134dfa9805147p-2, -0x1.bbe27a4ac52e2p-56},
{0x1.eb5537b1434dap-1, -0x1.c180d47e8730cp-55, 0x1.23f0523c5dc2bp-2, 0x1.4fc2674a3d6b2p-59},
{0x1.e8eacbb648910p-1, -0x1.2ce442f780a3ap-55, 0x1.34a709597aab1p-2, -0x1.70f1371722985p-56},
{0x1.e65b9edeba38ep-1, -0x1.bb73251e8c364p-57, 0x1.457393b90e2aap-2, 0x1.b1f64d329fe98p-56},
{0x1.e3a71bcdd63dep-1, -0x1.1a64806c8541cp-55, 0x1.565774cb66f02p-2, -0x1.c537759c5cce1p-56},
{0x1.e0cca12e97895p-1, -0x1.316d1acdf7b57p-55, 0x1.675441329986ep-2, 0x1.d027ed2bb2edap-56},
{0x1.ddcb80ddc085bp-1, -0x1.bdfd75fd78bd9p-57, 0x1.786ba074fef93p-2, -0x1.73b1910f90a93p-56},
{0x1.daa2fefaae1d8p-1, -0x1.3fe0e03f44594p-58, 0x1.899f4edc962d3p-2, 0x1.3e919701b7c6dp-60},
{0x1.d75250db9c792p-1, 0x1.1e2779b1d293dp-55, 0x1.9af11f89ba61cp-2, 0x1.a884c2416dce8p-56},
{0x1.d3d89be176072p-1, 0x1.54fe1c5f17367p-56, 0x1.ac62fec0b2a92p-2, 0x1.cb9f9a052f11fp-56},
{0x1.d034f42698214p-1, 0x1.49958a3293ba5p-55, 0x1.bdf6f47ae6904p-2, 0x1.e7bfe76547424p-56},
{0x1.cc665b0328622p-1, -0x1.1baa4d369f814p-55, 0x1.cfaf27460fe9fp-2, -0x1.8bf75f355f723p-57},
{0x1.c86bbd609a260p-1, -0x1.12db7fe324653p-57, 0x1.e18ddf7da106bp-2, -0x1.58029cecb4d7bp-58},
{0x1.c443f1d4d22afp-1, -0x1.dea6ecd25e5e4p-57, 0x1.f3958aecddef4p-2, -0x1.fc135930a7786p-58},
{0x1.bfedb67be13b3p-1, -0x1.d0bbeb53fe173p-55, 0x1.02e46075785a1p-1, 0x1.d1c9139aa7a36p-56},
{0x1.bb67ae8584caap-1, 0x1.cec95d0b5c1e3p-55, 0x1.0c152382d7366p-1, -0x1.ee6913347c2a6p-55},
{0x1.b6b05f6966b9bp-1, -0x1.a297779185862p-56, 0x1.155e8b2a00052p-1, 0x1.bb9429fa5e8f6p-57},
{0x1.b1c62db2564fep-1, 0x1.ed2e2c1a79b97p-55, 0x1.1ec230c714a96p-1, 0x1.41dc77911b08cp-55},
{0x1.aca7594d44cbdp-1, -0x1.62dd00a025a1dp-55, 0x1.2841ce0862975p-1, -0x1.7ed81c0e02251p-55},
{0x1.a751f9447b724p-1, 0x1.2b909477e9ed1p-56, 0x1.31df40fbd31cdp-1, 0x1.10ebcfd1cc29dp-60},
{0x1.a1c3f6ca01f29p-1, -0x1.cebf5548e9619p-56, 0x1.3b9c90c43296dp-1, -0x1.76eebb78fe641p-56},
{0x1.9bfb076d236ebp-1, -0x1.a7391cb03223bp-56, 0x1.457bf318fe517p-1, -0x1.6189642d67942p-55},
{0x1.95f4a64decda8p-1, -0x1.0597479209667p-60, 0x1.4f7fd2bc2fb34p-1, -0x1.d7c3a91e5f88bp-55},
{0x1.8fae0c15ad38ap-1, -0x1.db7adb6817f6dp-57, 0x1.59aad71ced00fp-1, -0x1.b5b31565e9408p-58},
{0x1.8924256bf4545p-1, 0x1.62b7d5e6665e3p-56, 0x1.63ffed6d198f6p-1, 0x1.b5625ef0627b6p-55},
{0x1.8253878ae2e09p-1, -0x1.dd13b570fbe2fp-55, 0x1.6e825383cc40bp-1, 0x1.1a9ec7321e76ap-56},
{0x1.7b386279d7bf3p-1, 0x1.6dd6abafd746ep-59, 0x1.7935a501afa78p-1, -0x1.a585b7d2a71f2p-55},
{0x1.73ce704fb7b23p-1, 0x1.1470b816b17a6p-55, 0x1.841deb5114bb4p-1, -0x1.49d1c4e2eba5ep-55},
{0x1.6c10e0a9e5d65p-1, 0x1.4bb162726a9b4p-55, 0x1.8f3fb14e496b4p-1, 0x1.73d01b84833b2p-55},
{0x1.63fa3f3c02962p-1, -0x1.dfd1505ee685ep-59, 0x1.9aa01babef75ep-1, -0x1.df24530d8ffb9p-55},
};

/// (asin(v) - v) / v^3 in v^2, |v| <= 0.0114, within 2^-56.5.
inline constexpr double kArcsine[] = {0x1.5555555555555p-3, 0x1.33333333336a8p-4, 0x1.6db6db2cc9857p-5, 0x1.f1df811691bf4p-6};

}  // namespace exact::tables

#endif
