#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares what libZRCore exports with the reviewed list. exports.sh LIBRARY [--update]
set -euo pipefail
list="$(dirname "$0")/zrcore.symbols"
exported() { nm -D --defined-only "$1" | awk '$2 != "A" {print $3}' | sed 's/@.*//' | LC_ALL=C sort -u; }

if [ "${2:-}" = --update ]; then
  exported "$1" >"$list"
elif ! difference=$(diff "$list" <(exported "$1")); then
  echo "$difference"
  echo "The exports have changed ('<' reviewed, '>' found). If that is meant: $0 $1 --update, and review the difference."
  exit 1
fi

needed=$(readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -vE '^(libstdc\+\+|libm|libgcc_s|libc|ld-linux[-a-z0-9_]*)\.so' || true)
[ -z "$needed" ] || { echo "libZRCore depends on more than the standard library: $needed"; exit 1; }
