// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_GTKTEXT_H
#define ZRCORE_PLATFORM_GTK_GTKTEXT_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// The host's translation of an English text, or the text itself, as UTF-8.
std::string hostText(std::string_view english);

/// The text as UTF-8, whatever its bytes, as GTK asks for it; it ends at a NUL.
std::string utf8Text(std::string_view text);

/// A text from a page as it is shown: UTF-8, one line, nothing that turns the direction of what follows, no longer than
/// that. Titles of pages may be megabytes.
std::string shownText(std::string_view text, std::size_t mostBytes = 1024);

/// Runs `work` from the main loop, never inside this call. An empty function is passed over.
void runLater(std::function<void()> work);

#endif
