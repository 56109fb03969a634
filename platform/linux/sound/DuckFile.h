// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_DUCKFILE_H
#define ZRCORE_LINUX_SOUND_DUCKFILE_H

#include <string>
#include <vector>

#include "sound/EngineProcess.h"

/// A process's note of what it has lowered, for other processes: those that want to lower the same, and a later one if
/// this one dies. Each process has a file of its own, locked for as long as it lives: a file that can be locked is a
/// dead one's. The folder must be the user's alone, and so must each note: others' notes would set volumes at their
/// will.
class DuckFile {
 public:
  /// @param folder       made when it is needed; empty: a folder of the user's session.
  /// @param endingOwner  `soundOwner` of a process that counts as dead, because it is about to end
  explicit DuckFile(std::string folder, std::string endingOwner = {});
  DuckFile(DuckFile&&) = delete;
  ~DuckFile();

  /// The folders in which this process has notes. A signal's handler may ask `hasNotes`, and nothing else.
  static std::vector<std::string> foldersWithNotes();
  static bool hasNotes();

  /// Keeps other processes from deciding at the same moment, for as long as the result lives. Waits for them 20 ms at
  /// the most: one that has been stopped must not stop this one.
  FileDescriptor lock() const;

  const std::string& folder() const { return folder_; }

  /// Notes `text` in place of what was noted; the file is there only while there is something to note.
  /// @return false when it cannot be written
  bool write(const std::string& text);

  /// Whether there are files of other processes, dead or alive.
  bool hasNotesOfOthers() const { return !pathsOfOthers().empty(); }
  /// Whether there are files of dead ones.
  bool hasNotesOfDead();
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
  void remove();
  std::vector<std::string> pathsOfOthers() const;
  bool isOfEnding(const std::string& path) const;

  std::string folder_;
  std::string endingOwner_;
  File own_;
  std::string noted_;
  std::vector<File> dead_;
};

#endif
