#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# own_code.sh OBJECT...: nothing in the library calls the C library's elementary functions, whose last bits differ from
# system to system (its floor, ldexp, modf, fmod, remainder, fmin, fmax and sqrt are exact everywhere); and the sources
# that are compiled for certain processors define no function that the linker could put into another one's path.
functions='sin|cos|sincos|tan|asin|acos|atan|atan2|exp|exp2|expm1|exp10|log|log2|log10|log1p|pow|hypot|cbrt|sinh|cosh|tanh|asinh|acosh|atanh'
breaches=0
for object; do
  called=$(nm --undefined-only "$object" | awk '{print $2}' | grep -xE "($functions)[fl]?")
  [ -z "$called" ] || { echo "$object calls" $called; breaches=1; }
  case $object in
    *Fused.cpp*) own=fused ;;
    *Wide.cpp*) own=wide ;;
    *) continue ;;
  esac
  shared=$(nm -C --defined-only "$object" | grep -E '^[0-9a-f]+ W ' | grep -vE "(exact|geometry)::$own::")
  [ -z "$shared" ] || { printf '%s shares code with other builds:\n%s\n' "$object" "$shared"; breaches=1; }
done
[ $# -gt 0 ] && exit "$breaches"
