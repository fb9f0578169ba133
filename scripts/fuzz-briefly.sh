#!/usr/bin/env bash
# A short, bounded fuzzing run of both fuzz targets, for `make test`: each target replays
# the seeds and saved findings, then takes mutated inputs for SECONDS (blind mutation with
# a fixed seed, in the build given, which `make test` makes with the sanitizers). The long,
# coverage-guided runs are `make fuzz`.
#
# Usage: scripts/fuzz-briefly.sh BUILD_DIR [SECONDS]
set -uo pipefail

here="$(cd "$(dirname "$0")/.." && pwd)"
build="$1"
seconds="${2:-20}"
inputs=("$here/examples" "$here/fuzz/corpus" "$here/fuzz/regressions" "$here"/tests/models/*/model.json)

targets=(model_file_fuzz transfer_fuzz)
# Both targets at once, one a processor; their results are told in order.
pids=()
for target in "${targets[@]}"; do
  # A hang is a finding too: the run is cut off well after its time.
  timeout $((seconds * 5 + 120)) "$build/${target}_replay" --mutate "$seconds" \
    --dict "$here/fuzz/model.dict" --crash "$build/crash-$target" "${inputs[@]}" \
    > "$build/fuzz-briefly-$target.log" 2>&1 &
  pids+=($!)
done

status=0
for i in "${!targets[@]}"; do
  target="${targets[$i]}"
  log="$build/fuzz-briefly-$target.log"
  wait "${pids[$i]}"
  result=$?
  if [ "$result" -eq 0 ]; then
    echo "$target: $(tail -n 1 "$log")"
  else
    status=1
    echo "$target failed (status $result); the input is in $build/crash-$target:"
    tail -n 40 "$log"
  fi
done
exit "$status"
