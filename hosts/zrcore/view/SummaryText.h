// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_SUMMARYTEXT_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_SUMMARYTEXT_H

#include <trip/TripRow.h>

#include <string>

/// The summary for people: a few lines, the last one ended too.
std::string summaryText(const trip::TripSummary& summary);

#endif
