#!/bin/bash
# Installs the packages that are missing. Without arguments all groups of lib/packages.txt, otherwise the
# named ones (build, run, test, lab, learn). Costs one look-up when nothing is missing.
#   scripts/setup.sh [GROUP...]
. "$(dirname "$0")/lib/common.sh"

wanted_packages() { # GROUP...
    local group package _
    while read -r group package _; do
        case " $* " in *" $group "*) printf '%s\n' "$package" ;; esac
    done <scripts/lib/packages.txt
}

missing_packages() { # PACKAGE...
    local installed package
    installed=" $(dpkg-query -W -f='${db:Status-Status}=${Package} ' "$@" 2>/dev/null || :)"
    for package; do
        case "$installed" in *" installed=$package "*) ;; *) printf '%s\n' "$package" ;; esac
    done
}

# As root plainly, otherwise through sudo; explains itself when neither is possible.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "This user can neither act as root nor use sudo. As root run:
    apt-get update && apt-get install --no-install-recommends PACKAGE..."
    fi
}

apt() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@" </dev/null; }

# The lab runs this machine's own programs in an emulated PC: of no use on another processor. What learns
# weights anew is installed by name only.
if [ $# -eq 0 ]; then
    set -- build run test
    [ "$(uname -m)" != x86_64 ] || set -- "$@" lab
fi
mapfile -t packages < <(wanted_packages "$@")
command -v dpkg-query >/dev/null || die "This is no Debian system: install what the packages below hold, then run
    cmake --preset release && cmake --build --preset release
${packages[*]}"
mapfile -t missing < <(missing_packages "${packages[@]}")
[ ${#missing[@]} -gt 0 ] || exit 0

say "Missing packages: ${missing[*]}"
apt update
apt install -y --no-install-recommends "${missing[@]}"
mapfile -t missing < <(missing_packages "${packages[@]}")
[ ${#missing[@]} -eq 0 ] || die "Still missing after the installation: ${missing[*]}"
