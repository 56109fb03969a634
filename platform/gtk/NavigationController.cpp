// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRWebViewController.h>
#include <adwaita.h>

#include <utility>

#include "BrowserChrome.h"
#include "DialogLayer.h"
#include "FrameView.h"
#include "GtkText.h"
#include "ToolbarView.h"

namespace {

/// Of a host that is too long for the bar, the end tells whose it is.
void keepEndOfSubtitle(GtkWidget* widget) {
  if (GTK_IS_LABEL(widget) && gtk_widget_has_css_class(widget, "subtitle")) {
    gtk_label_set_ellipsize(GTK_LABEL(widget), PANGO_ELLIPSIZE_START);
  }
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
    keepEndOfSubtitle(child);
  }
}

}  // namespace

class __attribute__((visibility("hidden"))) ZRGtkNavigationController::Impl {
 public:
  struct Page {
    std::shared_ptr<UIViewController> controller;
    GtkWidget* widget;
    AdwHeaderBar* header;
    AdwWindowTitle* title;
    GtkWidget* right = nullptr;
    std::shared_ptr<UIBarButtonItem> rightItem = nullptr;  ///< holds the view that `right` may be of
  };

  Impl();
  ~Impl();

  void push(const std::shared_ptr<UIViewController>& controller, bool animated);
  void pop(bool animated);
  void appear(bool animated);
  void remove(const Page& page);
  void showItem(const UIViewController* controller);
  gboolean keyPressed(unsigned key, GdkModifierType modifiers);

  GtkStack* stack = GTK_STACK(gtk_stack_new());
  DialogLayer layer{GTK_WIDGET(stack)};
  GtkEventController* keys = gtk_event_controller_key_new();
  std::vector<Page> pages;
  std::vector<std::shared_ptr<UIViewController>> controllers;
  std::weak_ptr<UINavigationController> self;
  std::function<void()> emptied;
  std::function<void(const std::string&)> titleChanged;

 private:
  Page makePage(const std::shared_ptr<UIViewController>& controller);
};

ZRGtkNavigationController::Impl::Impl() {
  gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);  // a page may not keep them from the user
  g_signal_connect(keys, "key-pressed",
                   G_CALLBACK(+[](GtkEventControllerKey*, guint key, guint, GdkModifierType modifiers, gpointer impl) {
                     return static_cast<Impl*>(impl)->keyPressed(key, modifiers);
                   }),
                   this);
  gtk_widget_add_controller(layer.widget(), keys);
  gtk_stack_set_transition_duration(stack, 200);
}

ZRGtkNavigationController::Impl::~Impl() {
  for (const Page& page : pages) remove(page);
  gtk_widget_remove_controller(layer.widget(), keys);  // the widget may live on in the host's window
}

ZRGtkNavigationController::Impl::Page ZRGtkNavigationController::Impl::makePage(
    const std::shared_ptr<UIViewController>& controller) {
  Page page{controller, gtk_box_new(GTK_ORIENTATION_VERTICAL, 0), ADW_HEADER_BAR(adw_header_bar_new()),
            ADW_WINDOW_TITLE(adw_window_title_new("", ""))};
  adw_header_bar_set_title_widget(page.header, GTK_WIDGET(page.title));
  keepEndOfSubtitle(GTK_WIDGET(page.title));
  if (!pages.empty() || emptied) {
    GtkWidget* const back = gtk_button_new_from_icon_name("go-previous-symbolic");
    gtk_widget_set_tooltip_text(back, hostText("Close").c_str());
    gtk_accessible_update_property(GTK_ACCESSIBLE(back), GTK_ACCESSIBLE_PROPERTY_LABEL, hostText("Close").c_str(), -1);
    g_signal_connect_swapped(back, "clicked", G_CALLBACK(+[](Impl* impl) { impl->pop(true); }), this);
    adw_header_bar_pack_start(page.header, back);
  }
  gtk_box_append(GTK_BOX(page.widget), GTK_WIDGET(page.header));
  if (GtkWidget* const view = HasWidget::of(controller->view())) {
    gtk_widget_set_vexpand(view, TRUE);
    gtk_box_append(GTK_BOX(page.widget), view);
  }
  return page;
}

void ZRGtkNavigationController::Impl::push(const std::shared_ptr<UIViewController>& controller, bool animated) {
  controller->setNavigationController(self);
  if (const auto browser = std::dynamic_pointer_cast<ZRWebViewController>(controller)) {
    nameButtons(*browser);
    followPage(browser, [this, shown = controller.get()] { showItem(shown); });
  }
  pages.push_back(makePage(controller));
  controllers.push_back(controller);
  controller->navigationItem().setChangeHandler([this, shown = controller.get()] { showItem(shown); });
  gtk_stack_add_child(stack, pages.back().widget);
  gtk_stack_set_transition_type(stack, GTK_STACK_TRANSITION_TYPE_SLIDE_LEFT);
  appear(animated && pages.size() > 1);
}

void ZRGtkNavigationController::Impl::appear(bool animated) {
  const Page page = pages.back();
  page.controller->viewWillAppear(animated);
  if (pages.empty() || pages.back().widget != page.widget) return;  // it has pushed another, or taken itself away
  if (!animated) gtk_stack_set_transition_type(stack, GTK_STACK_TRANSITION_TYPE_NONE);
  gtk_stack_set_visible_child(stack, page.widget);
  showItem(page.controller.get());
}

void ZRGtkNavigationController::Impl::remove(const Page& page) {
  page.controller->navigationItem().setChangeHandler(nullptr);
  if (const auto browser = std::dynamic_pointer_cast<ZRWebViewController>(page.controller)) {
    followPage(browser, nullptr);
  }
  page.controller->setNavigationController({});
  layer.dismiss(page.controller.get());
  if (GtkWidget* const view = HasWidget::of(page.controller->view())) gtk_box_remove(GTK_BOX(page.widget), view);
  gtk_stack_remove(stack, page.widget);
}

void ZRGtkNavigationController::Impl::pop(bool animated) {
  if (pages.empty()) return;
  const Page last = std::move(pages.back());
  pages.pop_back();
  controllers.pop_back();
  if (!pages.empty()) {
    gtk_stack_set_transition_type(stack, GTK_STACK_TRANSITION_TYPE_SLIDE_RIGHT);
    appear(animated);
  }
  remove(last);
  // The controller may be the one that asked; and nobody is told by a stack that has gone meanwhile.
  runLater([controller = last.controller, weak = self] {
    const auto alive = std::static_pointer_cast<ZRGtkNavigationController>(weak.lock());
    if (!alive || !alive->impl_->pages.empty()) return;
    const auto handler = alive->impl_->emptied;  // it may take itself away
    if (handler) handler();
  });
}

void ZRGtkNavigationController::Impl::showItem(const UIViewController* controller) {
  for (Page& page : pages) {
    if (page.controller.get() != controller) continue;
    UINavigationItem& item = page.controller->navigationItem();
    const std::string title = shownText(item.title().value_or(""));
    adw_window_title_set_title(page.title, title.c_str());
    const auto browser = std::dynamic_pointer_cast<ZRWebViewController>(page.controller);
    adw_window_title_set_subtitle(page.title, browser ? hostOf(*browser).c_str() : "");
    if (item.rightBarButtonItem() != page.rightItem) {
      if (page.right) adw_header_bar_remove(page.header, page.right);
      page.rightItem = item.rightBarButtonItem();
      page.right = page.rightItem ? makeBarItemWidget(page.rightItem) : nullptr;
      if (page.right) adw_header_bar_pack_end(page.header, page.right);
    }
    if (&page == &pages.back() && titleChanged) {
      const auto told = titleChanged;
      told(title);
    }
    return;  // whoever was told may have changed the pages
  }
}

gboolean ZRGtkNavigationController::Impl::keyPressed(unsigned key, GdkModifierType modifiers) {
  if (pages.empty()) return FALSE;
  if (layer.hasDialog()) return key == GDK_KEY_Escape && layer.cancelTop();
  const auto browser = std::dynamic_pointer_cast<ZRWebViewController>(pages.back().controller);
  return browser && pressKey(*browser, key, modifiers);
}

ZRGtkNavigationController::ZRGtkNavigationController() : impl_(std::make_unique<Impl>()) {}
ZRGtkNavigationController::~ZRGtkNavigationController() = default;

std::shared_ptr<ZRGtkNavigationController> ZRGtkNavigationController::init() {
  auto controller = std::shared_ptr<ZRGtkNavigationController>(new ZRGtkNavigationController);
  controller->impl_->self = controller;
  return controller;
}

GtkWidget* ZRGtkNavigationController::widget() const { return impl_->layer.widget(); }

void ZRGtkNavigationController::pushViewController(const std::shared_ptr<UIViewController>& controller, bool animated) {
  if (controller) impl_->push(controller, animated);
}

const std::vector<std::shared_ptr<UIViewController>>& ZRGtkNavigationController::viewControllers() const {
  return impl_->controllers;
}

void ZRGtkNavigationController::setEmptiedHandler(std::function<void()> handler) {
  impl_->emptied = std::move(handler);
}

UINavigationBar ZRGtkNavigationController::navigationBar() const {
  UINavigationBar bar;
  if (!impl_->pages.empty()) {
    int height = 0;
    gtk_widget_measure(GTK_WIDGET(impl_->pages.back().header), GTK_ORIENTATION_VERTICAL, -1, nullptr, &height, nullptr,
                       nullptr);
    bar.frame.height = height;
  }
  bar.barStyle = adw_style_manager_get_dark(adw_style_manager_get_default()) ? UIBarStyle::black : UIBarStyle::standard;
  return bar;
}

void ZRGtkNavigationController::popViewControllerAnimated(bool animated) { impl_->pop(animated); }

void ZRGtkNavigationController::setTitleHandler(std::function<void(const std::string&)> handler) {
  impl_->titleChanged = std::move(handler);
}

GtkWindow* ZRGtkOpenWindow(const std::shared_ptr<UIViewController>& controller, GtkWindow* parent,
                           ZRGtkWindowSize size) {
  if (!controller || !HasWidget::of(controller->view())) return nullptr;
  GtkWindow* const window = GTK_WINDOW(adw_window_new());
  const auto stack = ZRGtkNavigationController::init();
  stack->setTitleHandler([window](const std::string& title) { gtk_window_set_title(window, title.c_str()); });
  stack->pushViewController(controller, false);
  stack->setEmptiedHandler([window] { gtk_window_destroy(window); });
  adw_window_set_content(ADW_WINDOW(window), stack->widget());
  gtk_window_set_default_size(window, size.width, size.height);
  gtk_window_set_transient_for(window, parent);

  using Held = std::shared_ptr<ZRGtkNavigationController>;
  const auto letGo = +[](GtkWindow*, gpointer data) {
    Held& held = *static_cast<Held*>(data);
    held->setTitleHandler(nullptr);  // others may keep the stack, but the window has gone
    held->setEmptiedHandler(nullptr);
    held.reset();
  };
  g_signal_connect_data(
      window, "destroy", G_CALLBACK(letGo), new Held(stack),
      [](gpointer held, GClosure*) { delete static_cast<Held*>(held); }, GConnectFlags{});
  gtk_window_present(window);
  return window;
}
