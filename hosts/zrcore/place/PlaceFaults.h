// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_PLACE_PLACEFAULTS_H
#define ZRCORE_HOSTS_ZRCORE_PLACE_PLACEFAULTS_H

#include <place/PlaceDocument.h>
#include <zrcore/Messages.h>

/// Tells what could not be used of a service's answer: "zrcore: FILE: result N: text".
/// @return whether there was anything
bool tellFaults(Messages& messages, const std::string& name, const place::Account& account);

#endif
