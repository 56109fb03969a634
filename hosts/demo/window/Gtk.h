// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_GTK_H
#define ZRCORE_HOSTS_DEMO_WINDOW_GTK_H

#include <adwaita.h>
#include <owners/GLib.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace demo {

using owners::Ref;

/// Calls `handler` at each `signal` of `object`, for as long as the object lives. The signature is that of the signal's
/// C handler, without its last argument: connect<void(GtkButton*)>(button, "clicked", ...).
template <class Signature>
class SignalHandler;

template <class Result, class... Arguments>
class SignalHandler<Result(Arguments...)> {
 public:
  using Function = std::function<Result(Arguments...)>;

  static gulong connect(gpointer object, const char* signal, Function handler) {
    const auto release = [](gpointer function, GClosure*) { delete static_cast<Function*>(function); };
    return g_signal_connect_data(object, signal, G_CALLBACK(call), new Function(std::move(handler)), release,
                                 G_CONNECT_DEFAULT);
  }

 private:
  static Result call(Arguments... arguments, gpointer function) noexcept {
    return (*static_cast<Function*>(function))(arguments...);
  }
};

template <class Signature>
gulong connect(gpointer object, const char* signal, std::function<Signature> handler) {
  return SignalHandler<Signature>::connect(object, signal, std::move(handler));
}

/// As above, where only that the property has changed matters.
inline gulong connectNotify(gpointer object, const char* property, std::function<void()> handler) {
  return connect<void(GObject*, GParamSpec*)>(object, (std::string("notify::") + property).c_str(),
                                              [handler = std::move(handler)](GObject*, GParamSpec*) { handler(); });
}

/// A part of the window, made from one of the packaged descriptions.
class Ui {
 public:
  /// @param name  of the description: "trip" for trip.ui
  explicit Ui(const std::string& name)
      : builder_(gtk_builder_new_from_resource(("/org/zrcore/Demo/" + name + ".ui").c_str())) {
    nameMnemonicButtons();
  }

  /// The object with this name in the description. One that is not there, or of another type, ends the program.
  template <class Type>
  Type* get(GType type, const char* id) const {
    GObject* const object = gtk_builder_get_object(builder_.get(), id);
    if (object == nullptr || !g_type_is_a(G_OBJECT_TYPE(object), type)) {
      g_error("no %s named \"%s\" in the window's description", g_type_name(type), id);
    }
    return reinterpret_cast<Type*>(object);
  }
  GtkWidget* widget(const char* id) const { return get<GtkWidget>(GTK_TYPE_WIDGET, id); }
  GtkLabel* label(const char* id) const { return get<GtkLabel>(GTK_TYPE_LABEL, id); }
  GtkSwitch* toggle(const char* id) const { return get<GtkSwitch>(GTK_TYPE_SWITCH, id); }

 private:
  /// GTK names a button by its text as it was given, underscore included, and once more by its label, which is enough.
  void nameMnemonicButtons() const {
    GSList* const objects = gtk_builder_get_objects(builder_.get());
    for (const GSList* at = objects; at != nullptr; at = at->next) {
      if (GTK_IS_BUTTON(at->data) && gtk_button_get_use_underline(GTK_BUTTON(at->data))) {
        gtk_accessible_reset_property(GTK_ACCESSIBLE(at->data), GTK_ACCESSIBLE_PROPERTY_LABEL);
      }
    }
    g_slist_free(objects);
  }

  Ref<GtkBuilder> builder_;
};

/// Asks for one file and hands its path to `chosen`, unless the person thinks better of it.
/// @param neighbour  a file in the folder to begin in
/// @param filter     what is offered at first; taken over
void chooseFile(GtkWindow* parent, const char* title, const std::string& neighbour, GtkFileFilter* filter,
                std::function<void(const std::string&)> chosen);

}  // namespace demo

#endif
