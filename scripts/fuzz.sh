#!/usr/bin/env bash
# Fuzzes every file reader for a while, longer than the short run of scripts/test.sh: builds the
# clang fuzz build, runs each target of fuzz/CMakeLists.txt in turn on its corpus, and prints per
# target the executions reached, whether it crashed and which inputs take 100 ms or more.
#
#   scripts/fuzz.sh [--update-corpus] [--only TARGET]... [MINUTES]    (default 10 minutes each)
#
# The corpus kept in the repository (fuzz/corpus/<name>) is only read; new finds go into a
# scratch copy, build-fuzz/fuzz-work/<target>/, kept between runs. --update-corpus then
# minimises the repository's corpus and the scratch copy together back into fuzz/corpus/<name>
# (-merge=1), which must stay small: about 30 files and 100 KB.
# Crash inputs and logs are in build-fuzz/fuzz-work/ too.
set -euo pipefail
cd "$(dirname "$0")/.."

minutes=10
update=0
only=()
while [ $# -gt 0 ]; do
  case "$1" in
    --update-corpus) update=1 ;;
    --only) only+=("$2"); shift ;;
    [0-9]*) minutes=$1 ;;
    *) echo "usage: $0 [--update-corpus] [--only TARGET]... [MINUTES]" >&2; exit 2 ;;
  esac
  shift
done
seconds=$(awk -v m="$minutes" 'BEGIN { s = int(m * 60); print (s < 1 ? 1 : s) }')

# "koru_fuzz_target(<target> <corpus> <libraries>)" lines.
targets=()
corpora=()
while read -r target corpus; do
  if [ ${#only[@]} -gt 0 ] && [[ ! " ${only[*]} " == *" $target "* ]]; then continue; fi
  targets+=("$target")
  corpora+=("$corpus")
done < <(sed -n 's/^koru_fuzz_target(\([A-Za-z0-9_]*\) \([A-Za-z0-9_]*\).*/\1 \2/p' fuzz/CMakeLists.txt)
if [ ${#targets[@]} -eq 0 ]; then
  echo "no such fuzz target: ${only[*]}" >&2
  exit 2
fi

echo "== fuzz build (clang, ASan + UBSan)"
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++-14 \
  -DKORU_SANITIZE=ON -DKORU_FUZZ=ON -DKORU_WITH_QT=OFF -DKORU_BENCH=OFF >/dev/null
cmake --build build-fuzz -j "$(nproc)" --target "${targets[@]}"

export ASAN_OPTIONS=detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
work=build-fuzz/fuzz-work
mkdir -p "$work"
summary=()
failed=0
for i in "${!targets[@]}"; do
  target=${targets[$i]}
  corpus=fuzz/corpus/${corpora[$i]}
  binary=build-fuzz/fuzz/$target
  scratch=$work/$target
  log=$work/$target.log
  mkdir -p "$scratch" "$corpus"
  echo "== $target: $seconds s on $corpus"

  status=0
  "$binary" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=1 -print_final_stats=1 \
    -artifact_prefix="$work/$target-" "$scratch" "$corpus" >"$log" 2>&1 || status=$?
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -n 1)
  if [ "$status" -eq 0 ]; then
    result="no crash"
  else
    result="CRASHED (exit $status, see $log)"
    failed=1
  fi

  # Every input kept, run once more on its own: libFuzzer tells the time each took.
  slow=$(find "$scratch" "$corpus" -type f -print0 | xargs -0 -r "$binary" -rss_limit_mb=2048 2>&1 |
    awk '/^Executed .* in [0-9]+ ms$/ { if ($(NF-1) >= 100) { n++; if ($(NF-1) > worst) worst = $(NF-1) } }
         END { if (n) printf "%d inputs of 100 ms or more (slowest %d ms)", n, worst; else print "none slower than 100 ms" }') ||
    slow="could not be timed"

  if [ "$update" -eq 1 ] && [ "$status" -eq 0 ]; then
    merged=$(mktemp -d)
    "$binary" -merge=1 -rss_limit_mb=2048 -timeout=1 "$merged" "$corpus" "$scratch" >>"$log" 2>&1
    find "$corpus" -mindepth 1 -delete
    cp "$merged"/* "$corpus"/ 2>/dev/null || true
    rm -rf "$merged"
    files=$(find "$corpus" -type f | wc -l)
    kb=$(du -sk "$corpus" | cut -f1)
    echo "   corpus now $files files, $kb KB"
    if [ "$files" -gt 30 ] || [ "$kb" -gt 100 ]; then echo "   (larger than 30 files or 100 KB: worth a look before committing)"; fi
  fi
  line="$target: ${executions:-?} executions (${rate:-?}/s), $result; $slow"
  echo "   $line"
  summary+=("$line")
done

echo "== summary ($seconds s each)"
printf '%s\n' "${summary[@]}"
exit "$failed"
