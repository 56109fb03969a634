// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_FILEOUTPUT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_FILEOUTPUT_H

#include <trip/TripRow.h>

#include "OutputFile.h"

namespace trip {

/// An output that is a file. `finish` completes it under its provisional name; then `commit` puts it under its own.
class FileOutput : public TripOutput {
 public:
  virtual void commit() = 0;
};

}  // namespace trip

#endif
