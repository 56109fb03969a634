// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_SPEECHRATE_H
#define ZRCORE_POLICY_SPEECHRATE_H

namespace policy {

/// The words per minute of an utterance's rate: 80 at 0, 175 at 0.5, 450 at 1, and in between so that equal steps of
/// the rate are equal ratios of speed. Outside that range, the nearer end; NaN is the usual 0.5. The ends are those of
/// the default engine, the middle is its usual speed.
int wordsPerMinuteForRate(float rate);

/// The engine's amplitude, 0 to 100, for an utterance's volume, 0 to 1. NaN is full volume.
int amplitudeForVolume(float volume);

}  // namespace policy

#endif
