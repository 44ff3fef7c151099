#!/bin/bash
# Runs every benchmark of a release build and prints each path as a ratio to its limit in the same run.
#   scripts/bench.sh [BUILD_FOLDER]      LUMRO_BENCH_MINUTES: length of the memory run, 10 without it
. "$(dirname "$0")/lib/common.sh"
. scripts/lib/display.sh

folder=${1:-build/release}
display_answers || start_virtual_display

"$folder/benchmarks/bench_frames" --benchmark_repetitions=8 --benchmark_min_time=0.3 \
    --benchmark_enable_random_interleaving=true
LUMRO_DESK=$folder/share/desk/desk.cfg "$folder/benchmarks/bench_start" \
    "$folder/bin/lumroscanner" "$folder/benchmarks/empty_window"
"$folder/benchmarks/bench_settings"
"$folder/benchmarks/bench_sheets"
"$folder/benchmarks/bench_outline"
"$folder/benchmarks/bench_verdict"
"$folder/benchmarks/bench_quality"
"$folder/benchmarks/bench_book"
"$folder/benchmarks/bench_codes"
"$folder/benchmarks/bench_pdf"
"$folder/benchmarks/bench_ocr"
"$folder/benchmarks/bench_layout"
"$folder/benchmarks/bench_faces"
"$folder/benchmarks/bench_record"
"$folder/benchmarks/bench_filming"
"$folder/benchmarks/bench_memory" "${LUMRO_BENCH_MINUTES:-10}"
