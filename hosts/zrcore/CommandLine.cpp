// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include <text/Numbers.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <sstream>
#include <type_traits>

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

/// None of an argument.
std::vector<std::string> namesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  return names;
}

std::vector<std::string> optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (std::string& name : namesOf(*option)) names.push_back(std::move(name));
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

/// @param faultOf  what is wrong with a text; empty when nothing is
Rule check(std::function<std::string(const std::string& text)> faultOf) {
  return [faultOf = std::move(faultOf)](AnyOption& option) { option.handle().check(faultOf); };
}

/// CLI11's own checks let "nan" pass, and tell the greatest double with all its 309 digits.
/// @param lowest, highest  both allowed
Rule within(double lowest, double highest, const std::string& range) {
  return check([=](const std::string& text) {
    double number = 0.0;
    const bool holds = CLI::detail::lexical_cast(text, number) && number >= lowest && number <= highest;
    return holds ? std::string() : inQuotes(text) + " is no number " + range;
  });
}

/// Help or version, which end the parsing like faults.
int show(const CLI::App& tool, const CLI::ParseError& asked) {
  std::ostringstream text;
  tool.exit(asked, text, text);
  StandardOutput output;
  output.write(text.str());
  output.flush();
  return kExitDone;
}

}  // namespace

namespace rule {

Rule required() {
  return [](AnyOption& option) { option.handle().required(); };
}

Rule notEmpty() {
  return check([](const std::string& text) { return text.empty() ? "the name is empty" : std::string(); });
}

Rule oneOf(std::vector<std::string> values) {
  return [values = std::move(values)](AnyOption& option) {
    option.handle().check(CLI::IsMember(values));
    for (const std::string& value : values) option.offers.push_back({value});
  };
}

Rule from0To1() { return within(0.0, 1.0, "from 0 to 1"); }

Rule positive() {
  using Limits = std::numeric_limits<double>;
  return within(Limits::denorm_min(), Limits::max(), "above 0");
}

Rule wholeNumber() {
  return check([](const std::string& given) {
    return text::numberIn<std::int32_t>(given) ? std::string()
                                               : inQuotes(given) + " is no whole number from -2147483648 to 2147483647";
  });
}

Rule needs(const AnyOption& other) {
  return [&other](AnyOption& option) { option.handle().needs(&other.handle()); };
}

Rule excludes(const AnyOption& other) {
  return [&other](AnyOption& option) { option.handle().excludes(&other.handle()); };
}

Rule offers(std::vector<Offer> all) {
  return [all = std::move(all)](AnyOption& option) { option.offers = all; };
}

}  // namespace rule

bool AnyOption::isIgnored() const { return option_->count() > 0 && !isRead_; }

template <class Value>
void Options::declare(AnyOption& member, const std::string& name, Value& value, const std::string& description,
                      const std::vector<Rule>& rules) {
  const auto blank = std::min(name.find(' '), name.size());
  CLI::Option* option = nullptr;
  if constexpr (std::is_same_v<Value, bool>) {
    option = command_->add_flag(name, value, description);
  } else if constexpr (std::is_invocable_v<Value, const std::string&>) {
    option = command_->add_option_function<std::string>(name.substr(0, blank), value, description);
  } else {
    option = command_->add_option(name.substr(0, blank), value, description);
  }
  const bool isArgument = !name.starts_with('-');
  if (blank < name.size() || isArgument) option->type_name(isArgument ? "" : name.substr(blank + 1));
  member.option_ = option;
  for (const Rule& rule : rules) rule(member);
  members_.push_back(&member);
}

using Read = std::function<void(const std::string&)>;
using Rules = std::vector<Rule>;
template void Options::declare(AnyOption&, const std::string&, std::string&, const std::string&, const Rules&);
template void Options::declare(AnyOption&, const std::string&, bool&, const std::string&, const Rules&);
template void Options::declare(AnyOption&, const std::string&, float&, const std::string&, const Rules&);
template void Options::declare(AnyOption&, const std::string&, std::int64_t&, const std::string&, const Rules&);
template void Options::declare(AnyOption&, const std::string&, std::optional<std::string>&, const std::string&,
                               const Rules&);
template void Options::declare(AnyOption&, const std::string&, std::optional<float>&, const std::string&, const Rules&);
template void Options::declare(AnyOption&, const std::string&, std::optional<double>&, const std::string&,
                               const Rules&);
template void Options::declare(AnyOption&, const std::string&, std::vector<std::string>&, const std::string&,
                               const Rules&);
template void Options::declare(AnyOption&, const std::string&, Read&, const std::string&, const Rules&);

void Options::requireHeeded() const {
  for (const AnyOption* const option : members_) {
    if (option->isIgnored()) throw std::logic_error(option->handle().get_name() + " was given, and nothing heeds it");
  }
}

std::vector<Offer> Options::offersFor(const CLI::Option& option) const {
  for (const AnyOption* const member : members_) {
    if (&member->handle() == &option) return member->offers;
  }
  return {};
}

CommandLine::CommandLine(const std::string& name, const std::string& version, const std::string& description)
    : tool_(std::make_unique<CLI::App>(description, name)), exitCode_(kExitDone) {
  tool_->set_version_flag("--version", name + " " + version);
  tool_->require_subcommand(1);
}

CommandLine::~CommandLine() = default;

CLI::App& CommandLine::addCommand(const std::string& name, const std::string& description, const std::string& footer) {
  CLI::App& command = *tool_->add_subcommand(name, description);
  command.footer(footer);
  return command;
}

void CommandLine::setRun(const Options& options, const std::string& name, std::function<int()> run) {
  options_[name] = &options;
  tool_->get_subcommand(name)->callback([this, &options, name, run = std::move(run)] {
    if (beforeRun_) beforeRun_(name);
    exitCode_ = run();
    if (exitCode_ == kExitDone) options.requireHeeded();
  });
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
  struct HelpOptions : Options {
    using Options::Options;
    Option<std::string> command{
        *this, "COMMAND", "The command; without it, all are listed", {rule::offers({{"", Offer::What::command}})}};
  };
  add<HelpOptions>("help", "Shows what a command does, and its options.", "",
                   [this](const HelpOptions& options) { return showHelp(*options.command); });
}

std::vector<CommandText> CommandLine::texts() const {
  const CLI::Formatter formatter;
  const auto textOf = [&](const CLI::App& app, const std::string& title, const Options* options) {
    CommandText text{title, app.get_description(), formatter.make_usage(&app, title), app.get_footer(), {}};
    for (const CLI::Option* option : app.get_options()) {
      const bool isArgument = option->get_positional();
      OptionText of{namesOf(*option)};
      of.head = formatter.make_option_name(option, isArgument) + formatter.make_option_opts(option);
      of.description = formatter.make_option_desc(option);
      of.takesValue = option->get_expected_min() > 0;
      if (options != nullptr) of.offers = options->offersFor(*option);
      text.options.push_back(std::move(of));
    }
    return text;
  };
  std::vector<CommandText> texts{textOf(*tool_, tool_->get_name(), nullptr)};
  for (const CLI::App* command : tool_->get_subcommands({})) {
    const std::string& name = command->get_name();
    texts.push_back(textOf(*command, tool_->get_name() + " " + name, options_.at(name)));
  }
  return texts;
}

int CommandLine::run(int argc, char** argv) {
  std::string fault;
  try {
    tool_->parse(argc, argv);
    return exitCode_;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return show(*tool_, error);
    fault = error.what();
  } catch (const UsageFault& usage) {
    fault = usage.option() + ": " + usage.what();
  }
  std::fprintf(stderr, "zrcore: %s\n", commandLineFault(*tool_, fault).c_str());
  return kExitUsage;
}
