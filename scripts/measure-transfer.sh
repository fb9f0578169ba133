#!/usr/bin/env bash
# Measures whole transfers of generated buildings: builds Release, generates a building of
# each size, runs `vask2trelk transfer` on it under /usr/bin/time -v (wall time and peak
# memory of the real program), then times the same transfer phase by phase through the
# library (bench/transfer_bench.cc), and prints the results as Markdown tables.
#
# Usage: scripts/measure-transfer.sh [JOINTS...]        (default: 10000 100000 500000)
#
# Environment:
#   BUILD_DIR        the Release build folder (default /tmp/build-measure-transfer)
#   JOBS             parallel compile jobs (default 2)
#   MEMORY_LIMIT_GB  address-space limit of each transfer, so that a runaway run fails
#                    instead of taking the machine (default 16; 0 for none)
#   KEEP_MODELS      1 keeps the generated models and structures in the temporary folder
set -euo pipefail

here="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-/tmp/build-measure-transfer}"
jobs="${JOBS:-2}"
limit_gb="${MEMORY_LIMIT_GB:-16}"
sizes=("$@")
if [ ${#sizes[@]} -eq 0 ]; then sizes=(10000 100000 500000); fi

for tool in cmake python3 /usr/bin/time; do
  command -v "$tool" > /dev/null || { echo "measure-transfer: $tool is needed" >&2; exit 2; }
done

echo "Building Release in $build ..." >&2
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=Release > /dev/null
cmake --build "$build" -j"$jobs" --target vask2trelk vask2trelk_generate vask2trelk_bench > /dev/null

work="$(mktemp -d /tmp/vtt-measure-XXXXXX)"
if [ "${KEEP_MODELS:-0}" != 1 ]; then trap 'rm -rf "$work"' EXIT; fi
mkdir -p "$work/structures" "$work/trelk"

load_before="$(cut -d' ' -f1-3 /proc/loadavg)"
started="$(date -u '+%Y-%m-%d %H:%M UTC')"

# Runs a command under the memory limit and /usr/bin/time -v; the report goes to $1.
timed() {
  local report="$1"
  shift
  (
    if [ "$limit_gb" != 0 ]; then ulimit -v $((limit_gb * 1024 * 1024)); fi
    /usr/bin/time -v -o "$report" "$@"
  )
}

results="$work/results.tsv"
: > "$results"
for joints in "${sizes[@]}"; do
  model="$work/building-$joints.json"
  name="B$joints"
  echo "[$joints joints] generating ..." >&2
  gen_status=0
  timed "$work/gen-$joints.time" "$build/vask2trelk_generate" --joints "$joints" --out "$model" \
    2> "$work/gen-$joints.log" || gen_status=$?
  if [ "$gen_status" != 0 ]; then
    echo "generation of $joints joints failed" >&2
    cat "$work/gen-$joints.log" >&2
    continue
  fi
  echo "[$joints joints] transfer ..." >&2
  cli_status=0
  timed "$work/cli-$joints.time" "$build/vask2trelk" transfer "$model" --dir "$work/structures" \
    --name "$name" --trelk-path "$work/trelk" --quiet > "$work/cli-$joints.out" \
    2> "$work/cli-$joints.err" || cli_status=$?
  out_bytes="$(du -sb "$work/structures/$name" 2> /dev/null | cut -f1 || echo 0)"
  rm -rf "${work:?}/structures/$name"
  echo "[$joints joints] phases ..." >&2
  bench_status=0
  (
    if [ "$limit_gb" != 0 ]; then ulimit -v $((limit_gb * 1024 * 1024)); fi
    VTT_TRANSFER_MODELS="$model" "$build/vask2trelk_bench" --benchmark_filter='^BM_Transfer/' \
      --benchmark_format=json > "$work/bench-$joints.json" 2> "$work/bench-$joints.err"
  ) || bench_status=$?
  printf '%s\t%s\t%s\t%s\t%s\t%s\n' "$joints" "$model" "$gen_status" "$cli_status" \
    "$bench_status" "$out_bytes" >> "$results"
  if [ "${KEEP_MODELS:-0}" != 1 ]; then rm -f "$model"; fi
done

load_after="$(cut -d' ' -f1-3 /proc/loadavg)"

cpus="$(nproc)"
cpu_model="$(lscpu | sed -n 's/^Model name: *//p' | head -1)"
memory_gb="$(free -g | awk '/^Mem:/ {print $2}')"

CPUS="$cpus" CPU_MODEL="$cpu_model" MEMORY_GB="$memory_gb" WORK="$work" STARTED="$started" LOAD_BEFORE="$load_before" LOAD_AFTER="$load_after" \
  LIMIT_GB="$limit_gb" python3 - << 'EOF'
import json, os, re

work = os.environ["WORK"]


def time_report(path):
    """Wall seconds, peak resident MB and exit status from a /usr/bin/time -v report."""
    wall, peak, status = None, None, None
    try:
        text = open(path).read()
    except OSError:
        return wall, peak, status
    m = re.search(r"Elapsed \(wall clock\) time \(h:mm:ss or m:ss\): (\S+)", text)
    if m:
        parts = [float(p) for p in m.group(1).split(":")]
        wall = sum(p * 60 ** i for i, p in enumerate(reversed(parts)))
    m = re.search(r"Maximum resident set size \(kbytes\): (\d+)", text)
    if m:
        peak = int(m.group(1)) / 1024
    m = re.search(r"Exit status: (\d+)", text)
    if m:
        status = int(m.group(1))
    return wall, peak, status


def fmt(value, digits=2):
    if value is None:
        return "n/a"
    if isinstance(value, str):
        return value
    return f"{value:,.{digits}f}"


rows = []
for line in open(os.path.join(work, "results.tsv")):
    joints, model, gen_status, cli_status, bench_status, out_bytes = line.rstrip("\n").split("\t")
    joints = int(joints)
    gen_wall, gen_peak, _ = time_report(os.path.join(work, f"gen-{joints}.time"))
    cli_wall, cli_peak, cli_exit = time_report(os.path.join(work, f"cli-{joints}.time"))
    counters = {}
    try:
        data = json.load(open(os.path.join(work, f"bench-{joints}.json")))
        bench = data["benchmarks"][0]
        if bench.get("error_occurred"):
            counters = {"error": bench.get("error_message", "error")}
        else:
            counters = {k: v for k, v in bench.items() if isinstance(v, (int, float))}
    except (OSError, ValueError, IndexError, KeyError):
        pass
    cli_err = open(os.path.join(work, f"cli-{joints}.err")).read().strip()
    rows.append(dict(joints=joints, gen_wall=gen_wall, cli_wall=cli_wall, cli_peak=cli_peak,
                     cli_status=int(cli_status), cli_err=cli_err, out_mb=int(out_bytes or 0) / 1e6,
                     bench_status=int(bench_status), c=counters))

print("## Machine\n")
print(f"- run: {os.environ['STARTED']}")
print(f"- processors: {os.environ['CPUS']} ({os.environ['CPU_MODEL']})")
print(f"- memory: {os.environ['MEMORY_GB']} GB")
print(f"- load average (1, 5, 15 min) before: {os.environ['LOAD_BEFORE']}, "
      f"after: {os.environ['LOAD_AFTER']}")
print(f"- address-space limit of each run: {os.environ['LIMIT_GB']} GB (0: none)\n")

print("## Whole transfer, command line (`vask2trelk transfer`, /usr/bin/time -v)\n")
print("| joints | elements | model file MB | generate s | transfer s | peak MB | output MB | status |")
print("|---:|---:|---:|---:|---:|---:|---:|---|")
for r in rows:
    c = r["c"]
    status = "ok"
    if r["cli_status"] != 0:
        last = r["cli_err"].splitlines()[-1][:80] if r["cli_err"] else ""
        status = f"failed ({r['cli_status']}) {last}"
    print(f"| {r['joints']:,} | {fmt(c.get('elements'), 0)} | {fmt(c.get('file_MB'), 1)} "
          f"| {fmt(r['gen_wall'])} | {fmt(r['cli_wall'])} | {fmt(r['cli_peak'], 0)} "
          f"| {fmt(r['out_mb'], 1)} | {status} |")

print("\n## Phases through the library (bench/transfer_bench.cc)\n")
print("| joints | read file s | read MB/s | read source model s | fill store s | write files s "
      "| release s | total s | peak MB |")
print("|---:|---:|---:|---:|---:|---:|---:|---:|---:|")
for r in rows:
    c = r["c"]
    if "error" in c or not c:
        print(f"| {r['joints']:,} | failed (status {r['bench_status']}) {c.get('error', '')} "
              "| | | | | | | |")
        continue
    print(f"| {r['joints']:,} | {fmt(c['read_file_s'])} | {fmt(c['read_MB_per_s'], 0)} "
          f"| {fmt(c['read_model_s'])} | {fmt(c['fill_s'])} | {fmt(c['write_s'])} "
          f"| {fmt(c['release_s'])} | {fmt(c['total_s'])} | {fmt(c['peak_MB'], 0)} |")

print("\n## Reading the model file, and memory after each phase\n")
print("| joints | file bytes s | model s | host indexes s | full reading s (for comparison) "
      "| MB after reading the file | after the source model | after the store | peak MB |")
print("|---:|---:|---:|---:|---:|---:|---:|---:|---:|")
for r in rows:
    c = r["c"]
    if "error" in c or not c:
        continue
    # The rest of the file's reading is the host's indexes and connectivity.
    indexes = c["read_file_s"] - c["read_file_bytes_s"] - c["read_file_model_s"]
    print(f"| {r['joints']:,} | {fmt(c['read_file_bytes_s'])} | {fmt(c['read_file_model_s'])} "
          f"| {fmt(indexes)} | {fmt(c['read_file_full_s'])} "
          f"| {fmt(c['rss_host_MB'], 0)} | {fmt(c['rss_model_MB'], 0)} "
          f"| {fmt(c['rss_store_MB'], 0)} | {fmt(c['peak_MB'], 0)} |")

# Stage by stage, with the growth from each size to the next against the growth of the model.
measured = [r for r in rows if r["c"] and "error" not in r["c"]]
if measured:
    stages = sorted(k for k in measured[0]["c"] if re.match(r"[rt]\d\d_", k))
    stages = [s for s in stages if s != "t02_ReadVaskData"]
    header = "| stage | " + " | ".join(f"{r['joints']:,} s" for r in measured)
    pairs = list(zip(measured, measured[1:]))
    header += "".join(f" | x ({a['joints']:,} to {b['joints']:,})" for a, b in pairs) + " |"
    print("\n## Stage by stage (seconds; r: reading stages of the source model, "
          "t: transfer stages)\n")
    print(header)
    print("|---" + "|---:" * (len(measured) + len(pairs)) + "|")
    flagged = []
    for s in stages:
        cells = [fmt(r["c"].get(s), 3) for r in measured]
        growth = []
        for a, b in pairs:
            ta, tb = a["c"].get(s, 0), b["c"].get(s, 0)
            model = b["joints"] / a["joints"]
            if ta >= 0.005:
                g = tb / ta
                mark = " **!**" if g > 1.5 * model and tb >= 0.1 else ""
                if mark:
                    flagged.append((s, a["joints"], b["joints"], ta, tb, g, model))
                growth.append(f"{g:.1f}{mark}")
            else:
                growth.append("")
        print(f"| {s} | " + " | ".join(cells + growth) + " |")
    print()
    if flagged:
        print("Stages that grow far faster than the model (**!**: more than 1.5 times the "
              "growth in joints, and at least 0.1 s):\n")
        for s, ja, jb, ta, tb, g, model in flagged:
            print(f"- {s}: {ta:.3f} s at {ja:,} joints, {tb:.3f} s at {jb:,} "
                  f"(x{g:.1f} for x{model:.1f} joints)")
    else:
        print("No stage grows more than 1.5 times as fast as the model.")
EOF
