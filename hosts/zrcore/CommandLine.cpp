// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>

#include "ExitCodes.h"
#include "Messages.h"
#include "NearestName.h"
#include "StandardOutput.h"

namespace {

/// What was probably meant; where nothing is near, where to look.
std::string remedy(std::string_view word, const std::vector<std::string>& names, const std::string& otherwise) {
  const auto nearest = nearestName(word, names);
  return nearest ? "; did you mean '" + *nearest + "'?" : otherwise;
}

std::vector<std::string> commandNames(const CLI::App& tool) {
  std::vector<std::string> names;
  for (const CLI::App* command : tool.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
  }
  return names;
}

std::string unknownCommand(const CLI::App& tool, const std::string& name) {
  return inQuotes(name) + " is no command" + remedy(name, commandNames(tool), "; 'zrcore help' lists them");
}

/// What is wrong, in one line; with the name that was probably meant, where there is one.
/// @param tool  which has just refused to parse the line
/// @param text  of the refusal
std::string commandLineFault(const CLI::App& tool, std::string_view text) {
  const auto parsed = tool.get_subcommands();
  const CLI::App& command = parsed.empty() ? tool : *parsed.front();
  const std::string help = "; 'zrcore help" + (parsed.empty() ? "" : " " + command.get_name()) + "' says more";

  // What is left over tells more than what is missing: a slip is the likely cause of both.
  for (const CLI::App* app : {&tool, &command}) {
    const std::vector<std::string> left = app->remaining();
    const auto option = std::find_if(left.begin(), left.end(), [](const auto& word) { return word.starts_with('-'); });
    if (option == left.end()) continue;
    const std::string word = option->substr(0, option->find('='));
    const std::string of = app == &tool ? "zrcore" : "zrcore " + app->get_name();
    return inQuotes(word) + " is no option of '" + of + "'" + remedy(word, optionNames(*app), help);
  }
  const std::vector<std::string> left = command.remaining();
  if (parsed.empty()) return left.empty() ? "give a command; 'zrcore help' lists them" : unknownCommand(tool, left[0]);
  if (!left.empty()) return inQuotes(left[0]) + " is one argument too many" + help;
  return ZRPrintableText(text, 2 * ZRLongestExcerpt) + help;
}

}  // namespace

CommandOption& CommandOption::required() {
  option_->required();
  return *this;
}

CommandOption& CommandOption::valueName(const std::string& name) {
  option_->type_name(name);
  return *this;
}

CommandOption& CommandOption::oneOf(const std::vector<std::string>& values) {
  option_->check(CLI::IsMember(values));
  return *this;
}

CommandOption& CommandOption::from0To1() { return within(0.0, 1.0, "from 0 to 1"); }

CommandOption& CommandOption::positive() {
  using Limits = std::numeric_limits<double>;
  return within(Limits::denorm_min(), Limits::max(), "above 0");
}

CommandOption& CommandOption::needs(const CommandOption& other) {
  option_->needs(other.option_);
  return *this;
}

CommandOption& CommandOption::excludes(const CommandOption& other) {
  option_->excludes(other.option_);
  return *this;
}

CommandOption& CommandOption::wholeNumber() {
  return check([](const std::string& text) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool holds = error == std::errc() && end == text.data() + text.size();
    return holds ? std::string() : inQuotes(text) + " is no whole number from -2147483648 to 2147483647";
  });
}

CommandOption& CommandOption::notEmpty() {
  return check([](const std::string& text) { return text.empty() ? "the name is empty" : std::string(); });
}

// CLI11's own checks let "nan" pass, and print the greatest double with all its 309 digits.
CommandOption& CommandOption::within(double lowest, double highest, const std::string& rule) {
  return check([=](const std::string& text) {
    double number = 0.0;
    const bool holds = CLI::detail::lexical_cast(text, number) && number >= lowest && number <= highest;
    return holds ? std::string() : inQuotes(text) + " is no number " + rule;
  });
}

CommandOption& CommandOption::check(std::function<std::string(const std::string& text)> faultOf) {
  option_->check(std::move(faultOf));
  return *this;
}

template <class Value>
CommandOption Command::option(const std::string& name, Value& value, const std::string& description) {
  return CommandOption(*command_->add_option(name, value, description));
}
template CommandOption Command::option(const std::string&, std::string&, const std::string&);
template CommandOption Command::option(const std::string&, float&, const std::string&);
template CommandOption Command::option(const std::string&, std::int64_t&, const std::string&);
template CommandOption Command::option(const std::string&, std::optional<std::string>&, const std::string&);
template CommandOption Command::option(const std::string&, std::optional<float>&, const std::string&);
template CommandOption Command::option(const std::string&, std::optional<double>&, const std::string&);
template CommandOption Command::option(const std::string&, std::vector<std::string>&, const std::string&);

CommandOption Command::option(const std::string& name, std::function<void(const std::string&)> read,
                              const std::string& description) {
  return CommandOption(*command_->add_option_function<std::string>(name, read, description));
}

CommandOption Command::flag(const std::string& name, bool& value, const std::string& description) {
  return CommandOption(*command_->add_flag(name, value, description));
}

CommandLine::CommandLine(const std::string& name, const std::string& version, const std::string& description)
    : tool_(std::make_unique<CLI::App>(description, name)), exitCode_(kExitDone) {
  tool_->set_version_flag("--version", name + " " + version);
  tool_->require_subcommand(1);
}

CommandLine::~CommandLine() = default;

Command CommandLine::add(const std::string& name, const std::string& description, const std::string& footer,
                         std::function<int()> run) {
  CLI::App& command = *tool_->add_subcommand(name, description);
  command.footer(footer);
  command.callback([this, name, run = std::move(run)] {
    if (beforeRun_) beforeRun_(name);
    exitCode_ = run();
  });
  return Command(command);
}

int CommandLine::showHelp(const std::string& name) const {
  const auto commands =
      tool_->get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
  if (!name.empty() && commands.empty()) {
    std::fprintf(stderr, "zrcore: %s\n", unknownCommand(*tool_, name).c_str());
    return kExitUsage;
  }
  StandardOutput output;
  const CLI::App& shown = name.empty() ? *tool_ : *commands.front();
  // Not by help(), which would give that of this very command.
  const std::string title = tool_->get_name() + (name.empty() ? "" : " " + name);
  output.write(shown.get_formatter()->make_help(&shown, title, CLI::AppFormatMode::Normal));
  output.flush();
  return kExitDone;
}

void CommandLine::addHelp() {
  const auto name = std::make_shared<std::string>();
  Command help =
      add("help", "Shows what a command does, and its options.", "", [this, name] { return showHelp(*name); });
  help.option("COMMAND", *name, "The command; without it, all are listed");
}

int CommandLine::run(int argc, char** argv) {
  addHelp();
  std::string fault;
  try {
    tool_->parse(argc, argv);
    return exitCode_;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return tool_->exit(error);  // it prints help and version
    fault = error.what();
  } catch (const UsageFault& usage) {
    fault = usage.option() + ": " + usage.what();
  }
  std::fprintf(stderr, "zrcore: %s\n", commandLineFault(*tool_, fault).c_str());
  return kExitUsage;
}
