#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What a client pays for including a public header: its lines after preprocessing. <memory>, without which no object can
# be handed out, is what the headers are measured against. header_cost.sh ROOT COMPILER [HEADER...] prints each header
# that costs more lines beyond <memory> than its kind may.
set -u
cd "$1" || exit 2
compiler=$2
shift 2

# Headers whose operations take closures: <functional> is 18,000 lines.
takesClosures="MFMailComposeViewController.h NSNotificationCenter.h NSURLSession.h NSURLSession_ZR.h UIAlertController.h
  UIToolbar.h UIViewController.h ZRConfigurationBase.h ZRLocationManager.h ZROHMClassInfo.h ZROHMProperties.h
  ZROHMRegistry.h ZRScreen.h ZRWebViewController.h ZRAudioFake.h"
# Headers that exist to bring the others.
gathers="ZRCore.h ZRPlatform.h ZRPlatformFill.h ZRLinuxPlatform.h ZRLinuxSound.h ZRGtkPlatform.h ZRPlatformFake.h
  ZRScreenFake.h ZRServicesFake.h"

lines() { printf '#include <%s>\n' "$1" | "$compiler" -std=c++20 -Iinclude -x c++ -E - | wc -l; }

memory=$(lines memory)
[ "$memory" -gt 1000 ] || { echo "$compiler does not preprocess <memory>"; exit 2; }
[ $# -gt 0 ] || set -- include/ZRCore/*
status=0
for path in "$@"; do
  header=$(basename "$path")
  limit=15000
  for other in $takesClosures; do [ "$header" = "$other" ] && limit=30000; done
  for other in $gathers; do [ "$header" = "$other" ] && limit=45000; done
  total=$(lines "ZRCore/$header")
  [ "$total" -gt 0 ] || { echo "$header cannot be preprocessed"; status=1; }
  if [ $((total - memory)) -gt "$limit" ]; then
    echo "$header: $total lines, $((total - memory)) beyond <memory>, where $limit are allowed. Declare in place of including."
    status=1
  fi
done
exit "$status"
