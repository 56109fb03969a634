#ifndef ZRCORE_LINUX_SOUND_DUCKFILE_H
#define ZRCORE_LINUX_SOUND_DUCKFILE_H

#include <string>
#include <vector>

#include "sound/EngineProcess.h"

/// A process's note of what it has lowered, which a later process finds if this one dies. Each process has a file of its
/// own, locked for as long as it lives: a file that can be locked is a dead one's.
class DuckFile {
 public:
  /// @param folder  made when it is needed; empty: a folder of the user's session.
  explicit DuckFile(std::string folder);
  /// Notes `text` in place of what was noted; the file is there only while there is something to note. Where the file cannot be written there is none: the note is a precaution.
  void write(const std::string& text);

  /// Whether there are files of other processes, dead or alive.
  bool hasNotesOfOthers() const;
  /// What dead processes have noted. Their files stay, locked against others who look for them, until they are removed.
  std::vector<std::string> readOfDead();
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
