#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# same_bits.sh COMMAND... [--update]: runs a geometry_hash and compares what it prints with the reviewed hashes. 77:
# this processor cannot run it.
reviewed=$(dirname "$0")/hashes.txt
for last; do :; done
if [ "$last" = --update ]; then
  "$1" >"$reviewed"
  exit
fi
found=$("$@") || exit $?
[ -n "$found" ] || { echo "$1 printed nothing"; exit 1; }
if ! difference=$(printf '%s\n' "$found" | diff "$reviewed" -); then
  echo "$difference"
  echo "These results have changed ('<' reviewed, '>' found). If the rules have: $0 $1 --update, and say why."
  exit 1
fi
