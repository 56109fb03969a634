// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_OUTSIDEPROGRAMS_H
#define ZRCORE_PLATFORM_GTK_OUTSIDEPROGRAMS_H

#include <string>

#include "DialogLayer.h"

/// Dialogues about an address that leads out of a page. Each names it. `presenter` is who ends them, by
/// DialogLayer::dismiss.

/// Asks, by its name, whether the system's program for the address may open it; without one, says so. No other program
/// than that one is started.
void askToOpenOutside(DialogLayer& layer, const void* presenter, const std::string& address);

void sayThatNoProgramOpens(DialogLayer& layer, const void* presenter, const std::string& address);

/// Says that such an address is not opened at all.
void sayThatNothingOpens(DialogLayer& layer, const void* presenter, const std::string& address);

#endif
