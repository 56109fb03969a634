// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_DUCKFILE_H
#define ZRCORE_LINUX_SOUND_DUCKFILE_H

#include <owners/FileDescriptor.h>

#include <string>
#include <vector>

/// A process's note of the streams that it has lowered. Other processes that want to lower the same streams read it,
/// and if this process crashes the next one restores what the note names. Each process keeps its own file locked while
/// it lives, so a file that can be locked belongs to a dead process. Folder and notes must belong to this user alone:
/// otherwise another user could set volumes.
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

  /// Locks the folder while the result lives, so that one process decides at a time. Waits at most 20 ms for the lock,
  /// because a process that was suspended while it held it must not block this one.
  FileDescriptor lock() const;

  const std::string& folder() const { return folder_; }

  /// Replaces the note by `text`. An empty text removes the file.
  /// @return false when it cannot be written
  bool write(const std::string& text);

  /// Whether there are files of other processes, dead or alive.
  bool hasNotesOfOthers() const { return !pathsOfOthers().empty(); }
  /// Whether there are files of dead processes.
  bool hasNotesOfDead();
  struct Note {
    std::string text;
    bool isOfLiving = false;  ///< whether the process that wrote it lives
  };
  /// The notes of other processes. The files of dead processes stay, locked by this one, until `removeOfDead`, which
  /// the caller must call before it asks again.
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
