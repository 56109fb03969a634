// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_TEMPORARYFOLDER_H
#define ZRCORE_TESTS_SUPPORT_TEMPORARYFOLDER_H

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

/// A folder that goes with the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = testing::TempDir() + "zrcore-XXXXXX";
    path = mkdtemp(name.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const {
    std::filesystem::create_directories((path / name).parent_path());
    std::ofstream(path / name, std::ios::binary) << content;
    return path / name;
  }

  /// Where a file of that name is, or would be.
  std::string at(const std::string& name) const { return path / name; }

  std::filesystem::path path;
};

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

#endif
