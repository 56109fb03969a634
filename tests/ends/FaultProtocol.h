// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_ENDS_FAULTPROTOCOL_H
#define ZRCORE_TESTS_ENDS_FAULTPROTOCOL_H

// What a test and the library in a program that it breaks say to each other: variables of the environment.
inline constexpr const char* kFaultSocket = "ZR_FAULT_SOCKET";          ///< the number of a descriptor to the test
inline constexpr const char* kFaultCalls = "ZR_FAULT_CALLS";            ///< numbers of system calls, with commas
inline constexpr const char* kFaultAllocation = "ZR_FAULT_ALLOCATION";  ///< which allocation fails, from 1; 0: none
inline constexpr int kNotInjected = 99;                                 ///< exit code: this system does not let us

#endif
