// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_UNIT_READERS_READINPUT_H
#define ZRCORE_TESTS_UNIT_READERS_READINPUT_H

#include <gtest/gtest.h>

#include <string_view>

#include "ReaderEvents.h"

/// What a reader reports of an input. Checks, for every input of these tests, that single bytes report the same.
inline ReaderEvents readInput(readers::Format format, std::string_view input) {
  auto events = readPieces(format, {input});
  EXPECT_EQ(events.log, readPieces(format, bytesOf(input)).log);
  return events;
}

#endif
