#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# same_bits.sh TUNED PLAIN: runs both programs and compares what they print. 77: this processor can't run them.
tuned=$("$1") || exit $?
plain=$("$2") || exit $?
[ -n "$tuned" ] || { echo "$1 printed nothing"; exit 1; }
if [ "$tuned" != "$plain" ]; then
  echo "These functions give other bits than an unoptimised build (optimised first):"
  printf '%s\n%s\n' "$tuned" "$plain" | sort -s -k2 | uniq -u
  exit 1
fi
