// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_LOWEREDSOUND_H
#define ZRCORE_HOSTS_ZRCORE_LOWEREDSOUND_H

/// Other applications' sound, which is lowered while prompts are spoken: what becomes of it when that is cut short.
namespace loweredsound {

/// Restores what killed programs have left lowered, and says so on the standard error stream. Quick when there is nothing.
void restoreAtStart();

/// From now on a sudden end of this process restores first what it has lowered.
void guard();

/// A sudden end starts the tool again, with these two words on its command line.
/// @return whether it was started so; then that is done, and there is nothing else to do.
bool isHelper(int argc, char** argv);

}  // namespace loweredsound

#endif
