// SPDX-License-Identifier: Apache-2.0
#include "ManPage.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>
#include <utility>

#include "Completion.h"

namespace pages {
namespace {

/// Text as man(7) reads it, in which a backslash begins an order, as a dot or an apostrophe does that begins a line.
std::string plain(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    const bool begins = escaped.empty() || escaped.back() == '\n';
    if (begins && (character == '.' || character == '\'')) escaped += "\\&";
    switch (character) {
      case '\\':
        escaped += "\\e";
        break;
      case '-':
        escaped += "\\-";
        break;  // typed as it is, not a hyphen
      case '\'':
        escaped += "\\(aq";
        break;
      case '`':
        escaped += "\\(ga";
        break;
      case '^':
        escaped += "\\(ha";
        break;
      case '~':
        escaped += "\\(ti";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

std::string bold(std::string_view text) { return "\\fB" + plain(text) + "\\fR"; }

/// "--out DIR": the name stands out, its value's name does not.
std::string optionHead(const OptionText& option) {
  const auto blank = option.head.find(' ');
  if (option.names.empty()) return bold(option.head) + "\n";
  return bold(option.head.substr(0, blank)) + (blank == option.head.npos ? "" : plain(option.head.substr(blank))) +
         "\n";
}

std::vector<std::string> linesIn(const std::string& text) {
  std::vector<std::string> all;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) all.push_back(line);
  return all;
}

/// A line is a paragraph's or a list's next, or a new one of these; the help wraps and indents them by hand.
class Paragraphs {
 public:
  void add(const std::string& line) {
    constexpr std::size_t kIndent = 2;
    const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
    if (indent == line.size()) return endParagraph();
    if (indent == 0 && line.back() == ':') return section(line.substr(0, line.size() - 1));
    if (isVerbatim_) {
      text += plain(line.substr(std::min(indent, kIndent))) + "\n";
      return;
    }
    const auto gap = line.find("  ", indent);
    if (indent == kIndent && gap != line.npos) return item(line.substr(indent, gap - indent), line.substr(gap));
    if (!isInParagraph_) text += ".PP\n";
    isInParagraph_ = true;
    text += plain(line.substr(indent)) + "\n";
  }
  void end() {
    if (std::exchange(isVerbatim_, false)) text += ".EE\n";
  }

  std::string text;

 private:
  void endParagraph() { isInParagraph_ = false; }
  void section(std::string title) {
    end();
    std::transform(title.begin(), title.end(), title.begin(), [](char letter) {
      return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    text += ".SH " + plain(title) + "\n";
    isInParagraph_ = true;  // which a section begins
    isVerbatim_ = title.starts_with("EXAMPLE");
    if (isVerbatim_) text += ".EX\n";
  }
  void item(const std::string& tag, const std::string& rest) {
    text += ".TP\n" + bold(tag) + "\n" + plain(rest.substr(rest.find_first_not_of(' '))) + "\n";
    isInParagraph_ = true;
  }

  bool isInParagraph_ = false;
  bool isVerbatim_ = false;
};

std::string section(const char* title, const std::vector<OptionText>& options, bool ofArguments) {
  std::string text;
  for (const OptionText& option : options) {
    if (option.names.empty() != ofArguments) continue;
    text += ".TP\n" + optionHead(option) + plain(option.description) + "\n";
  }
  return text.empty() ? text : std::string(".SH ") + title + "\n" + text;
}

}  // namespace

std::string pageName(const CommandText& command) {
  std::string name = command.name;
  std::replace(name.begin(), name.end(), ' ', '-');
  return name;
}

std::string manPage(const CommandText& command, const std::string& version, const std::vector<CommandText>& commands,
                    const std::vector<std::string>& others) {
  std::string title = pageName(command);
  std::transform(title.begin(), title.end(), title.begin(), [](unsigned char c) { return std::toupper(c); });
  std::string page = ".\\\" Made from what its --help says.\n.TH " + plain(title) + " 1 \"\" \"" + version +
                     "\" \"User Commands\"\n.SH NAME\n" + plain(pageName(command)) + " \\- " +
                     plain(brief(command.description)) + "\n.SH SYNOPSIS\n";
  std::string_view usage = command.usage;
  usage = usage.substr(usage.find(command.name) + command.name.size());
  page += bold(command.name) + plain(usage.substr(0, usage.find('\n'))) + "\n.SH DESCRIPTION\n";
  for (const std::string& line : linesIn(command.description)) page += plain(line) + "\n.br\n";
  if (!commands.empty()) page += ".SH COMMANDS\n";
  for (const CommandText& each : commands) {
    page += ".TP\n" + bold(each.name) + "\n" + plain(brief(each.description)) + ".\n";
  }
  page += section("ARGUMENTS", command.options, true) + section("OPTIONS", command.options, false);
  Paragraphs footer;
  for (const std::string& line : linesIn(command.footer)) footer.add(line);
  footer.end();
  if (!footer.text.empty() && !footer.text.starts_with(".SH")) page += ".SH NOTES\n";
  page += footer.text + ".SH SEE ALSO\n";
  std::string separator;
  for (const std::string& other : others) {
    if (other == pageName(command)) continue;
    page += separator + bold(other) + "(1)";
    separator = ",\n";
  }
  return page + "\n";
}

}  // namespace pages
