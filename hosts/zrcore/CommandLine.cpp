// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <optional>

#include "ExitCodes.h"

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

// CLI11's own checks let "nan" pass, and tell the greatest double with all its 309 digits.
CommandOption& CommandOption::within(double lowest, double highest, const std::string& rule) {
  const auto fault = [=](const std::string& text) {
    double number = 0.0;
    const bool holds = CLI::detail::lexical_cast(text, number) && number >= lowest && number <= highest;
    return holds ? std::string() : "'" + text + "' is no number " + rule;
  };
  option_->check(fault);
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

int CommandLine::run(int argc, char** argv) {
  try {
    tool_->parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return tool_->exit(error) == 0 ? kExitDone : kExitUsage;  // it prints help and version, too
  } catch (const UsageFault& fault) {
    tool_->exit(CLI::ValidationError(fault.option(), fault.what()));
    return kExitUsage;
  }
  return exitCode_;
}
