#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the tables of geometry/exact/ anew. make.sh [FOLDER] (default: geometry/exact/ itself). Needs python3-mpmath.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
folder=$(cd "${1:-$here/..}" && pwd)
for script in circle growth wide; do
  PYTHONDONTWRITEBYTECODE=1 python3 "$here/$script.py" "$folder"
done
