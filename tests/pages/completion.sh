#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What bash offers behind the beginnings of a command line: completion.sh FOLDER. The files of the other shells are read
# by them, where they are.
set -uo pipefail # a function that fails is a finding
pages=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# shellcheck disable=SC1091
source "$pages/bash-completion/completions/zrcore"
espeak-ng() { printf 'Pty Language Age\n 5  de         --/M\n 5  en-gb      --/M\n'; } # what there is differs
cd "$work"
mkdir folder
touch drive.gpx 'long drive.csv.gz' picture.png spoken.wav found.geojson
COMP_WORDBREAKS=$' \t\n"\'><=;|&(:'

# expect CANDIDATES WORD...: the words as bash splits them, the last of which is being written
expect() {
  local expected=$1 found
  shift
  COMP_WORDS=(zrcore "$@") COMP_CWORD=$# COMPREPLY=()
  _zrcore
  found=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd, -)
  [ "$found" = "$expected" ] || { echo "zrcore $*: found '$found', expected '$expected'" && failed=1; }
}
expect 'trip' t
expect 'watch' help w
expect '--filter,--force,--from' trip --f
expect 'drive.gpx,folder/,long drive.csv.gz' trip ''
expect 'drive.gpx,folder/,long drive.csv.gz' trip --json ''  # which has no value
expect 'folder/' trip drive.gpx --out ''
expect 'long drive.csv.gz' trip 'long\ d'
expect 'documented,measured' trip --filter ''
expect 'measured' trip --filter = m
expect 'folder/,found.geojson' place fo
expect 'sound,wav:' say hello --to ''
expect 'spoken.wav' say hello --to wav : sp
expect 'de' say --voice d
expect 'auto' watch a
expect 'file:' watch f
expect 'drive.gpx,folder/,long drive.csv.gz' watch file :
expect '' config --key ''
expect '' url ''

for shell in bash zsh fish; do
  command -v $shell >/dev/null || continue
  case $shell in bash) file=bash-completion/completions/zrcore ;; zsh) file=zsh/site-functions/_zrcore ;;
    fish) file=fish/vendor_completions.d/zrcore.fish ;; esac
  $shell -n "$pages/$file" || failed=1
done
exit $failed
