// SPDX-License-Identifier: Apache-2.0
// zrcore-browse: a window with the in-app browser, for the tests and for trying it by hand. It reports on stdout, one
// JSON object a line, what can be seen of it, whenever that has changed.
//
// zrcore-browse [--dark] [--size=WIDTHxHEIGHT] [--keep=FOLDER] ADDRESS
#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRWebViewController.h>
#include <adwaita.h>

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using nlohmann::json;

/// The browser, with an eye on what it is told.
class ObservedBrowser final : public ZRWebViewController {
 public:
  static std::shared_ptr<ObservedBrowser> open(const std::string& address) {
    const auto self = std::make_shared<ObservedBrowser>();
    self->initialiseWithUrl(NSURL::URLWithString(address));
    return self;
  }
  void webViewDidStartLoad(UIWebView& view) override {
    ZRWebViewController::webViewDidStartLoad(view);
    events.push_back("start");
  }
  void webViewDidFinishLoad(UIWebView& view) override {
    ZRWebViewController::webViewDidFinishLoad(view);
    events.push_back("finish");
  }
  void webViewDidFailLoadWithError(UIWebView& view, const NSError& error) override {
    ZRWebViewController::webViewDidFailLoadWithError(view, error);
    events.push_back("fail");
  }
  void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& composer, MFMailComposeResult result,
                                                     const std::optional<NSError>& error) override {
    ZRWebViewController::mailComposeControllerDidFinishWithResultError(composer, result, error);
    events.push_back("mail " + std::to_string(static_cast<int>(result)));
  }

  json events = json::array();
};

json look(const UIBarButtonItem& item) { return {{"title", item.title().value_or("")}, {"enabled", item.isEnabled()}}; }

/// The texts of a widget and the buttons that can be pressed, with the middle of each in the window; whether a spinner
/// turns.
void describe(GtkWidget* widget, GtkWidget* window, json& into) {
  if (!gtk_widget_get_mapped(widget)) return;
  graphene_rect_t bounds;
  const bool isButton = GTK_IS_BUTTON(widget);
  const bool isText = GTK_IS_LABEL(widget);
  if (isButton && !gtk_widget_is_sensitive(widget)) return;
  if (GTK_IS_SPINNER(widget)) into["turns"] = gtk_spinner_get_spinning(GTK_SPINNER(widget)) != FALSE;
  const bool isLaidOut = gtk_widget_get_width(widget) > 0 && gtk_widget_get_height(widget) > 0;
  if ((isButton || isText) && isLaidOut && gtk_widget_compute_bounds(widget, window, &bounds)) {
    const char* text = isText ? gtk_label_get_text(GTK_LABEL(widget)) : gtk_widget_get_tooltip_text(widget);
    if (isButton && !text) text = gtk_button_get_label(GTK_BUTTON(widget));
    if (isButton && gtk_widget_has_css_class(widget, "close")) text = "Close the window";
    double dx = 0.0;
    double dy = 0.0;
    gtk_native_get_surface_transform(GTK_NATIVE(window), &dx, &dy);
    if (text && *text) {
      into[isButton ? "buttons" : "texts"][text] = {static_cast<int>(bounds.origin.x + bounds.size.width / 2 + dx),
                                                    static_cast<int>(bounds.origin.y + bounds.size.height / 2 + dy)};
    }
  }
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
    describe(child, window, into);
  }
}

struct Report {
  std::shared_ptr<ObservedBrowser> browser;
  GtkWindow* window;
  std::string last = {};

  void print() {
    const char* const windowTitle = gtk_window_get_title(window);
    json seen = {{"events", browser->events},
                 {"back", look(*browser->backButton())},
                 {"forward", look(*browser->forwardButton())},
                 {"spins", browser->activityIndicator()->isAnimating()},
                 {"titleBytes", browser->title().value_or("").size()},
                 {"title", browser->title().value_or("").substr(0, 200)},
                 {"windowTitle", windowTitle ? windowTitle : ""},
                 {"share", browser->getUrlString().value_or("")},
                 {"width", gtk_widget_get_width(GTK_WIDGET(window))},
                 {"buttons", json::object()},
                 {"texts", json::object()}};
    describe(GTK_WIDGET(window), GTK_WIDGET(window), seen);
    std::string line = seen.dump(-1, ' ', false, json::error_handler_t::replace);
    if (line == last) return;
    std::cout << line << std::endl;
    last = std::move(line);
  }
};

}  // namespace

int main(int argc, char** argv) {
  ZRGtkWindowSize size;
  ZRGtkOptions options;
  bool isDark = false;
  std::string address;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--dark") {
      isDark = true;
    } else if (argument.starts_with("--keep=")) {
      options.websiteDataFolder = argument.substr(7);
    } else if (std::sscanf(argv[i], "--size=%dx%d", &size.width, &size.height) != 2) {
      address = argument;
    }
  }
  ZRPlatform platform;
  if (address.empty() || !ZRFillGtkPlatform(platform, options) || !ZRPlatformInstall(platform)) {
    std::cerr << "usage: zrcore-browse [--dark] [--size=WIDTHxHEIGHT] [--keep=FOLDER] ADDRESS, on a display\n";
    return 2;
  }
  adw_style_manager_set_color_scheme(adw_style_manager_get_default(),
                                     isDark ? ADW_COLOR_SCHEME_FORCE_DARK : ADW_COLOR_SCHEME_FORCE_LIGHT);
  Report report{ObservedBrowser::open(address), nullptr};
  report.window = ZRGtkOpenWindow(report.browser, nullptr, size);
  g_object_add_weak_pointer(G_OBJECT(report.window), reinterpret_cast<gpointer*>(&report.window));
  g_timeout_add(
      20,
      +[](gpointer data) -> gboolean {
        auto& shown = *static_cast<Report*>(data);
        if (shown.window) shown.print();
        return G_SOURCE_CONTINUE;
      },
      &report);
  while (report.window) g_main_context_iteration(nullptr, TRUE);
}
