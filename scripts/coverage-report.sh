#!/usr/bin/env bash
# Line and branch coverage of the project's own code after a test run in a --coverage build:
# one line per folder (model, api, editors, ui, exports, tools) and a per-file report in
# BUILD/coverage/files.txt. Tests, fuzz targets, benchmarks, generated files in the build folders
# and system headers are left out: only the five folders are counted.
# Usage: scripts/coverage-report.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?usage: $0 BUILD_DIR}
out=$build/coverage
mkdir -p "$out"

folders=(model api editors ui exports tools)
only_ours=$(IFS='|'; echo "^($PWD/)?(${folders[*]})/")

# Branches the compiler adds for exceptions and for code it proved unreachable are not decisions
# in our code; counting them would hide the branches that are.
gcovr --root . --object-directory "$build" --filter "$only_ours" \
      --exclude-throw-branches --exclude-unreachable-branches \
      --json-summary "$out/summary.json" --txt "$out/files.txt"

python3 - "$out/summary.json" "${folders[@]}" <<'PY'
import json, sys
summary, folders = json.load(open(sys.argv[1])), sys.argv[2:]
totals = {f: [0, 0, 0, 0] for f in folders}
for entry in summary["files"]:
    folder = entry["filename"].split("/", 1)[0]
    if folder in totals:
        t = totals[folder]
        t[0] += entry["line_covered"]; t[1] += entry["line_total"]
        t[2] += entry["branch_covered"]; t[3] += entry["branch_total"]
pct = lambda covered, total: f"{100.0 * covered / total:5.1f} %" if total else "    - "
print(f"{'folder':<9} {'lines':>8} {'of':>6} {'line cov':>9} {'branches':>9} {'of':>6} {'branch cov':>10}")
for f in folders:
    lc, lt, bc, bt = totals[f]
    print(f"{f + '/':<9} {lc:>8} {lt:>6} {pct(lc, lt):>9} {bc:>9} {bt:>6} {pct(bc, bt):>10}")
PY
echo "Per file: $out/files.txt"
