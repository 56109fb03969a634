// SPDX-License-Identifier: Apache-2.0
#include "OutputError.h"

#include <trip/ShownPath.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace trip {

namespace {
const char* remedyFor(int errorNumber) {
  switch (errorNumber) {
    case ENOSPC:
    case EDQUOT:
      return "free some space or choose a folder on another disk, then run again";
    case EFBIG:
      return "raise the limit of a file's size (ulimit -f)";
    case EMFILE:
    case ENFILE:
      return "let this process open more files (ulimit -n)";
    case EACCES:
    case EPERM:
    case EROFS:
      return "choose a folder that you may write to";
    case ENOENT:
      return "make the folder first, or choose another";
    case ENOTDIR:
    case EEXIST:
      return "choose a folder whose path leads through no file";
    case ENAMETOOLONG:
      return "choose a shorter name";
    default:
      return "choose another folder";
  }
}

bool isOfPath(int errorNumber) {
  constexpr std::array kErrors{ENOENT, ENOTDIR, EEXIST, EISDIR, ENAMETOOLONG, ELOOP, EINVAL};
  return std::find(kErrors.begin(), kErrors.end(), errorNumber) != kErrors.end();
}
}  // namespace

OutputError::OutputError(std::filesystem::path path, std::string cause, std::string remedy)
    : std::runtime_error(shownPath(path.native()) + ": " + cause + "; " + remedy),
      path_(std::move(path)),
      cause_(std::move(cause)),
      remedy_(std::move(remedy)) {}

OutputError OutputError::ofSystem(std::filesystem::path path, int errorNumber) {
  OutputError error(std::move(path), std::generic_category().message(errorNumber), remedyFor(errorNumber));
  error.isOfPath_ = trip::isOfPath(errorNumber);
  return error;
}

OutputError OutputError::exists(std::filesystem::path path) {
  OutputError error(std::move(path), "already exists", "--force overwrites it");
  error.isOfPath_ = true;
  return error;
}

OutputError OutputError::isNoFile(std::filesystem::path path) {
  OutputError error(std::move(path), "is a device or a pipe", "choose another name");
  error.isOfPath_ = true;
  return error;
}

}  // namespace trip
