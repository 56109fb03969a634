// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_BROWSERCHROME_H
#define ZRCORE_PLATFORM_GTK_BROWSERCHROME_H

#include <ZRCore/ZRWebViewController.h>
#include <gtk/gtk.h>

/// What a desktop expects around the in-app browser: names for a screen reader, and keys.

/// Names the browser's buttons, which show pictures and arrows only.
void nameButtons(const ZRWebViewController& browser);

/// Does what a key means to a browser. @return whether it means anything.
bool pressKey(ZRWebViewController& browser, unsigned key, GdkModifierType modifiers);

#endif
