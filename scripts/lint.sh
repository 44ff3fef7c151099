#!/bin/bash
# clang-tidy over the project's own sources, tests and benchmarks included, with the flags of the release build. That
# is made first: it writes the headers that the sources include, and knows which ones they include.
#   scripts/lint.sh [--build-folder FOLDER] [PATTERN...]     another build, already made; only files like 'core/*.cpp'
#
# Most of the time goes into the headers of the libraries. So files with the same flags are looked at as one translation
# unit, as far as their names do not collide; clang analyses what a file called UnifiedSource* includes as if it stood
# there. What was found clean is not looked at again until something changes that decides about it (lib/lint-cache.sh).
. "$(dirname "$0")/lib/common.sh"
. scripts/lib/lint-cache.sh
work=$root/build/lint
batch_size=16

of_source() { awk -F'\t' -v source="$1" -v column="$2" '$1 == source { print $column }' "$work/commands"; }
rules=3 flags=4 # its columns

# One line for each set of files with the same rules and flags.
sets() { # FILE...
    printf '%s\n' "$@" |
        awk -F'\t' 'NR == FNR { due[$1]; next } $1 in due { print $3 " " $4 "\t" $1 }' - "$work/commands" | sort |
        awk -F'\t' '{ printf "%s%s", ($1 == last ? " " : start), $2; last = $1; start = "\n" } END { print "" }'
}

new_unit() { # FILE...
    local unit
    unit=$(mktemp "$work/UnifiedSource-XXXXXX.cpp")
    printf "#include \"$root/%s\" // NOLINT\n" "$@" >"$unit"
    printf '%s\n' "$unit"
}

tidy() { # UNIT FILE [OPTION]: by the rules and with the flags of the file
    local arguments
    eval "arguments=($(of_source "$2" $flags))"
    clang-tidy --quiet --config-file="$(of_source "$2" $rules)" "${@:3}" "$1" \
        -- "${arguments[@]}" -ferror-limit=0 2>"$1.log"
}

files_with_errors() { # UNIT FILE...: asks the compiler only, by a rule that costs nothing
    local unit=$1 report file
    shift
    report=$(tidy "$unit" "$1" --checks=-*,bugprone-suspicious-include) && return
    for file; do
        ! grep -q "^$root/$file:.* error: " <<<"$report" || printf '%s\n' "$file"
    done
}

# The files, which have the same flags: on each line some that compile together.
units() { # FILE...
    local colliding
    while [ $# -gt 1 ]; do
        mapfile -t colliding < <(files_with_errors "$(new_unit "$@")" "$@")
        [ ${#colliding[@]} -lt $# ] || colliding=("${@:2}")
        printf '%s\n' "$@" | grep -vxF "$(printf '%s\n' "${colliding[@]}")" | xargs -n "$batch_size"
        set -- "${colliding[@]}"
    done
    [ $# -eq 0 ] || say "$1"
}

lint() { # FILE...
    local unit report file failed=
    unit=$(new_unit "$@")
    if report=$(tidy "$unit" "$1"); then
        remember_clean "$@"
    elif [ $# -gt 1 ] && grep -qF "[clang-diagnostic-error]" <<<"$report"; then
        # They collide in this order, perhaps in a library's header: "using namespace" of one stands before it.
        for file; do lint "$file" || failed=1; done
        [ -z "$failed" ]
    else
        say "${report:-$(cat "$unit.log")}" | tee -a "$work/report"
        return 1
    fi
}

# The processes that the script starts below.
case "${1:-}" in
--units | --lint)
    "${1#--}" "${@:2}"
    exit
    ;;
esac

build_folder=build/release
if [ "${1:-}" = --build-folder ]; then
    build_folder=$2
    shift 2
else
    build release
fi
[ $# -gt 0 ] || set -- '*.cpp'
rm -rf "$work"
mkdir -p "$work"
mapfile -t files < <(sources "$@")
read_build "$build_folder" "${files[@]}"
mapfile -t due < <(not_known_clean "${files[@]}")
if [ ${#due[@]} -gt 0 ]; then
    say "Lint: ${#due[@]} of ${#files[@]} files have changed."
    sets "${due[@]}" | xargs -P "$(nproc)" -L 1 "$0" --units >"$work/units"
    xargs -P "$(nproc)" -L 1 "$0" --lint <"$work/units" || die "Lint: see above."
fi
say "Lint: ${#files[@]} files are clean."
