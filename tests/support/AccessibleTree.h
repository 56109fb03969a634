// SPDX-License-Identifier: Apache-2.0
/// @file
/// The parts of a program's windows as a screen reader meets them.
#ifndef ZRCORE_TESTS_SUPPORT_ACCESSIBLETREE_H
#define ZRCORE_TESTS_SUPPORT_ACCESSIBLETREE_H

#include <gio/gio.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "PrivateBus.h"
#include "TemporaryFolder.h"

/// A bus on which one GTK program reports what it shows. The test stands in for the registry that programs report to,
/// so that nothing of a desktop is needed but a bus.
class AccessibleTree {
 public:
  /// Where a part is to be found.
  struct Place {
    std::string bus, path;
  };
  struct Part {
    std::string role, name;
    bool isFocusable = false;
    std::string around;  ///< the roles and names of the parts around it, outermost first
    Place place;
  };

  static bool isInstalled() { return PrivateBus::isInstalled(); }

  AccessibleTree();
  ~AccessibleTree();
  AccessibleTree(const AccessibleTree&) = delete;
  AccessibleTree& operator=(const AccessibleTree&) = delete;

  /// For the program's AT_SPI_BUS_ADDRESS.
  std::string busAddress() const { return bus_.address(); }

  /// The parts of all windows, also of pages that are not in front. Empty when no program has reported in time.
  std::vector<Part> parts();
  std::vector<Part> partsOfNewestWindow();
  /// Waits for a part with that in its name. @return whether it came
  bool waitFor(const std::string& text);
  /// Does what the part of that name is there for, as soon as there is one. @return whether it was done
  bool press(const std::string& name);

 private:
  static void answer(GDBusConnection* connection, const char* sender, const char* path, const char* interface,
                     const char* method, GVariant* arguments, GDBusMethodInvocation* call, gpointer self);
  GVariant* ask(const Place& place, const char* interface, const char* method, GVariant* arguments,
                const char* type) const;
  std::string textOf(const Place& place, const char* property) const;
  using Visit = std::function<bool(const Part&)>;
  std::optional<Part> find(const Visit& fits);
  void look(const Visit& visit);
  bool walk(const Place& place, const std::string& around, int depth, const Visit& visit) const;

  TemporaryFolder folder_;
  PrivateBus bus_{folder_};
  GMainContext* context_;
  GDBusConnection* connection_ = nullptr;
  Place program_;  ///< its root; empty until it has reported
};

#endif
