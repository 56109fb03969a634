// SPDX-License-Identifier: Apache-2.0
// Writes the manual pages and the shells' completion of the programs, from what the programs' help says:
// zrcore-pages FOLDER. Each program gets a folder there, as it lies in share/ of a prefix.
#include <demo/DemoOptions.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "Completion.h"
#include "ManPage.h"

namespace {

CommandText demoText() {
  CommandText text{"zrcore-demo", demo::kSummary, std::string("zrcore-demo [OPTIONS] ") + demo::kArguments, "", {}};
  text.options.push_back({{"--help"}, "--help", "Show all options and exit"});  // GLib's own
  for (const demo::OptionRow& row : demo::kOptions) {
    const std::string name = std::string("--") + row.name;
    const bool takesValue = row.valueName != nullptr;
    text.options.push_back({{name}, takesValue ? name + "=" + row.valueName : name, row.description, takesValue});
  }
  return text;
}

void write(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out << text;
  if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
}

void writeAll(const std::filesystem::path& folder) {
  CommandLine tool("zrcore", ZRCORE_VERSION, kToolDescription);
  addCommands(tool);
  const std::vector<CommandText> texts = tool.texts();
  const std::vector<CommandText> commands(texts.begin() + 1, texts.end());
  const CommandText demo = demoText();

  std::vector<std::string> names{pages::pageName(demo)};
  for (const CommandText& text : texts) names.push_back(pages::pageName(text));
  const auto writePage = [&](const CommandText& text, const std::vector<CommandText>& its, const char* program) {
    write(folder / program / "man/man1" / (pages::pageName(text) + ".1"),
          pages::manPage(text, "zrcore " ZRCORE_VERSION, its, names));
  };
  // A command that is no more has no page.
  for (const char* const program : {"zrcore", "zrcore-demo"}) {
    std::filesystem::remove_all(folder / program / "man/man1");
  }
  writePage(texts.front(), commands, "zrcore");
  for (const CommandText& command : commands) writePage(command, {}, "zrcore");
  writePage(demo, {}, "zrcore-demo");
  write(folder / "zrcore/bash-completion/completions/zrcore", pages::bashCompletion(texts));
  write(folder / "zrcore/zsh/site-functions/_zrcore", pages::zshCompletion(texts));
  write(folder / "zrcore/fish/vendor_completions.d/zrcore.fish", pages::fishCompletion(texts));
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 2) throw std::runtime_error("usage: zrcore-pages FOLDER");
    writeAll(argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zrcore-pages: %s\n", error.what());
    return 1;
  }
}
