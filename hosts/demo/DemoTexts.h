// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_DEMOTEXTS_H
#define ZRCORE_HOSTS_DEMO_DEMOTEXTS_H

#include <ZRCore/ZRBundle.h>

#include <memory>

namespace demo {

/// The bundle `system` with the demonstration's own words for texts of the framework that speak of another system's
/// programs. They hold in every language, as those of the demonstration's pages do.
std::shared_ptr<ZRBundle> withDemoTexts(std::shared_ptr<ZRBundle> system);

}  // namespace demo

#endif
