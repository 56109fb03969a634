// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_MESSAGES_H
#define ZRCORE_HOSTS_ZRCORE_MESSAGES_H

#include <ZRCore/ZRPrintableText.h>
#include <readers/FixReader.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

/// What the tool has to say beside its results, a line each: "zrcore: FILE:LINE: text". Every line is made printable;
/// who puts a text from outside into one takes an excerpt of it.
class Messages {
 public:
  /// A damaged file has as many faults as lines: so many are reported one by one, the others are counted.
  static constexpr std::uint64_t kMostRemarks = 20;

  static void writeToStandardError(std::string_view line);

  /// @param writeLine  takes a line without its end
  explicit Messages(std::function<void(std::string_view line)> writeLine = writeToStandardError)
      : writeLine_(std::move(writeLine)) {}

  /// About one line of a file; of the first kMostRemarks only.
  void remark(std::string_view file, const readers::Remark& remark);

  /// About one part of a file, of which there may be as many faults as parts; of the first kMostRemarks only.
  void oneOfMany(std::string_view subject, std::string_view text);

  /// How many remarks were not reported, if any. Then the next file starts anew.
  void endRemarks(std::string_view file);

  /// About a file, a folder or an option as a whole.
  void about(std::string_view subject, std::string_view text);

  /// About the run.
  void say(std::string_view text);

 private:
  std::function<void(std::string_view)> writeLine_;
  std::uint64_t remarks_ = 0;
};

/// What is said after SIGXFSZ.
inline constexpr const char* kFileLimitReached = "a file has become as long as this process may make it (ulimit -f)";

/// As much of a text from outside as a message holds.
inline std::string excerpt(std::string_view text) { return ZRPrintableText(text, ZRLongestExcerpt); }

/// The same in quotation marks.
std::string inQuotes(std::string_view text);

/// A file's name as messages show it: of a long path the end; "standard input" for "-".
std::string shownName(std::string_view path);

#endif
