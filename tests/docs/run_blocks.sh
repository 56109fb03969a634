#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the blocks of code in README.md, docs/ and docs/guide/ as a reader would, with a home folder of the test's own
# into which README.md's own command has installed what was built. run_blocks.sh SOURCES BUILD FOLDER
#
# A block is, by the word after its fence:
#   cpp c cmake  a file, under the name in its first line's comment
#   sh           commands, which succeed
#   console      commands after "$ ", which succeed, each with all that it prints; "..." stands for anything
#   text         none of these
# What is not run stands in the list beside this file, with its reason.
set -u
sources=$1 build=$2 folder=$3
list=$(realpath "$(dirname "$0")/not-run")
faults=0 ran=0

fault() { # PLACE MESSAGE
  printf '%s: %s\n' "$1" "$2" >&2
  faults=$((faults + 1))
}

# Whether the list says that what begins so is not run; tells the reason.
declare -A met=()
is_not_run() { # PAGE TEXT
  local page start reason
  while IFS='|' read -r page start reason; do
    page=${page%% *} start=$(sed 's/^ *//; s/ *$//' <<<"$start")
    if [ "$page" = "$1" ] && [[ ${2#"${2%%[! ]*}"} == "$start"* ]]; then
      met["$page|$start"]=1
      printf 'not run: %s: %s:%s\n' "$1" "$start" "$reason"
      return 0
    fi
  done < <(grep -v '^#' "$list")
  return 1
}

run() { # PLACE COMMAND [EXPECTED]
  is_not_run "$page" "$2" && return
  ran=$((ran + 1))
  # In this shell, so that what a command exports is there for the next.
  eval "$2" >"$folder/output" 2>&1 </dev/null
  local status=$? output pattern
  output=$(<"$folder/output")
  [ "$status" -eq 0 ] || fault "$1" "'$2' ended with $status:"$'\n'"$output"
  [ $# -eq 3 ] || return
  pattern=$(sed 's/[^[:alnum:] .]/\\&/g; s/\.\.\./*/g' <<<"$3")
  # shellcheck disable=SC2053  # the right side is a pattern
  [[ $output == $pattern ]] || fault "$1" "'$2' is said to print"$'\n'"$3"$'\n'"and prints"$'\n'"$output"
}

run_commands() { # PLACE BLOCK
  local line
  while IFS= read -r line; do run "$1" "$line"; done <<<"$2"
}

run_console() { # PLACE BLOCK
  local line command='' expected=''
  while IFS= read -r line; do
    if [[ $line == '$ '* ]]; then
      [ -z "$command" ] || run "$1" "$command" "${expected%$'\n'}"
      command=${line#'$ '} expected=''
    else
      expected+=$line$'\n'
    fi
  done <<<"$2"
  run "$1" "$command" "${expected%$'\n'}"
}

write_file() { # PLACE BLOCK
  local name
  name=$(sed -nE '1s,^(//|#) ([A-Za-z_]+\.(cpp|c|txt))$,\2,p' <<<"$2")
  if [ -n "$name" ]; then
    printf '%s\n' "$2" >"$name"
  else
    fault "$1" "the first line of this block must be a comment with the name of its file"
  fi
}

take_block() { # PLACE LANGUAGE BLOCK
  case $2 in
    sh) run_commands "$1" "$3" ;;
    console) run_console "$1" "$3" ;;
    cpp | c | cmake) write_file "$1" "$3" ;;
    text) is_not_run "$page" "$3" || fault "$1" "text that is not in the list of what is not run: $3" ;;
    *) fault "$1" "say after the fence what this block is: sh, console, cpp, c, cmake or text" ;;
  esac
}

take_page() {
  local line number=0 language='' block='' place='' inside=''
  while IFS= read -r line; do
    number=$((number + 1))
    if [[ $line != '```'* ]]; then
      [ -n "$inside" ] && block+=$line$'\n'
    elif [ -z "$inside" ]; then
      inside=1 language=${line#'```'} block='' place=$page:$number
    else
      inside=''
      take_block "$place" "$language" "${block%$'\n'}"
    fi
  done <"$sources/$page"
}

rm -rf "$folder"
mkdir -p "$folder/home"
export HOME=$folder/home PATH=$folder/home/.local/bin:$PATH LC_ALL=C.UTF-8 PULSE_SERVER=unix:$folder/no-sound
unset DISPLAY WAYLAND_DISPLAY LD_LIBRARY_PATH
cd "$sources" && pages=(README.md docs/*.md docs/guide/*.md) || exit 2
for page in "${pages[@]}"; do
  work=$folder/work/$page
  mkdir -p "$work/build"
  ln -s "$sources/samples" "$work/samples"
  ln -s "$build" "$work/build/release"
  cd "$work" && take_page
done

while IFS='|' read -r page start _; do
  start=$(sed 's/^ *//; s/ *$//' <<<"$start")
  [ -n "${met["${page%% *}|$start"]:-}" ] || fault "$list" "there is nothing in ${page%% *} that begins with '$start'"
done < <(grep -v '^#' "$list")
echo "$ran commands run, $faults faults"
[ "$faults" -eq 0 ] && [ "$ran" -gt 0 ]
