#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What scripts/setup tells a user who has neither root nor sudo: a ready line a set, and nothing is touched.
set -euo pipefail
bin=$(mktemp -d)
trap 'rm -rf "$bin"' EXIT
for program in bash sed grep; do ln -s "$(command -v "$program")" "$bin"; done
stand_in() { printf '#!/bin/sh\n%s\n' "$2" >"$bin/$1" && chmod +x "$bin/$1"; }
stand_in id 'echo 1000'
stand_in apt-get "echo called >>'$bin/calls'"
stand_in dpkg-query 'echo "g++ install ok installed"; echo "cmake deinstall ok config-files"; exit 1'

fail() { echo "$1" && cat "$bin/told" && exit 1; }
setup() { (export PATH=$bin && exec "$1/scripts/setup" "${@:2}") >"$bin/told" 2>&1 </dev/null; }

code=0 && setup "$1" tool window || code=$?
[ "$code" -eq 3 ] || fail "it ended with $code, not 3"
[ "$(grep -c '^apt-get install ' "$bin/told")" -eq 2 ] || fail 'there is not a line for each set'
grep -q '^apt-get install.* cmake .*libcairo2-dev' "$bin/told" || fail 'the line of the tool lacks something'
grep -q '^apt-get install.* g++ ' "$bin/told" && fail 'a line names what is installed'
[ ! -e "$bin/calls" ] || fail 'apt-get was called'
stand_in dpkg-query 'shift 2; for package; do echo "$package install ok installed"; done'
setup "$1" && [ ! -s "$bin/told" ] || fail 'nothing is missing, and yet it said something'
code=0 && setup "$1" toool || code=$?
[ "$code" -eq 2 ] || fail 'a set that there is not was accepted'
