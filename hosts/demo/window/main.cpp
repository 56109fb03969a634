// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGtkPlatform.h>
#include <ZRCore/ZRLinuxPlatform.h>
#include <demo/DemoOptions.h>
#include <demo/DemoTexts.h>
#include <demo/SpeechFaultLog.h>
#include <glib-unix.h>

#include <csignal>
#include <cstdio>
#include <filesystem>

#include "DemoWindow.h"

namespace {

/// A file or folder beside an installed program, else that of the sources which it was built from.
std::string packaged(const char* fromPrefix, const char* ofSources) {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  const auto installed = program.parent_path().parent_path() / fromPrefix;
  return std::filesystem::exists(installed, error) ? installed.string() : ofSources;
}

std::optional<std::string> textGiven(GVariantDict* given, const char* option) {
  const char* text = nullptr;
  return g_variant_dict_lookup(given, option, "&s", &text) ? std::optional<std::string>(text) : std::nullopt;
}

demo::DemoWindow::Options options;
std::shared_ptr<ZRLifeFollowing> life;
std::shared_ptr<void> windows;

void present(GApplication* application, std::unique_ptr<demo::DemoWindow>& window) {
  if (!window) window = std::make_unique<demo::DemoWindow>(ADW_APPLICATION(application), options);
}

/// Ends as if the window had been closed, so that the next start finds what was open.
void closeOnSignals(std::unique_ptr<demo::DemoWindow>& window) {
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
    g_unix_signal_add(
        signal,
        [](gpointer shown) -> gboolean {
          if (const auto& open = *static_cast<std::unique_ptr<demo::DemoWindow>*>(shown)) open->close();
          return G_SOURCE_CONTINUE;
        },
        &window);
  }
}

/// GTK is there by now, and has found a display.
void installPlatform() {
  ZRLinuxOptions system;
  system.informationFile =
      packaged("share/zrcore/org.zrcore.Demo.information", ZRCORE_DEMO_DATA "/org.zrcore.Demo.information");
  ZRPlatform platform = makeLinuxPlatform(system);
  platform.bundle = demo::withDemoTexts(platform.bundle);
  const auto log = std::make_shared<demo::SpeechFaultLog>(platform.log);
  platform.log = log;
  options.lastFault = [log] { return log->lastFault(); };
  const bool isInstalled = ZRFillGtkPlatform(platform) && ZRPlatformInstall(platform);
  if (!isInstalled) g_error("something has used the framework before its platform was installed");
}

/// The location service gives its receiver free when no window has been seen for a while, or the system sleeps.
void followLife() {
  ZRLinuxLife followed;
  followed.followsTerminal = false;
  life = ZRFollowLinuxLife(followed);
  windows = ZRGtkFollowWindows([](bool isSeen) { life->setWindowSeen(isSeen); });
}

/// Lets the person choose between light and dark, or leave it to the system.
void addStyleAction(GApplication* application) {
  GVariant* const atStart = g_variant_new_string("system");
  GSimpleAction* const style = g_simple_action_new_stateful("style", G_VARIANT_TYPE_STRING, atStart);
  demo::connect<void(GSimpleAction*, GVariant*)>(style, "activate", [](GSimpleAction* action, GVariant* value) {
    const std::string name = g_variant_get_string(value, nullptr);
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), name == "dark"    ? ADW_COLOR_SCHEME_FORCE_DARK
                                                                        : name == "light" ? ADW_COLOR_SCHEME_FORCE_LIGHT
                                                                                          : ADW_COLOR_SCHEME_DEFAULT);
    g_simple_action_set_state(action, value);
  });
  g_action_map_add_action(G_ACTION_MAP(application), G_ACTION(style));
  g_object_unref(style);
}

void addOptions(GApplication* application) {
  for (const demo::OptionRow& row : demo::kOptions) {
    const GOptionArg kind = row.valueName == nullptr ? G_OPTION_ARG_NONE : G_OPTION_ARG_STRING;
    g_application_add_main_option(application, row.name, 0, G_OPTION_FLAG_NONE, kind, row.description, row.valueName);
  }
  g_application_set_option_context_parameter_string(application, demo::kArguments);
  g_application_set_option_context_summary(application, demo::kSummary);
}

}  // namespace

int main(int argc, char** argv) {
  if (ZRGuardLinuxSound(argc, argv)) return 0;
  options.samples = packaged("share/zrcore/samples", ZRCORE_SAMPLES);

  const demo::Ref<AdwApplication> application(adw_application_new(
      "org.zrcore.Demo", static_cast<GApplicationFlags>(G_APPLICATION_NON_UNIQUE | G_APPLICATION_HANDLES_OPEN)));
  addOptions(G_APPLICATION(application.get()));
  demo::connect<int(GApplication*, GVariantDict*)>(
      application.get(), "handle-local-options", [](GApplication*, GVariantDict* given) {
        if (g_variant_dict_contains(given, demo::kVersion.name)) {
          std::puts("zrcore-demo " ZRCORE_VERSION);
          return 0;
        }
        options.printsState = g_variant_dict_contains(given, demo::kPrintState.name);
        options.tiles = textGiven(given, demo::kTiles.name);
        options.tilesAttribution = textGiven(given, demo::kTilesAttribution.name);
        return -1;  // go on
      });
  std::unique_ptr<demo::DemoWindow> window;
  demo::connect<void(GApplication*)>(application.get(), "startup", [](GApplication* self) {
    addStyleAction(self);
    installPlatform();
    followLife();
  });
  closeOnSignals(window);
  demo::connect<void(GApplication*)>(application.get(), "activate", [&](GApplication* self) {
    present(self, window);
    window->openTheRest();
  });
  demo::connect<void(GApplication*, GFile**, int, char*)>(
      application.get(), "open", [&](GApplication* self, GFile** files, int count, char*) {
        present(self, window);
        for (int i = 0; i < count; ++i) {
          const std::unique_ptr<char, decltype(&g_free)> path(g_file_get_path(files[i]), g_free);
          if (path) window->open(path.get());
        }
        window->openTheRest();
      });
  const int exitCode = g_application_run(G_APPLICATION(application.get()), argc, argv);
  windows.reset();
  life.reset();
  return exitCode;
}
