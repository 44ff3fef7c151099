# Shared by the scripts: source it first. It enters the project's root folder.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"

say() { printf '%s\n' "$*"; }
die() {
    printf '%s\n' "$*" >&2
    exit 1
}

# build PRESET [TARGET...]: configures when that is due, then builds; quick when nothing changed.
build() {
    local preset=$1 dir=$root/build/$1
    shift
    if [ ! -f "$dir/build.ninja" ] || [ "$root/CMakePresets.json" -nt "$dir/build.ninja" ]; then
        cmake --preset "$preset" --log-level=WARNING || return
    fi
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

# The project's own C++ files (with arguments: those that match the patterns).
sources() {
    [ $# -gt 0 ] || set -- "*.h" "*.cpp"
    git ls-files -- "$@"
}
