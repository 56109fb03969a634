// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_NAMES_H
#define ZRCORE_HOSTS_DEMO_WINDOW_NAMES_H

#include <string>

#include "Gtk.h"

namespace demo {

/// Names for a screen reader, where the toolkit gives its own parts none.

void setName(GtkWidget* widget, const std::string& name);

void nameButtons(GtkWidget* within, const std::string& name);

/// Names the scrolled parts within `widget`, which the keyboard can be in.
void nameScrolledParts(GtkWidget* widget, const std::string& name);

/// Names the button, the lists and the lines of a drop-down or a combo row: the lines by their texts, whenever there
/// may be new ones.
void nameChoices(GtkWidget* combo, const std::string& name);

}  // namespace demo

#endif
