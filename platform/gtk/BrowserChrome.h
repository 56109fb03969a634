// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_BROWSERCHROME_H
#define ZRCORE_PLATFORM_GTK_BROWSERCHROME_H

#include <ZRCore/ZRWebViewController.h>
#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

/// What a desktop expects around the in-app browser: names for a screen reader, and keys.

/// Names the browser's buttons, which show pictures and arrows only.
void nameButtons(const ZRWebViewController& browser);

/// Whose page the browser shows, for people; empty for none.
std::string hostOf(const ZRWebViewController& browser);

/// Has `changed` called when the host may have changed. Lets the spinner, which the controller leaves as it is when a
/// load fails, come to rest then. @param changed  null: no more
void followPage(const std::shared_ptr<ZRWebViewController>& browser, std::function<void()> changed);

/// Does what a key means to a browser. @return whether it means anything.
bool pressKey(ZRWebViewController& browser, unsigned key, GdkModifierType modifiers);

#endif
