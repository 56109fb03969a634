// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_COMMANDLINE_H
#define ZRCORE_HOSTS_ZRCORE_COMMANDLINE_H

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// The tool's command line. CLI11 reads it, in one file: each that sees its templates compiles for some seconds more.

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// What must be changed on the command line, reported by whoever reads an option's text.
class UsageFault : public std::runtime_error {
 public:
  UsageFault(std::string option, const std::string& fault) : std::runtime_error(fault), option_(std::move(option)) {}
  const std::string& option() const { return option_; }

 private:
  std::string option_;
};

/// An option, flag or argument of a subcommand. A handle: copies mean the same one.
class CommandOption {
 public:
  explicit CommandOption(CLI::Option& option) : option_(&option) {}

  CommandOption& required();
  /// What stands for the value in the help.
  CommandOption& valueName(const std::string& name);
  CommandOption& oneOf(const std::vector<std::string>& values);
  CommandOption& from0To1();
  CommandOption& positive();
  CommandOption& wholeNumber();  ///< of 32 bits
  CommandOption& notEmpty();
  CommandOption& needs(const CommandOption& other);
  CommandOption& excludes(const CommandOption& other);

 private:
  /// @param lowest, highest  both allowed
  CommandOption& within(double lowest, double highest, const std::string& rule);
  CommandOption& check(std::function<std::string(const std::string& text)> faultOf);

  CLI::Option* option_;
};

/// A subcommand. A handle: copies mean the same one.
class Command {
 public:
  explicit Command(CLI::App& command) : command_(&command) {}

  /// @param name   begins with "--"; else an argument, by its place
  /// @param value  gets what is given and lives as long as the command line: std::string, float, std::int64_t, an
  ///               std::optional of std::string, float or double, or a std::vector<std::string> for several
  template <class Value>
  CommandOption option(const std::string& name, Value& value, const std::string& description);
  /// @param read  gets the text that is given; may throw UsageFault
  CommandOption option(const std::string& name, std::function<void(const std::string&)> read,
                       const std::string& description);
  CommandOption flag(const std::string& name, bool& value, const std::string& description);

 private:
  CLI::App* command_;
};

/// The subcommands and what was asked of them.
class CommandLine {
 public:
  CommandLine(const std::string& name, const std::string& version, const std::string& description);
  ~CommandLine();

  /// @param footer  the help's end
  /// @param run     returns the tool's exit code; may throw UsageFault before it does anything
  Command add(const std::string& name, const std::string& description, const std::string& footer,
              std::function<int()> run);
  /// @param act  called with the name of the subcommand that was asked for, before it runs
  void beforeRun(std::function<void(const std::string& command)> act) { beforeRun_ = std::move(act); }
  /// Does what is asked for. Help (`help [COMMAND]`, too) and version are printed, and in one line what must be
  /// changed.
  /// @return the tool's exit code
  int run(int argc, char** argv);

 private:
  void addHelp();
  int showHelp(const std::string& name) const;

  std::unique_ptr<CLI::App> tool_;
  std::function<void(const std::string&)> beforeRun_;
  int exitCode_;
};

#endif
