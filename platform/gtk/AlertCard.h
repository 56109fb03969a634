// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_GTK_ALERTCARD_H
#define ZRCORE_PLATFORM_GTK_ALERTCARD_H

#include <ZRCore/UIAlertController.h>
#include <gtk/gtk.h>

#include <functional>

/// The card of a dialogue: its texts, and a button for each action, in their order, one below the other. (The toolkit's
/// own dialogue turns the order round where the buttons do not fit side by side.)
/// @param chosen  called with an action's index when its button is pressed.
/// @return a floating widget that lies at the bottom, when it is an action sheet, or in the middle.
GtkWidget* makeAlertCard(const UIAlertController& alert, const std::function<void(std::size_t)>& chosen);

/// Puts the keyboard's focus on the first button of a sheet, and of an alert on "Cancel", if there is one: what is
/// under way as it appears must choose nothing.
void focusAlertCard(GtkWidget* card);

/// Lets the choices but for "Cancel" be made only after half a second.
void delayChoices(GtkWidget* card);

#endif
