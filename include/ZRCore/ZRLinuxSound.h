// SPDX-License-Identifier: Apache-2.0
/// @file
/// How a Linux system's sound is made and where it goes; for ZRLinuxOptions.
#ifndef ZRCORE_ZRLINUXSOUND_H
#define ZRCORE_ZRLINUXSOUND_H

#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRPlatform.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A WAV file (one channel of 16 bits, 22050 samples a second) that takes the place of the sound server. What is played
/// is written one after the other. Main thread.
///
/// At first time passes as fast as sound comes, and all sound stands back to back. A host that replays something gives
/// the file the time of its replay: each prompt then stands where it would have been heard, with silence in between.
class ZR_EXPORT ZRSoundFile {
 public:
  /// Creates the file, or empties the one that is there.
  /// @return null when it cannot be written; `fault` then says why.
  static std::shared_ptr<ZRSoundFile> create(const std::string& path, std::string& fault);
  /// Writes into an empty file that the host has opened for reading and writing, and keeps.
  /// @return null when it cannot be written; `fault` then says why.
  static std::shared_ptr<ZRSoundFile> createIn(int descriptor, std::string& fault);
  virtual ~ZRSoundFile();

  /// It is so many seconds after the file's beginning; never less than before. What has been heard by then is reported.
  virtual void setTimeSeconds(double seconds) = 0;
  /// From now on time passes as fast as sound comes.
  virtual void letTimePass() = 0;
  /// Whether nothing is under way that belongs to this moment: no engine has yet to speak, nothing has yet to be told.
  virtual bool isSettled() const = 0;
  /// The length of what has been written.
  virtual double lengthSeconds() const = 0;
  /// Completes the file, after which it takes no sound. @return what went wrong while it was written; empty: nothing.
  virtual std::string close() = 0;
};

/// How speech and sound are made on Linux.
struct ZRLinuxSoundOptions {
  /// The size of the structure that the host was built with. A library that knows more options takes the others from
  /// its own defaults. Not to be changed.
  std::uint32_t size = sizeof(ZRLinuxSoundOptions);

  /// The speech engine: reads UTF-8 from its standard input and writes WAV to its standard output. %v stands for the
  /// voice's language tag, %r for the words per minute, %a for the volume in percent. No shell takes part.
  std::vector<std::string> speechCommand = {"espeak-ng", "--stdin", "--stdout", "-b", "1", "-v",
                                            "%v",        "-s",      "%r",       "-a", "%a"};
  /// The seconds for which the engine may be silent before it is given up.
  double speechPatienceSeconds = 5.0;
  /// Null: sound goes to the sound server.
  std::shared_ptr<ZRSoundFile> soundFile;
  /// The folder of the notes about lowered streams of other applications. Hosts that share the folder lower each stream
  /// only once, and restore it when the host that lowered it has crashed. The folder must belong to this user and have
  /// mode 700. Empty: a folder of the user's session.
  std::string stateFolder;
};

/// Whether the sound of a platform made with these options has come to rest: nothing of ours is heard, and no other
/// application's stream has yet to be restored. A host that ends iterates its loop until then; one that exits without
/// restores first, for which half a second is spent at the most. Main thread.
ZR_EXPORT bool ZRLinuxSoundIsSettled(const ZRPlatform& platform);

/// Restores what processes of this user have lowered and left so when they were killed: streams, and the volumes that
/// the server remembers for their applications' next ones. Makes a connection of its own, if there is anything to
/// restore, and needs no platform. Any thread.
/// @param fault        why what was left could not all be restored, in words; empty when it was, or nothing was left
/// @param seconds      the longest time that it may take
/// @param stateFolder  as in ZRLinuxSoundOptions
/// @return how many volumes were restored
ZR_EXPORT int ZRRestoreLinuxSound(std::string& fault, double seconds = 0.5, const std::string& stateFolder = {});

/// From now on an end of this process by any signal that has no handler yet, and is not ignored, restores first what
/// the process has lowered. A signal's handler cannot do so itself: it starts this program once more for that alone,
/// and waits for it, a second at the most. So this is the first thing that `main` does.
/// @return true in the process that was started for that: it has restored, and `main` is to return.
[[nodiscard]] ZR_EXPORT bool ZRGuardLinuxSound(int argc, char** argv);

/// What the guard does first, for a host's own handlers of signals that end the process. Async-signal-safe; does
/// nothing without a guard.
ZR_EXPORT void ZRRestoreLinuxSoundAtSuddenEnd();

#endif
