// SPDX-License-Identifier: Apache-2.0
#include "OutputError.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace trip {

namespace {
const char* remedyFor(int errorNumber) {
  switch (errorNumber) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return "free some space or choose a folder on another disk, then run again";
    case EACCES:
    case EPERM:
    case EROFS:
      return "choose a folder that you may write to";
    case ENOTDIR:
    case EEXIST:
      return "choose a folder whose path leads through no file";
    default:
      return "choose another folder";
  }
}
}  // namespace

OutputError::OutputError(std::filesystem::path path, std::string cause, std::string remedy)
    : std::runtime_error(path.string() + ": " + cause + "; " + remedy),
      path_(std::move(path)),
      cause_(std::move(cause)),
      remedy_(std::move(remedy)) {}

OutputError OutputError::ofSystem(std::filesystem::path path, int errorNumber) {
  return {std::move(path), std::generic_category().message(errorNumber), remedyFor(errorNumber)};
}

OutputError OutputError::exists(std::filesystem::path path) {
  return {std::move(path), "already exists", "overwrite with --force or choose another folder"};
}

}  // namespace trip
