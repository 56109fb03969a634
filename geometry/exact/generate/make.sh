#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the tables of geometry/ and geometry/exact/ anew. make.sh [FOLDER] puts them there instead. Needs
# python3-mpmath.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
folder=$(cd "${1:-$here/..}" && pwd)
for script in circle growth wide; do
  PYTHONDONTWRITEBYTECODE=1 python3 "$here/$script.py" "$folder"
done
PYTHONDONTWRITEBYTECODE=1 python3 "$here/fast.py" "${1:-$here/../..}"
