#!/bin/bash
# clang-tidy over the project's own sources, in a build folder of its own: g++'s precompiled headers and
# flags are not clang's. Arguments limit it to matching files, e.g. 'core/*.cpp'.
. "$(dirname "$0")/lib/common.sh"
lint=$root/build/lint

# Only the generated headers are built here (forms, meta objects), nothing is compiled.
cmake --preset release -B "$lint" --log-level=WARNING >/dev/null \
    -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DCMAKE_GLOBAL_AUTOGEN_TARGET=ON -DCMAKE_AUTOGEN_ORIGIN_DEPENDS=OFF
cmake --build "$lint" --target autogen >"$lint/autogen.log" || die "$(cat "$lint/autogen.log")"
sed -i 's/ -fpch-preprocess//' "$lint/compile_commands.json"

[ $# -gt 0 ] || set -- 'app/*.cpp' 'core/*.cpp' 'ui/*.cpp' 'view/*.cpp' 'platform/*.cpp' 'tools/*.cpp'
sources "$@" | xargs -d '\n' -P "$(nproc)" -n 1 clang-tidy -p "$lint" --quiet 2>"$lint/tidy.log" || die "Lint: see above."
say "Lint: clean."
