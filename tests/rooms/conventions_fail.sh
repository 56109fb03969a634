#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Each rule finds its breach, and nothing in a tree that keeps them all.
set -u
here=$(cd "$(dirname "$0")" && pwd)
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree"/{include,geometry,policy,readers,packed,platform,hosts/zrcore,tests/unit}
status=0
# check FILE EXPECTED LINE...: what the conventions say of a file with these lines.
check() {
  local file=$tree/$1 expected=$2 told
  shift 2
  printf '%s\n' '// SPDX-License-Identifier: Apache-2.0' '#ifndef ZR_GUARD' "$@" >"$file"
  told=$("$here/conventions.sh" "$tree" 2>/dev/null)
  case $told in
    "$expected"*) [ -n "$expected" ] || [ -z "$told" ] || { echo "told of a good file: $told"; status=1; } ;;
    *) echo "expected \"$expected\", told \"$told\""; status=1 ;;
  esac
  rm "$file"
}
long=$(printf 'x%.0s' {1..118})
check geometry/Good.cpp '' 'constexpr int kOne = 1;' 'int f() {' '  if (g()) return kOne;' '  if (g()) {' '    h();' '    i();' '  }' '}'
check geometry/Bad.cpp 'A body stands' 'void f() {' '  if (g())' '    h();' '}'
check geometry/Bad.cpp 'A body stands' 'void f() {' '  for (int i : g()) {' '    h(i);' '  }' '}'
check geometry/Bad.cpp 'A body stands' 'void f() {' '  if (g()) {' '    h();' '    i();' '  } else' '    j();' '}'
check geometry/Bad.cpp 'A constant' 'constexpr double largest = 2.0;'
check geometry/Bad.cpp 'A comment passes' "// $long"
check geometry/Bad.cpp 'A comment passes' "int x;  ///< $long"
check geometry/CMakeLists.txt 'A comment passes' "# ${long}x"
check geometry/Bad.cpp '"cannot"' "// It can""'t."
check include/Good.h '' '// A heading.' '' '/// A type.' 'class ZR_EXPORT Good {' '};'
check include/Bad.h 'A public block' '// A type.' 'class ZR_EXPORT Bad;' ''
check include/Bad.h 'A public block' '' 'struct Bad {' '};'
check tests/unit/map_rect_test.cpp 'A file of tests' 'TEST(A, B) {}'
check tests/unit/GoodTest.cpp '' 'TEST(A, B) {}'
check geometry/Bad.cpp 'An include leaves' '#include "../platform/Loop.h"'
check geometry/Bad.cpp 'The operating system' '#ifdef __linux__' '#endif'
check policy/Good.cpp '' '#include <text/ASCII.h>' '#include <vector>'
check policy/Bad.cpp 'A reader or a policy' '#include <nlohmann/json.hpp>'
check readers/Good.cpp '' '#include <nlohmann/json.hpp>'
check readers/Bad.cpp 'A reader or a policy' 'const char* home = getenv("HOME");'
check platform/Bad.cpp 'A callback is held' '  if (listener_) listener_->ended();'
check platform/Bad.cpp 'What has an owner' '  g_object_unref(file);'
check geometry/Bad.cpp 'A name with two' 'int __countOfFixes = 0;'
check hosts/zrcore/Bad.h 'An option that' '  Option<bool> isForced{*this, "--force", "x"};'
check hosts/zrcore/Good.h '' '  Option<bool> isForced{*this, "--force", "x"};' '  bool forced() const { return options_.isForced; }'
exit "$status"
