// SPDX-License-Identifier: Apache-2.0
// clang-format off
// Made by geometry/exact/generate/make.sh (circle.py): do not edit.
#ifndef ZRCORE_GEOMETRY_EXACT_TANGENTTABLE_H
#define ZRCORE_GEOMETRY_EXACT_TANGENTTABLE_H

#include <cstdint>

/// Tangents of the multiples of pi/256.
namespace exact::tables {

struct TangentRow {
  double high, low;
};

/// tan(k pi/256) as pairs, k from 0 to 64. The low part errs by at most 2^-108.
inline constexpr TangentRow kEighthOfTangents[] = {
{0.0, 0.0}, {0x1.9224e047e368ep-7, -0x1.a3da9c08120b7p-62},
{0x1.92346247a91f0p-6, -0x1.13b5915a8e316p-64}, {0x1.2dbaae9a05db0p-5, -0x1.3753f24c8eeb4p-59},
{0x1.927278a3b1162p-5, 0x1.ada13ceebab9dp-64}, {0x1.f7495ea3f3783p-5, -0x1.07ea8d1aa6faep-59},
{0x1.2e239ccff3831p-4, 0x1.87a2cb08f812cp-58}, {0x1.60b9f7597fdecp-4, 0x1.d22b8ec11f006p-60},
{0x1.936bb8c5b2da2p-4, 0x1.87d054f689d7ap-58}, {0x1.c63ce377fc802p-4, -0x1.43faadb4fa996p-58},
{0x1.f93183a8db9e9p-4, -0x1.12206d2ac3013p-59}, {0x1.1626d85a91e70p-3, -0x1.007bfc8d53bd6p-58},
{0x1.2fcac73a60640p-3, 0x1.2cfb5a746f62cp-58}, {0x1.4986a74cf4e57p-3, 0x1.9ab2dced77971p-57},
{0x1.635c990ce0d36p-3, -0x1.9debab5988b6bp-58}, {0x1.7d4ec54fb5968p-3, 0x1.fb9248f211674p-59},
{0x1.975f5e0553158p-3, 0x1.ef5d367441946p-61}, {0x1.b1909efd8b762p-3, 0x1.8448dfdb1cb08p-58},
{0x1.cbe4ceb4b4cf2p-3, 0x1.4a5be32c624f4p-57}, {0x1.e65e3f27c9f2ap-3, 0x1.f636049d8d810p-57},
{0x1.007fa758626aep-2, 0x1.5a6d6c3c8b6a7p-57}, {0x1.0de53475f3b3cp-2, 0x1.7b35cc20fc4b0p-57},
{0x1.1b6103d3597e9p-2, 0x1.cbda4f63658a0p-57}, {0x1.28f459ecad74dp-2, 0x1.0336036e321e9p-60},
{0x1.36a08355c63dcp-2, -0x1.d704d1bfdb6e8p-57}, {0x1.4466d542bac92p-2, -0x1.04fe7bde135dfp-56},
{0x1.5248ae1701b17p-2, 0x1.be976387851c1p-56}, {0x1.604775fbb27dfp-2, 0x1.ac77af460d60ap-57},
{0x1.6e649f7d78649p-2, 0x1.78e945dc3913cp-57}, {0x1.7ca1a832d0f84p-2, -0x1.ee4e2b216ab8cp-56},
{0x1.8b00196b3d022p-2, -0x1.7327a64e1229dp-57}, {0x1.998188e816bf0p-2, 0x1.3dc181e8f9a99p-56},
{0x1.a827999fcef32p-2, 0x1.08b2fb1366ea9p-56}, {0x1.b6f3fc8c61e5bp-2, -0x1.a1a6ac60f81efp-57},
{0x1.c5e87185e67b6p-2, 0x1.ff57fa14eec2fp-59}, {0x1.d506c82a2c800p-2, 0x1.e19808ba6ac14p-57},
{0x1.e450e0d273e7ap-2, 0x1.41522f15e53c5p-56}, {0x1.f3c8ad985d9eep-2, 0x1.56988da4c4bacp-59},
{0x1.01b819b5a7cf7p-1, 0x1.0bfceebbe8797p-55}, {0x1.09a4c59bd0d4dp-1, -0x1.50ca527eaf477p-59},
{0x1.11ab7190834ecp-1, -0x1.e564bcd1e635dp-55}, {0x1.19cd3fe8e405dp-1, -0x1.4e47e0a655706p-55},
{0x1.220b5ef047825p-1, 0x1.aed6fb930f332p-58}, {0x1.2a6709a74f289p-1, 0x1.6e6d4a65123b1p-56},
{0x1.32e1889047ffdp-1, -0x1.10b4421e6a4f8p-55}, {0x1.3b7c3289ed6f3p-1, -0x1.c4afc9c7cbe7ep-55},
{0x1.44386db9ce5dbp-1, -0x1.a7d457cee5076p-55}, {0x1.4d17b087b265dp-1, -0x1.885b7a8a267fbp-56},
{0x1.561b82ab7f990p-1, 0x1.7a8c52172b675p-55}, {0x1.5f457e4f4812ep-1, 0x1.f71fdb590c2bap-55},
{0x1.6897514751db6p-1, 0x1.439bc2d43ebfcp-56}, {0x1.7212be621be6dp-1, 0x1.ad52a614d0f8ep-55},
{0x1.7bb99ed2990cfp-1, -0x1.aa7538e44e996p-55}, {0x1.858de3b716571p-1, 0x1.c682666d6d8c7p-55},
{0x1.8f9197bf85eebp-1, -0x1.78bf71a952738p-56}, {0x1.99c6e0f634394p-1, 0x1.1a76b9103fbfap-55},
{0x1.a43002ae42850p-1, -0x1.a6db80fe796fep-56}, {0x1.aecf5f9ba35a6p-1, 0x1.5b5f994ac2a63p-59},
{0x1.b9a77c18c1af2p-1, 0x1.6fc7e578d57abp-56}, {0x1.c4bb009e77983p-1, -0x1.2f33321f26146p-58},
{0x1.d00cbc7384d2ep-1, 0x1.8dcad85e60fbep-56}, {0x1.db9fa89953fcfp-1, 0x1.bd3a07e67cab7p-61},
{0x1.e776eafc91706p-1, 0x1.915eabb7f20cbp-55}, {0x1.f395d9f0e3c92p-1, -0x1.47d150a88aa18p-58},
{0x1p+0, 0.0},
};

/// (tan(r) - r) / r^3 in r^2, |r| <= pi/512, within 2^-55.5.
inline constexpr double kTangent[] = {0x1.5555555555555p-2, 0x1.1111111111115p-3, 0x1.ba1ba1b7f3110p-5, 0x1.6652152263c41p-6};

}  // namespace exact::tables

#endif
