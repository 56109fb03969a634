// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_FILEOUTPUT_H
#define ZRCORE_HOSTS_TRIP_FILEOUTPUT_H

#include "OutputFile.h"
#include "TripRow.h"

namespace trip {

/// An output that is a file. `finish` completes it under its provisional name; then `commit` puts it under its own.
class FileOutput : public TripOutput {
 public:
  virtual void commit() = 0;
};

}  // namespace trip

#endif
