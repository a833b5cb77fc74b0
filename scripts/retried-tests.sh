#!/usr/bin/env bash
# Names every test that passed only on its retry in a ctest run made with
# --repeat until-pass:N, from that run's output (the file given, or standard
# input): ctest prints one "Test #K: name .... Result" line per attempt. A
# test that never passed is already in ctest's own list of failures.
set -euo pipefail
awk '
  match($0, /Test +#[0-9]+: [^ ]+ /) {
    split(substr($0, RSTART, RLENGTH), part, ": ")
    name = part[2]; sub(/ +$/, "", name)
    if (!(name in seen)) { seen[name] = 1; order[++count] = name }
    passed = ($0 ~ /[.] +Passed +[0-9.]+ sec/)
    if (!passed) failedOnce[name] = 1
    last[name] = passed
  }
  END {
    for (i = 1; i <= count; ++i)
      if (failedOnce[order[i]] && last[order[i]]) print order[i]
  }
' "${1:-/dev/stdin}"
