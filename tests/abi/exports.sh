#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares what libZRCore exports with the reviewed list: exports.sh LIBRARY [--update]. Behind what came later than
# 1.0.0 stands the version with which it came.
set -euo pipefail
list="$(dirname "$0")/zrcore.symbols"
version=$(sed -n 's/^  VERSION //p' "$(dirname "$0")/../../CMakeLists.txt")
exported() { nm -D --defined-only "$1" | awk '$2 != "A" {print $3}' | sed 's/@.*//' | LC_ALL=C sort -u; }

if [ "${2:-}" = --update ]; then
  since=
  [ "$version" = 1.0.0 ] || since=" $version"
  updated=$(awk -v since="$since" 'NR == FNR { known[$1] = $0; next } { print $1 in known ? known[$1] : $1 since }' "$list" <(exported "$1"))
  echo "$updated" >"$list"
elif ! difference=$(diff <(cut -d' ' -f1 "$list") <(exported "$1")); then
  echo "$difference"
  echo "The exports have changed ('<' reviewed, '>' found). If that is meant: $0 $1 --update, and review the difference."
  exit 1
fi

needed=$(readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -vE '^(libstdc\+\+|libm|libgcc_s|libc|ld-linux[-a-z0-9_]*)\.so' || true)
[ -z "$needed" ] || { echo "libZRCore depends on more than the standard library: $needed"; exit 1; }
