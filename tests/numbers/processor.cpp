// SPDX-License-Identifier: Apache-2.0
/// Compiled with the flags of the build under test, unlike the rest of the program.
bool processorRunsThisBuild() {
#if defined(__FMA__) && defined(__x86_64__)
  return __builtin_cpu_supports("fma") != 0;
#else
  return true;
#endif
}
