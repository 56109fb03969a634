// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_AUDIO_SYSTEMVERSION_H
#define ZRCORE_AUDIO_SYSTEMVERSION_H

#include <optional>
#include <string_view>

/// Whether `version` comes before `other`. The components between the points are compared one by one as numbers, so
/// that 10.2 comes after 9.3; one that is missing, or does not begin with a digit, counts as 0.
bool isVersionBelow(std::string_view version, std::string_view other);

/// The speaking rate that sounds natural on a version of the operating system; a version that is not known counts as
/// the newest.
float speechRateForVersion(const std::optional<std::string_view>& version);

/// Whether the audio sessions of that version post hints about other applications' audio.
bool versionHasSilenceHint(const std::optional<std::string_view>& version);

#endif
