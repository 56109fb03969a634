#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# own_code.sh OBJECT...: nothing in the library calls the C library's elementary functions, whose last bits differ from
# system to system (its floor, ldexp, modf, fmod, remainder, fmin, fmax and sqrt are exact everywhere); and the sources
# that are compiled for certain processors define no function that the linker could put into another one's path.
[ $# -gt 0 ] || exit 2
functions='sin|cos|sincos|tan|asin|acos|atan|atan2|exp|exp2|expm1|exp10|log|log2|log10|log1p|pow|hypot|cbrt|sinh|cosh|tanh|asinh|acosh|atanh'
called=$(nm -A --undefined-only "$@" | grep -E " U ($functions)[fl]?\$")
shared=$(nm -A -C --defined-only "$@" | grep -E '(Fused|Wide)\.cpp\.o:[0-9a-f]+ W ' |
  grep -vE 'Fused\.cpp\.o:.*(exact|geometry)::fused::|Wide\.cpp\.o:.*(exact|geometry)::wide::')
[ -z "$called" ] || printf 'The library calls the C library:\n%s\n' "$called"
[ -z "$shared" ] || printf 'Builds for different processors share code:\n%s\n' "$shared"
[ -z "$called$shared" ]
