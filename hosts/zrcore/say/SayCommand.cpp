// SPDX-License-Identifier: Apache-2.0
#include "SayCommand.h"

#include <zrcore/CommandLine.h>

#include <memory>

#include "SayRun.h"

namespace {

constexpr const char* kSayDescription = "Speaks texts, one after the other, as guidance speaks its prompts.";

constexpr const char* kSayFooter = R"(
While it speaks, other applications' sound is lowered. Messages go to the standard error stream.

Exit codes:
  0  every text was heard to its end (with --interrupt: the last)
  2  the command line must be changed; a file would be overwritten without --force
  3  the system does not give what is needed: no speech engine (espeak-ng), no such voice, no sound server, no room
     or no right to write; then there is no file
  129 to 153  128 and the number of the signal that ended it early

Examples:
  zrcore say "Turn left" "Turn right"
  zrcore say "Links abbiegen" --voice de --rate 0.6
  zrcore say "Turn left" --to wav:prompt.wav)";

}  // namespace

void addSayCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<SayArguments>();
  Command command = tool.add("say", kSayDescription, kSayFooter, [arguments] { return runSay(*arguments); });

  command.option("TEXT", arguments->texts, "What to say; each is a prompt of its own").required();
  command.option("--voice", arguments->voice, "A language tag, such as en-US or de [en-US]").valueName("TAG");
  command.option("--rate", arguments->rate, "From 0, slow, to 1, fast [0.5]").valueName("R").from0To1();
  command.option("--volume", arguments->volume, "From 0, silent, to 1 [1]").valueName("V").from0To1();
  command.flag("--interrupt", arguments->interrupt, "Let each text silence the one before it");
  command
      .option(
          "--to", [arguments](const std::string& text) { arguments->target = SoundTarget::parse("--to", text); },
          "sound: the sound server; wav:FILE: a WAV file [sound]")
      .valueName("TARGET");
  command.flag("--force", arguments->force, "Let --to overwrite a file");
}
