#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Conventions that a compiler does not check. Prints each breach and fails when there is one.
set -u
cd "$1" || exit 2
breaches=0
breach() {
  printf '%s:\n%s\n' "$1" "$2"
  breaches=1
}
sources() { find "$@" \( -name '*.h' -o -name '*.hpp' -o -name '*.cpp' -o -name '*.c' \) -print0 2>/dev/null; }

hits=$(sources geometry mapping location load services model audio browser policy readers packed platform hosts include |
  xargs -0 grep -nE '#include "[^"]*\.\./')
[ -n "$hits" ] && breach 'An include leaves its room' "$hits"

hits=$(sources geometry mapping location load services model audio browser policy readers packed include |
  xargs -0 grep -nE '^ *# *(if|ifdef|elif).*(__linux__|__APPLE__|_WIN32|__unix__|__ANDROID__)')
[ -n "$hits" ] && breach 'The operating system is asked for outside platform/' "$hits"

# The floor between the rules and the system: no header of the system, nor of a library but those that the room stands on.
outside() { # ROOM ALLOWED
  sources "$1" | xargs -0 grep -nE '^ *# *include +<' | grep -vE "<(ZRCore/|$1/|$2|[a-z_]+>)"
  sources "$1" | xargs -0 grep -nE '^ *# *include +<(fstream|filesystem|thread|cstdio|csignal|iostream)>|\b(getenv|time|system)\('
}
hits=$(
  outside policy '$^'
  outside readers 'expat\.h|nlohmann/json'
  outside packed 'zlib\.h'
)
[ -n "$hits" ] && breach 'A reader or a policy reaches the system' "$hits"

hits=$(find . -path ./build -prune -o \( -name '*.h' -o -name '*.hpp' \) -print0 | xargs -0 grep -LE '^#ifndef ZR[A-Z0-9_]+$')
[ -n "$hits" ] && breach 'A header has no guard' "$hits"

hits=$(sources . -path ./build -prune -o | xargs -0 awk 'FNR == 1 && !/SPDX-License-Identifier: Apache-2.0/ { print FILENAME }')
[ -n "$hits" ] && breach 'A source file does not begin with the line that names its licence' "$hits"

# Class-level state keeps its documented names, which are reserved in C++: they are declared in these headers alone.
declared=$(grep -hoE '\b__[a-z][A-Za-z]+( = [^;]*)?;' location/LocationFilterState.h location/LocationStatics.h \
  services/TrackingIdentity.h |
  grep -oE '__[a-zA-Z]+' | sort -u)
hits=$(sources geometry mapping location load services model audio browser policy readers packed platform hosts include tests |
  xargs -0 grep -noE '\b__[a-z][A-Za-z]*[A-Z][A-Za-z]*\b' | while IFS=: read -r file line name; do
    grep -qx "$name" <<<"$declared" || echo "$file:$line: $name"
  done)
[ -n "$hits" ] && breach 'A name with two leading underscores that no statics header declares' "$hits"

exit "$breaches"
