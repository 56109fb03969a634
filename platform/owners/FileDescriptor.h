// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_OWNERS_FILEDESCRIPTOR_H
#define ZRCORE_PLATFORM_OWNERS_FILEDESCRIPTOR_H

#include <unistd.h>

#include <utility>

/// A file descriptor, closed with its owner.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// @param number  taken; negative: none
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(other.release()) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    FileDescriptor taken(std::move(other));
    std::swap(number_, taken.number_);
    return *this;
  }
  ~FileDescriptor() { close(); }

  int get() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  int release() { return std::exchange(number_, -1); }
  void close() {
    if (isOpen()) ::close(release());
  }

 private:
  int number_ = -1;
};

#endif
