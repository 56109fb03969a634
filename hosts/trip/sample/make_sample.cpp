// SPDX-License-Identifier: Apache-2.0
// Writes the project's own sample recording to standard output: zrcore-make-sample > samples/drive.csv
#include <cstdio>
#include <string>

#include "SampleTrip.h"

int main() {
  const std::string text = trip::sampleTripCsv(trip::kSampleSeed);
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!isWritten) std::perror("zrcore-make-sample");
  return isWritten ? 0 : 1;
}
