// SPDX-License-Identifier: Apache-2.0
#include "Gtk.h"

namespace demo {

void chooseFile(GtkWindow* parent, const char* title, const std::string& neighbour, GtkFileFilter* filter,
                std::function<void(const std::string&)> chosen) {
  GtkFileChooserNative* const chooser =
      gtk_file_chooser_native_new(title, parent, GTK_FILE_CHOOSER_ACTION_OPEN, "_Open", "_Cancel");
  gtk_file_chooser_add_filter(GTK_FILE_CHOOSER(chooser), filter);
  GtkFileFilter* const all = gtk_file_filter_new();
  gtk_file_filter_set_name(all, "All files");
  gtk_file_filter_add_pattern(all, "*");
  gtk_file_chooser_add_filter(GTK_FILE_CHOOSER(chooser), all);
  g_object_unref(filter);
  g_object_unref(all);
  const Ref<GFile> file(g_file_new_for_path(neighbour.c_str()));
  const Ref<GFile> folder(g_file_get_parent(file.get()));
  if (folder) gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(chooser), folder.get(), nullptr);
  gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(chooser), TRUE);
  connect<void(GtkNativeDialog*, int)>(
      chooser, "response", [chosen = std::move(chosen)](GtkNativeDialog* dialog, int response) {
        if (response == GTK_RESPONSE_ACCEPT) {
          const Ref<GFile> picked(gtk_file_chooser_get_file(GTK_FILE_CHOOSER(dialog)));
          const std::unique_ptr<char, decltype(&g_free)> path(g_file_get_path(picked.get()), g_free);
          if (path) chosen(path.get());
        }
        g_object_unref(dialog);
      });
  gtk_native_dialog_show(GTK_NATIVE_DIALOG(chooser));
}

}  // namespace demo
