// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRAnnotation.h>

ZRAnnotation::~ZRAnnotation() = default;
std::optional<std::string> ZRAnnotation::title() const { return std::nullopt; }
std::optional<std::string> ZRAnnotation::subtitle() const { return std::nullopt; }

ZRMovableAnnotation::~ZRMovableAnnotation() = default;
ZRNavigableAnnotation::~ZRNavigableAnnotation() = default;
ZRReusableAnnotation::~ZRReusableAnnotation() = default;
