#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Each entry for bytes from outside has a row in fuzz/README.md, a target and seeds: fuzz_entries.sh ROOT [README].
# Prints what is missing, and fails when something is.
set -u
cd "$1" || exit 2
table=${2:-fuzz/README.md}
missing=0
has() { # TEXT WHAT
  grep -qF -- "$1" "$table" && return
  echo "$table has no row for $2"
  missing=1
}

formats=$(sed -nE 's/^enum class Format \{ (.*) \};/\1/p' readers/FixReader.h | tr -d ,)
services=$(sed -nE 's/^ *ZRPlatformService\{"([^"]+)".*/\1/p' include/ZRCore/ZRPlatformFill.h)
targets=$(sed -nE 's/^ *zr_(services_)?fuzzer\(([a-zA-Z]+) .*/\2/p' fuzz/CMakeLists.txt)
[ -n "$formats" ] && [ -n "$services" ] && [ -n "$targets" ] || { echo "the lists are not where they were"; exit 1; }

for format in $formats; do has "\`readers::makeReader(Format::$format)\` | \`fuzz_$format\`" "the format $format"; done
while read -r service; do has "| $service |" "the service $service"; done <<<"$services"
for target in $formats $targets; do
  has "\`fuzz_$target\` | \`corpus/$target\`" "the target $target"
  [ -n "$(ls -A "fuzz/corpus/$target" 2>/dev/null)" ] || { echo "fuzz/corpus/$target has no seeds"; missing=1; }
done
for header in $(grep -lE 'std::string_view|[(,] *(const )?std::string[ &]' policy/*.h policy/*/*.h packed/*.h); do
  grep -q "#include <$header>" fuzz/*.cpp || has "\`$header\`" "$header, which no target includes,"
done
exit "$missing"
