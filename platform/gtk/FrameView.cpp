// SPDX-License-Identifier: Apache-2.0
#include "FrameView.h"

#include <algorithm>

namespace {

/// The widget of a FrameView: a GtkWidget that asks its view where its children lie.
struct FrameWidget {
  GtkWidget parent;
  FrameView* view;  ///< null when it has gone
  bool isAllocating;
};

FrameWidget* frameWidget(GtkWidget* widget) { return reinterpret_cast<FrameWidget*>(widget); }

GtkWidgetClass* parentClass() { return GTK_WIDGET_CLASS(g_type_class_peek(GTK_TYPE_WIDGET)); }

void measure(GtkWidget* widget, GtkOrientation orientation, int, int* minimum, int* natural, int*, int*) {
  *minimum = 0;
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
    int least = 0;
    gtk_widget_measure(child, orientation, -1, &least, nullptr, nullptr, nullptr);
    *minimum = std::max(*minimum, least);
  }
  *natural = *minimum;
  if (const FrameView* const view = frameWidget(widget)->view) {
    const CGRect& frame = view->frame();
    const double extent = orientation == GTK_ORIENTATION_HORIZONTAL ? frame.width : frame.height;
    *natural = std::max(*minimum, wholePoints(extent));
  }
}

void allocateChild(GtkWidget* child, const CGRect& frame) {
  int leastWidth = 0;
  int leastHeight = 0;
  gtk_widget_measure(child, GTK_ORIENTATION_HORIZONTAL, -1, &leastWidth, nullptr, nullptr, nullptr);
  const int width = std::max(leastWidth, wholePoints(frame.width));
  gtk_widget_measure(child, GTK_ORIENTATION_VERTICAL, width, &leastHeight, nullptr, nullptr, nullptr);
  const int height = std::max(leastHeight, wholePoints(frame.height));
  const GtkAllocation place{wholePoints(frame.x), wholePoints(frame.y), width, height};
  gtk_widget_size_allocate(child, &place, -1);
}

void sizeAllocate(GtkWidget* widget, int width, int height, int) {
  FrameWidget* const self = frameWidget(widget);
  if (!self->view) return;
  self->isAllocating = true;
  const CGRect& frame = self->view->frame();
  self->view->setFrame({frame.x, frame.y, static_cast<double>(width), static_cast<double>(height)});
  for (const auto& view : self->view->subviews()) {
    if (GtkWidget* const child = HasWidget::of(view)) allocateChild(child, view->frame());
  }
  self->isAllocating = false;
}

void unparentChildren(GtkWidget* widget) {
  while (GtkWidget* const child = gtk_widget_get_first_child(widget)) gtk_widget_unparent(child);
}

void dispose(GObject* object) {
  unparentChildren(GTK_WIDGET(object));
  G_OBJECT_CLASS(parentClass())->dispose(object);
}

GType frameWidgetType() {
  static const GType type = [] {
    const auto initialiseClass = [](gpointer cls, gpointer) {
      GTK_WIDGET_CLASS(cls)->measure = measure;
      GTK_WIDGET_CLASS(cls)->size_allocate = sizeAllocate;
      G_OBJECT_CLASS(cls)->dispose = dispose;
      gtk_widget_class_set_css_name(GTK_WIDGET_CLASS(cls), "zrview");
    };
    return g_type_register_static_simple(GTK_TYPE_WIDGET, "ZRFrameWidget", sizeof(GtkWidgetClass), initialiseClass,
                                         sizeof(FrameWidget), nullptr, GTypeFlags{});
  }();
  return type;
}

}  // namespace

void frameOfWidgetHasChanged(GtkWidget* widget) {
  GtkWidget* const around = gtk_widget_get_parent(widget);
  if (around && G_TYPE_CHECK_INSTANCE_TYPE(around, frameWidgetType()) && !frameWidget(around)->isAllocating) {
    gtk_widget_queue_allocate(around);
  }
}

FrameView::FrameView(const CGRect& frame)
    : Shown(GTK_WIDGET(g_object_new(frameWidgetType(), "overflow", GTK_OVERFLOW_HIDDEN, nullptr)), frame) {
  frameWidget(widget())->view = this;
}

FrameView::~FrameView() {
  frameWidget(widget())->view = nullptr;
  unparentChildren(widget());
}

void FrameView::addSubview(std::shared_ptr<UIView> view) {
  if (GtkWidget* const child = HasWidget::of(view)) gtk_widget_set_parent(child, widget());
  UIView::addSubview(std::move(view));
}

void FrameView::setBackgroundColor(const std::optional<UIColor>& color) {
  UIView::setBackgroundColor(color);
  // White is what screens are asked for; other colours would need a style sheet a view.
  if (color == UIColor::whiteColor()) {
    gtk_widget_add_css_class(widget(), "zr-white");
  } else {
    gtk_widget_remove_css_class(widget(), "zr-white");
  }
}
