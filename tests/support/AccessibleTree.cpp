// SPDX-License-Identifier: Apache-2.0
#include "AccessibleTree.h"

#include <chrono>
#include <memory>

using Clock = std::chrono::steady_clock;

namespace {

constexpr int kDeepest = 60;
constexpr int kPatienceMilliseconds = 10000;          // for an answer
constexpr std::chrono::seconds kPatienceForPart{60};  // for a part
constexpr unsigned kFocusable = 11, kVisible = 30;    // bits of AT-SPI's states

constexpr const char* kRegistry = R"xml(<node>
  <interface name="org.a11y.atspi.Socket"><method name="Embed"><arg type="(so)" direction="in"/>
    <arg type="(so)" direction="out"/></method></interface>
  <interface name="org.a11y.atspi.Registry">
    <method name="GetRegisteredEvents"><arg type="a(ss)" direction="out"/></method></interface>
</node>)xml";

struct UnrefVariant {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Value = std::unique_ptr<GVariant, UnrefVariant>;

}  // namespace

AccessibleTree::AccessibleTree() : context_(g_main_context_new()) {
  g_main_context_push_thread_default(context_);
  while (!(connection_ = bus_.connect())) g_thread_yield();
  GDBusNodeInfo* const info = g_dbus_node_info_new_for_xml(kRegistry, nullptr);
  static const GDBusInterfaceVTable table = {answer, nullptr, nullptr, {}};
  const char* const paths[] = {"/org/a11y/atspi/accessible/root", "/org/a11y/atspi/registry"};
  for (int i = 0; i < 2; ++i) {
    g_dbus_connection_register_object(connection_, paths[i], info->interfaces[i], &table, this, nullptr, nullptr);
  }
  g_dbus_node_info_unref(info);
  g_bus_own_name_on_connection(connection_, "org.a11y.atspi.Registry", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr,
                               nullptr, nullptr);
  g_main_context_pop_thread_default(context_);
}

AccessibleTree::~AccessibleTree() {
  g_dbus_connection_close_sync(connection_, nullptr, nullptr);
  g_object_unref(connection_);
  g_main_context_unref(context_);
}

void AccessibleTree::answer(GDBusConnection*, const char*, const char*, const char*, const char* method,
                            GVariant* arguments, GDBusMethodInvocation* call, gpointer self) {
  if (g_strcmp0(method, "Embed") != 0) {
    return g_dbus_method_invocation_return_value(call, g_variant_new("(a(ss))", nullptr));
  }
  const char *bus = nullptr, *path = nullptr;
  g_variant_get(arguments, "((&s&o))", &bus, &path);
  static_cast<AccessibleTree*>(self)->program_ = {bus, path};
  g_dbus_method_invocation_return_value(
      call, g_variant_new("((so))", "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"));
}

/// Null when the part has gone meanwhile.
GVariant* AccessibleTree::ask(const Place& place, const char* interface, const char* method, GVariant* arguments,
                              const char* type) const {
  return g_dbus_connection_call_sync(connection_, place.bus.c_str(), place.path.c_str(), interface, method, arguments,
                                     G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE, kPatienceMilliseconds, nullptr,
                                     nullptr);
}

std::string AccessibleTree::textOf(const Place& place, const char* property) const {
  const Value answered(ask(place, "org.freedesktop.DBus.Properties", "Get",
                           g_variant_new("(ss)", "org.a11y.atspi.Accessible", property), "(v)"));
  if (!answered) return {};
  GVariant* inner = nullptr;
  g_variant_get(answered.get(), "(v)", &inner);
  const Value text(inner);
  return g_variant_get_string(text.get(), nullptr);
}

/// Newest window first, for what comes up is what a test looks for. @return whether `visit` wants to see more
bool AccessibleTree::walk(const Place& place, const std::string& around, int depth, const Visit& visit) const {
  constexpr const char* kInterface = "org.a11y.atspi.Accessible";
  if (depth > kDeepest) return true;
  const Value states(ask(place, kInterface, "GetState", nullptr, "(au)"));
  const Value role(ask(place, kInterface, "GetRoleName", nullptr, "(s)"));
  if (!states || !role) return true;
  const Value bits(g_variant_get_child_value(states.get(), 0));
  const auto has = [&bits](unsigned state) {
    guint32 word = 0;
    g_variant_get_child(bits.get(), state / 32, "u", &word);
    return (word >> state % 32 & 1U) != 0;
  };
  if (depth > 0 && !has(kVisible)) return true;
  const char* roleName = nullptr;
  g_variant_get(role.get(), "(&s)", &roleName);
  const Part part{roleName, textOf(place, "Name"), has(kFocusable), around, place};
  if (!visit(part)) return false;
  const Value answered(ask(place, kInterface, "GetChildren", nullptr, "(a(so))"));
  if (!answered) return true;
  const Value children(g_variant_get_child_value(answered.get(), 0));
  const std::string path = around + "/" + part.role + (part.name.empty() ? "" : " " + part.name);
  const gsize count = g_variant_n_children(children.get());
  for (gsize i = 0; i < count; ++i) {
    const char *bus = nullptr, *child = nullptr;
    g_variant_get_child(children.get(), depth == 0 ? count - 1 - i : i, "(&s&o)", &bus, &child);
    if (!walk({bus, child}, path, depth + 1, visit)) return false;
  }
  return true;
}

void AccessibleTree::look(const Visit& visit) {
  for (const auto deadline = Clock::now() + kPatienceForPart; program_.bus.empty() && Clock::now() < deadline;) {
    g_main_context_iteration(context_, FALSE);
  }
  while (g_main_context_iteration(context_, FALSE)) {
  }
  if (!program_.bus.empty()) walk(program_, "", 0, visit);
}

std::vector<AccessibleTree::Part> AccessibleTree::parts() {
  std::vector<Part> found;
  look([&found](const Part& part) {
    found.push_back(part);
    return true;
  });
  return found;
}

std::vector<AccessibleTree::Part> AccessibleTree::partsOfNewestWindow() {
  std::vector<Part> found;
  look([&found](const Part& part) {
    const bool isNextWindow = found.size() > 1 && part.around == found[1].around;
    if (!isNextWindow) found.push_back(part);
    return !isNextWindow;
  });
  return found;
}

std::optional<AccessibleTree::Part> AccessibleTree::find(const Visit& fits) {
  std::optional<Part> found;
  for (const auto deadline = Clock::now() + kPatienceForPart; !found && Clock::now() < deadline;) {
    look([&](const Part& part) {
      if (fits(part)) found = part;
      return !found;
    });
  }
  return found;
}

bool AccessibleTree::waitFor(const std::string& text) {
  return find([&text](const Part& part) { return part.name.find(text) != std::string::npos; }).has_value();
}

bool AccessibleTree::press(const std::string& name) {
  const auto part = find([&name](const Part& each) { return each.isFocusable && each.name == name; });
  if (!part) return false;
  const Value done(ask(part->place, "org.a11y.atspi.Action", "DoAction", g_variant_new("(i)", 0), "(b)"));
  return done != nullptr;
}
