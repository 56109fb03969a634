// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DOCTOR_REACH_H
#define ZRCORE_HOSTS_DOCTOR_REACH_H

#include <gio/gio.h>

namespace doctor {

/// Connects to a server.
/// @param address  taken
/// @param error    gets what the system says about a failure
/// @return the connection, to be released; null when there is none after `seconds`, rounded up.
GSocketConnection* reach(GSocketConnectable* address, double seconds, GError** error);

}  // namespace doctor

#endif
