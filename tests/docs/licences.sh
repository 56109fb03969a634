#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares the libraries in the table of docs/licences.md with what the files need. licences.sh PAGE FILE...
set -euo pipefail
page=$1
shift

# "FILE LIBRARY" for each library that is not ours, nor the loader.
needed() {
  local file name
  for file in "$@"; do
    name=$(basename "$file" | sed 's/\.so\..*//')
    readelf -d "$file" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -vE '^(libZRCore|ld-linux)' | sed "s/^/$name /"
  done
}

listed() {
  local everybody='' file row library files
  for file in "$@"; do everybody+="\`$(basename "$file" | sed 's/\.so\..*//')\` "; done
  while IFS='|' read -r _ _ row _ files _; do
    [[ $files == ' all ' ]] && files=$everybody
    for library in $(grep -oE '`[^`]+\.so\.[0-9]+`' <<<"$row" | tr -d '`'); do
      for file in $(grep -oE '`[^`]+`' <<<"$files" | tr -d '`'); do echo "$file $library"; done
    done
  done < <(grep -E '^\|.*\.so\.' "$page")
}

if ! difference=$(diff <(listed "$@" | LC_ALL=C sort -u) <(needed "$@" | LC_ALL=C sort -u)); then
  printf "%s\n'<' is in the table of %s alone, '>' is needed and not there\n" "$difference" "$page"
  exit 1
fi
