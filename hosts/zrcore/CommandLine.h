// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_COMMANDLINE_H
#define ZRCORE_HOSTS_ZRCORE_COMMANDLINE_H

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "CommandText.h"

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

/// Something that a subcommand can be told, whatever its type.
class AnyOption {
 public:
  AnyOption(const AnyOption&) = delete;
  AnyOption& operator=(const AnyOption&) = delete;

  CLI::Option& handle() const { return *option_; }
  /// Whether it was given on the command line, and nobody has read it.
  bool isIgnored() const;

  std::vector<Offer> offers;  ///< of completion, for the value

 protected:
  AnyOption() = default;
  ~AnyOption() = default;

  mutable bool isRead_ = false;

 private:
  friend class Options;
  CLI::Option* option_ = nullptr;
};

/// What an option's value must be like, which others must stand beside it, or what completion offers for it.
using Rule = std::function<void(AnyOption& option)>;

namespace rule {

Rule required();
Rule notEmpty();
Rule oneOf(std::vector<std::string> values);
Rule from0To1();
Rule positive();
Rule wholeNumber();  ///< of 32 bits
Rule needs(const AnyOption& other);
Rule excludes(const AnyOption& other);
Rule offers(std::vector<Offer> all);

}  // namespace rule

/// The options of a subcommand, of which each is a member that declares itself:
///
///     struct SayOptions : Options {
///       using Options::Options;
///       Option<std::optional<float>> rate{*this, "--rate R", "From 0, slow, to 1, fast [0.5]", {rule::from0To1()}};
///     };
///
/// So none is read that the command line does not know; and one that was given and that a run never read is a fault of
/// the tool, of which `CommandLine::run` makes an exception.
class Options {
 public:
  explicit Options(CLI::App& command) : command_(&command) {}
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;

  /// @throws std::logic_error  an option was given and ignored
  void requireHeeded() const;
  /// What completion offers for the value of an option of the command, which may be none of the members.
  std::vector<Offer> offersFor(const CLI::Option& option) const;

 private:
  template <class Value>
  friend class Option;

  /// @param name   with the value's name behind a blank: "--rate R"; an argument has no "--" and no value's name
  /// @param value  gets what is given: a std::string, bool, float, std::int64_t, std::vector<std::string>, an
  ///               std::optional of std::string, float or double, or a function of the text
  template <class Value>
  void declare(AnyOption& member, const std::string& name, Value& value, const std::string& description,
               const std::vector<Rule>& rules);

  CLI::App* command_;
  std::vector<const AnyOption*> members_;
};

/// An option, flag or argument, and what the command line says of it.
template <class Value>
class Option final : public AnyOption {
 public:
  Option(Options& all, const std::string& name, const std::string& description, const std::vector<Rule>& rules = {},
         Value initial = {})
      : value_(std::move(initial)) {
    all.declare(*this, name, value_, description, rules);
  }
  /// @param read  makes the value of the text that is given; may throw UsageFault
  Option(Options& all, const std::string& name, const std::string& description,
         Value (*read)(const std::string& option, const std::string& text), const std::vector<Rule>& rules = {},
         Value initial = {})
      : value_(std::move(initial)) {
    std::function<void(const std::string&)> take =
        [this, read, option = name.substr(0, name.find(' '))](const std::string& text) { value_ = read(option, text); };
    all.declare(*this, name, take, description, rules);
  }

  const Value& operator*() const {
    isRead_ = true;
    return value_;
  }
  const Value* operator->() const { return &**this; }

 private:
  Value value_;
};

/// The subcommands and what was asked of them.
class CommandLine {
 public:
  CommandLine(const std::string& name, const std::string& version, const std::string& description);
  ~CommandLine();

  /// @param footer  the help's end
  /// @param run     returns the tool's exit code; may throw UsageFault before it does anything
  template <class Given>
  void add(const std::string& name, const std::string& description, const std::string& footer,
           std::function<int(const Given& options)> run) {
    const auto options = std::make_shared<Given>(addCommand(name, description, footer));
    setRun(*options, name, [options, run = std::move(run)] { return run(*options); });
  }
  /// @param act  called with the name of the subcommand that was asked for, before it runs
  void beforeRun(std::function<void(const std::string& command)> act) { beforeRun_ = std::move(act); }
  /// Does what is asked for. Help and version are printed, and in one line what must be
  /// changed.
  /// @return the tool's exit code
  /// @throws std::logic_error  a run ended well and has ignored an option
  int run(int argc, char** argv);
  /// Adds `help [COMMAND]`. Call it when the others are there.
  void addHelp();
  /// What the help says of the tool, and then of each subcommand.
  std::vector<CommandText> texts() const;

 private:
  CLI::App& addCommand(const std::string& name, const std::string& description, const std::string& footer);
  void setRun(const Options& options, const std::string& name, std::function<int()> run);
  int showHelp(const std::string& name) const;

  std::unique_ptr<CLI::App> tool_;
  std::map<std::string, const Options*> options_;  // of each subcommand
  std::function<void(const std::string&)> beforeRun_;
  int exitCode_;
};

#endif
