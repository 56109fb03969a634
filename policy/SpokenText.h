// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_SPOKENTEXT_H
#define ZRCORE_POLICY_SPOKENTEXT_H

#include <string>

namespace policy {

/// A text as a speech engine may have it: a blank in place of each control character but tab and line feed. Engines
/// take them for commands that set volume, speed and voice, which are not the text's to set.
std::string spokenText(std::string text);

}  // namespace policy

#endif
