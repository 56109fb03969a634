// SPDX-License-Identifier: Apache-2.0
/// @file
/// Owners of what GLib counts. What ends with its block has GLib's own, `g_autoptr` and `g_autofree`.
#ifndef ZRCORE_PLATFORM_OWNERS_GLIB_H
#define ZRCORE_PLATFORM_OWNERS_GLIB_H

#include <glib-object.h>

#include <memory>

namespace owners {

struct EndSource {
  void operator()(GSource* source) const {
    g_source_destroy(source);
    g_source_unref(source);
  }
};

/// A source of events, which ends with its owner.
using Source = std::unique_ptr<GSource, EndSource>;

struct Release {
  void operator()(GMainContext* context) const { g_main_context_unref(context); }
  void operator()(gpointer object) const { g_object_unref(object); }
};

/// A reference to a GObject, or to a GMainContext. Made from a pointer it takes that reference over.
template <class Object>
using Ref = std::unique_ptr<Object, Release>;

/// A further reference to an object.
template <class Object>
Ref<Object> refTo(Object* object) {
  return Ref<Object>(static_cast<Object*>(g_object_ref(object)));
}

/// The first reference to a widget that has been made.
template <class Widget>
Ref<Widget> refToNew(Widget* widget) {
  return Ref<Widget>(static_cast<Widget*>(g_object_ref_sink(widget)));
}

}  // namespace owners

#endif
