// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PLACE_PLACEFILE_H
#define ZRCORE_HOSTS_PLACE_PLACEFILE_H

#include <stdexcept>
#include <string>

namespace place {

/// A file that cannot be read; the text says why.
class FileError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The whole content of a file; "-" is the standard input.
/// @throws FileError
std::string readFile(const std::string& path);

}  // namespace place

#endif
