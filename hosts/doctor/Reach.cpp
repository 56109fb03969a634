// SPDX-License-Identifier: Apache-2.0
#include "Reach.h"

namespace doctor {

GSocketConnection* reach(GSocketConnectable* address, double seconds, GError** error) {
  GSocketClient* const client = g_socket_client_new();
  g_socket_client_set_enable_proxy(client, FALSE);
  g_socket_client_set_timeout(client, static_cast<guint>(seconds) + 1);
  GSocketConnection* const connection = g_socket_client_connect(client, address, nullptr, error);
  g_object_unref(client);
  g_object_unref(address);
  return connection;
}

}  // namespace doctor
