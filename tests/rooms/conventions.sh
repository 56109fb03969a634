#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Conventions that a compiler does not check. Prints each breach and fails when there is one.
set -u
here=$(cd "$(dirname "$0")" && pwd)
cd "$1" || exit 2
breaches=0
breach() {
  printf '%s:\n%s\n' "$1" "$2"
  breaches=1
}
sources() { find "$@" \( -name '*.h' -o -name '*.hpp' -o -name '*.cpp' -o -name '*.c' \) -print0 2>/dev/null; }

hits=$(sources geometry mapping location services model audio browser policy readers packed text platform hosts include |
  xargs -0r grep -nHE '#include "[^"]*\.\./')
[ -n "$hits" ] && breach 'An include leaves its room' "$hits"

hits=$(sources geometry mapping location services model audio browser policy readers packed text include |
  xargs -0r grep -nHE '^ *# *(if|ifdef|elif).*(__linux__|__APPLE__|_WIN32|__unix__|__ANDROID__)')
[ -n "$hits" ] && breach 'The operating system is asked for outside platform/' "$hits"

# The floor between the rules and the system: no header of the system, nor of a library but those that the room stands
# on.
outside() { # ROOM ALLOWED
  sources "$1" | xargs -0r grep -nHE '^ *# *include +<' | grep -vE "<(ZRCore/|text/|$1/|$2|[a-z_]+>)"
  sources "$1" | xargs -0r grep -nHE '^ *# *include +<(fstream|filesystem|thread|csignal|iostream)>|\b(getenv|time|system)\('
}
hits=$(
  outside policy '$^'
  outside readers 'expat\.h|nlohmann/json'
  outside packed 'zlib\.h'
)
[ -n "$hits" ] && breach 'A reader or a policy reaches the system' "$hits"

hits=$(sources platform |
  xargs -0r grep -nHE 'if \(listener_( [!=]= nullptr)?\)|const auto ([a-z]+) = (events_\.)?\2_;')
[ -n "$hits" ] && breach 'A callback is held or copied by hand (platform/Callback.h)' "$hits"

hits=$(sources platform hosts/doctor | xargs -0r grep -nHE '(g_object|g_variant|g_main_context|g_source)_unref\(|g_free\(|g_error_free\(|g_clear_(error|object)\(|[^:A-Za-z]::close\(' |
  grep -v '^platform/owners/')
[ -n "$hits" ] && breach 'What has an owner (platform/owners/, g_autoptr) is let go by hand' "$hits"

hits=$(find . -path ./build -prune -o \( -name '*.h' -o -name '*.hpp' \) -print0 | xargs -0r grep -LE '^#ifndef ZR[A-Z0-9_]+$')
[ -n "$hits" ] && breach 'A header has no guard' "$hits"

hits=$(sources . -path ./build -prune -o | xargs -0r awk 'FNR == 1 && !/SPDX-License-Identifier: Apache-2.0( \*\/)?$/ { print FILENAME }')
[ -n "$hits" ] && breach 'A source file does not begin with the line that names its licence' "$hits"

# One dialect. What clang-format does not look at: comments, braces, names.
dialect=$(sources . -path ./build -prune -o | xargs -0r awk -f "$here/dialect.awk")
for rule in braces constant public; do
  hits=$(grep "^$rule:" <<<"$dialect" | cut -d: -f2-)
  [ -n "$hits" ] || continue
  case $rule in
    braces) breach 'A body stands on its line without braces if it fits there, else below in braces' "$hits" ;;
    constant) breach 'A constant is not named kX' "$hits" ;;
    public) breach 'A public block is lost to documentation tools: it needs ///' "$hits" ;;
  esac
done

scripts() {
  find . -path ./build -prune -o -type f \( -name '*.sh' -o -name '*.cmake' -o -name CMakeLists.txt -o -name '*.py' -o \
    -path './scripts/*' -o -path './.ci/*' \) -print0
}
hits=$(
  sources . -path ./build -prune -o | LC_ALL=C.UTF-8 xargs -0r grep -nHE '^.{121,}' | grep -E '^[^:]*:[0-9]+:.*//' |
    grep -vE '^[^:]*:[0-9]+:[^/]*"[^"]*//'
  scripts | LC_ALL=C.UTF-8 xargs -0r grep -nHE '^ *#.{120,}'
)
[ -n "$hits" ] && breach 'A comment passes column 120' "$hits"

hits=$({
  sources . -path ./build -prune -o
  scripts
} | xargs -0r grep -nHE "can['’]t|can [n]ot")
[ -n "$hits" ] && breach '"cannot" is written otherwise' "$hits"

hits=$(find tests -name '*.cpp' | while read -r file; do
  if grep -qE '^(TEST|TEST_F|TEST_P|TYPED_TEST)\(' "$file"; then
    [[ $file == *Test.cpp ]] || echo "$file"
  elif [[ $file == *Test.cpp ]] && ! grep -q '^INSTANTIATE_TEST_SUITE_P(' "$file"; then
    echo "$file (has no test)"
  fi
done)
[ -n "$hits" ] && breach 'A file of tests is not named after what it tests, as in MapRectTest.cpp' "$hits"

# Class-level state keeps its documented names, which are reserved in C++: they are declared in these headers alone.
declared=$(grep -hoE '\b__[a-z][A-Za-z]+( = [^;]*)?;' location/LocationFilterState.h location/LocationStatics.h \
  services/TrackingIdentity.h |
  grep -oE '__[a-zA-Z]+' | sort -u)
hits=$(sources geometry mapping location services model audio browser policy readers packed text platform hosts include tests |
  xargs -0r grep -nHoE '\b__[a-z][A-Za-z]*[A-Z][A-Za-z]*\b' | while IFS=: read -r file line name; do
    grep -qx "$name" <<<"$declared" || echo "$file:$line: $name"
  done)
[ -n "$hits" ] && breach 'A name with two leading underscores that no statics header declares' "$hits"

# An option of the tool that no run reads would be ignored. The tool itself tells of one that was given.
hits=$(grep -rhoE '\bOption<[^;{]*> [a-zA-Z]+\{' hosts/zrcore | sed -E 's/.* ([a-zA-Z]+)\{/\1/' | sort -u | while read -r name; do
  grep -rqE "\boptions_?\.$name\b" hosts/zrcore || echo "$name"
done)
[ -n "$hits" ] && breach 'An option that nothing reads' "$hits"

exit "$breaches"
