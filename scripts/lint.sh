#!/bin/bash
# clang-tidy over the project's own sources with the flags of the release build, which is made first: it
# writes the headers that the sources include.
#   scripts/lint.sh [--build-folder FOLDER] [PATTERN...]     only files like 'core/*.cpp'; another build
#
# Most of the time goes into the headers of the libraries. So the files of a folder are looked at as one
# translation unit, the analyser included; where their names collide, the batch is halved until they do not.
. "$(dirname "$0")/lib/common.sh"
lint=$root/build/lint
batch_size=10

flags_of() { # FILE: without the launcher, the compiler, g++'s precompiled headers and the output
    grep -F -- " -c $root/$1\"" "$build_folder/compile_commands.json" | head -n 1 |
        sed -e 's/^ *"command": "//; s/",$//; s/\\\(.\)/\1/g' -e 's/^[^ ]*ccache\.sh //; s/^[^ ]* //; s/ -o .*//' \
            -e 's/ -fpch-preprocess//; s/ -Winvalid-pch//; s/ -include [^ ]*cmake_pch.hxx//'
}

tidy() { # UNIT FLAGS: what it has to say; fails when it has
    local flags
    eval "flags=($2)"
    clang-tidy --quiet "$1" -- "${flags[@]}" -Xclang -analyzer-opt-analyze-headers 2>"$1.log"
}

lint_batch() { # FILE...
    local unit report flags half=$(($# / 2))
    flags=$(flags_of "$1")
    if [ -z "$flags" ]; then
        say "$1: not part of the build"
        return 1
    fi
    unit=$(mktemp "$lint/XXXXXX.cpp")
    printf "#include \"$root/%s\" // NOLINT\n" "$@" >"$unit"
    report=$(tidy "$unit" "$flags") && return
    if [ $# -eq 1 ] || ! grep -q clang-diagnostic-error <<<"$report"; then
        say "${report:-$(cat "$unit.log")}"
        return 1
    fi
    local failed=0
    lint_batch "${@:1:half}" || failed=1
    lint_batch "${@:half+1}" || failed=1
    return $failed
}

batches() { # FILE...: one batch a line, each from one folder
    printf '%s\n' "$@" | awk -v size="$batch_size" '
        { folder = $0; sub("/[^/]*$", "", folder) }
        NR > 1 && (folder != last || count == size) { printf "\n"; count = 0 }
        { printf "%s%s", (count ? " " : ""), $0; count++; last = folder }
        END { printf "\n" }'
}

if [ "${1:-}" = --batch ]; then # one of the processes that the script starts below
    build_folder=$2
    lint_batch "${@:3}"
    exit
fi

build_folder=build/release
if [ "${1:-}" = --build-folder ]; then
    build_folder=$2
    shift 2
else
    build release
fi
rm -rf "$lint"
mkdir -p "$lint"
[ $# -gt 0 ] || set -- 'app/*.cpp' 'outputs/*.cpp' 'core/*.cpp' 'ui/*.cpp' 'view/*.cpp' 'platform/*.cpp' 'sound/*.cpp' 'tools/*.cpp'
mapfile -t files < <(sources "$@")
batches "${files[@]}" | xargs -P "$(nproc)" -L 1 "$0" --batch "$build_folder" || die "Lint: see above."
say "Lint: ${#files[@]} files are clean."
