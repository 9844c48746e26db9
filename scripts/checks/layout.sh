#!/bin/bash
# Runs every check of the tree's layout, and prints all faults before it fails.
set -euo pipefail
export PYTHONDONTWRITEBYTECODE=1

cd "$(dirname "${BASH_SOURCE[0]}")/../.."
status=0
for check in includes targets comments paths; do
    python3 "scripts/checks/$check.py" . || status=1
done
exit $status
