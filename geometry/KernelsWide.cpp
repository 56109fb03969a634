// SPDX-License-Identifier: Apache-2.0
#define ZR_EXACT_BUILD wide
#include "KernelsOfBuild.h"
