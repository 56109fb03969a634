// SPDX-License-Identifier: Apache-2.0
#include "Waiting.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace doctor {

TimeLimit::TimeLimit(double seconds)
    : timer_([seconds, cancellable = cancellable_.get()](const std::stop_token& over) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any().wait_for(lock, over, std::chrono::duration<double>(seconds),
                                               [] { return false; });
        if (!over.stop_requested()) g_cancellable_cancel(cancellable);
      }) {}

owners::Ref<GSocketConnection> reach(GSocketConnectable& address, double seconds, GError** error) {
  g_autoptr(GSocketClient) client = g_socket_client_new();
  g_socket_client_set_enable_proxy(client, FALSE);
  g_socket_client_set_timeout(client, static_cast<guint>(seconds) + 1);
  return owners::Ref<GSocketConnection>(g_socket_client_connect(client, &address, nullptr, error));
}

ProgramRun runProgram(const std::string& program, const char* argument, double seconds) {
  constexpr std::size_t kMostOutput = 1 << 20;
  ProgramRun run;
  g_autofree char* found = g_find_program_in_path(program.c_str());
  if (found == nullptr) return run;
  run.isFound = true;
  const TimeLimit limit(seconds);
  constexpr auto kFlags =
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE);
  g_autoptr(GSubprocess) process = g_subprocess_new(kFlags, nullptr, found, argument, nullptr);
  if (process == nullptr) return run;
  run.output.resize(kMostOutput);
  gsize count = 0;
  run.isLate = g_input_stream_read_all(g_subprocess_get_stdout_pipe(process), run.output.data(), kMostOutput, &count,
                                       limit.cancellable(), nullptr) == FALSE;
  run.output.resize(count);
  const bool isEndless = run.isLate || count == kMostOutput;
  if (isEndless || !g_subprocess_wait(process, limit.cancellable(), nullptr)) {
    g_subprocess_force_exit(process);
    g_subprocess_wait(process, nullptr, nullptr);
  }
  if (g_subprocess_get_if_exited(process)) run.exitCode = g_subprocess_get_exit_status(process);
  return run;
}

}  // namespace doctor
