#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Each command has a manual page, which names what its help names and is set without a warning:
# manual.sh PAGES PROGRAM...
set -euo pipefail
pages=$1
shift
failed=0
fail() {
  echo "$1"
  failed=1
}

# check PROGRAM COMMAND: of the program itself without a command
check() {
  local name help page text option count=0 said
  name=$(basename "$1")
  page=$pages/$name/man/man1/$name${2:+-$2}.1
  help=$("$1" ${2:+"$2"} --help)
  [ -f "$page" ] || { fail "there is no $page" && return; }
  text=$(sed 's/\\-/-/g' "$page")
  for option in $(sed -n '/Help Options:/,/^$/d; s/^  \(-[a-z],\)\?\(--[a-z-]*\).*/\2/p' <<<"$help"); do
    count=$((count + 1))
    grep -qE -- "^\\\\fB(-[a-z],)?$option(\\\\fR|=)" <<<"$text" || fail "$page does not tell of $option"
  done
  [ "$count" -gt 0 ] || fail "no option was found in the help of $name $2"
  if command -v groff >/dev/null; then
    said=$(groff -man -Tutf8 -ww -rLL=78n "$page" 2>&1 >/dev/null)
    [ -z "$said" ] || fail "$said"
  fi
}

for program; do
  check "$program" ''
  commands=$("$program" --help | sed -n '/^Subcommands:/,$ s/^  \([a-z]\+\) .*/\1/p')
  for command in $commands; do check "$program" "$command"; done
  there=("$pages/$(basename "$program")"/man/man1/*.1)
  [ "${#there[@]}" -eq $(($(wc -w <<<"$commands") + 1)) ] || fail "$program has ${#there[@]} pages for: $commands"
done
exit $failed
