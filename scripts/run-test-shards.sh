#!/usr/bin/env bash
# Runs a GoogleTest program split into one shard a processor, the shards side by side, and
# fails when any shard fails (its output is then shown whole).
#
# Under AddressSanitizer a process is slow to start, and ctest starts one for every test:
# a thousand tests spend most of their time starting. A shard runs its share of the tests
# in one process.
#
# Usage: scripts/run-test-shards.sh PROGRAM [SHARDS]
set -uo pipefail

program="$1"
shards="${2:-$(nproc 2>/dev/null || echo 2)}"
logs="$(mktemp -d)"
trap 'rm -rf "$logs"' EXIT

pids=()
for ((i = 0; i < shards; i++)); do
  GTEST_TOTAL_SHARDS="$shards" GTEST_SHARD_INDEX="$i" "$program" --gtest_brief=1 \
    > "$logs/shard-$i.log" 2>&1 &
  pids+=($!)
done

failed=0
for ((i = 0; i < shards; i++)); do
  if wait "${pids[$i]}"; then
    grep -E '^\[  PASSED  \]' "$logs/shard-$i.log" | sed "s/^/shard $((i + 1)) of $shards: /"
  else
    failed=1
    echo "shard $((i + 1)) of $shards failed:"
    cat "$logs/shard-$i.log"
  fi
done
exit "$failed"
