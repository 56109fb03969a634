// SPDX-License-Identifier: Apache-2.0
#define ZR_EXACT_BUILD fused
#include "FunctionsOfBuild.h"
