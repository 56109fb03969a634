// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_DUCKFILE_H
#define ZRCORE_LINUX_SOUND_DUCKFILE_H

#include <string>
#include <vector>

#include "sound/EngineProcess.h"

/// A process's note of what it has lowered, for other processes: those that want to lower the same, and a later one if
/// this one dies. Each process has a file of its own, locked for as long as it lives: a file that can be locked is a dead
/// one's.
class DuckFile {
 public:
  /// @param folder  made when it is needed; empty: a folder of the user's session.
  explicit DuckFile(std::string folder);

  /// Keeps other processes from deciding at the same moment, for as long as the result lives. Waits for them 20 ms at the
  /// most: one that has been stopped must not stop this one.
  FileDescriptor lock() const;

  /// Notes `text` in place of what was noted; the file is there only while there is something to note. Where the file
  /// cannot be written there is none: the note is a precaution.
  void write(const std::string& text);

  /// Whether there are files of other processes, dead or alive.
  bool hasNotesOfOthers() const;
  struct Note {
    std::string text;
    bool isOfLiving = false;  ///< process
  };
  /// What other processes have noted. The files of dead ones stay, locked against others who look for them, until they
  /// are removed, which is due before the next look.
  std::vector<Note> notesOfOthers();
  void removeOfDead();

 private:
  struct File {
    FileDescriptor descriptor;
    std::string path;
  };

  void create();
  std::vector<std::string> pathsOfOthers() const;

  std::string folder_;
  File own_;
  std::string noted_;
  std::vector<File> dead_;
};

#endif
