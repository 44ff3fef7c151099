#!/bin/bash
# Boots the distribution's stock kernel in an emulated PC and runs one command inside, as root, with this
# machine's root file system (read-only, writes vanish) as its own: what was built here runs there unchanged,
# against the real kernel drivers. Needs no root. The kernel is fetched once and kept.
#   lab.sh prepare                  fetches the kernel, packs the first process; 77: the kernel cannot be had
#   lab.sh run SECONDS COMMAND...   boots and runs; ends with the command's status, 99 without one
# In the guest, /lab is the folder $LUMRO_LAB_DIR/share of this machine, for reading and writing.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
: "${LUMRO_LAB_DIR:=${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/lumro-lab}"
mkdir -p "$LUMRO_LAB_DIR/share"
cd "$LUMRO_LAB_DIR"

cannot() {
    echo "lab: $*" >&2
    exit 77
}

kernel_version() { basename "$(echo kernel/lib/modules/*)"; }

kernel_package() { apt-cache depends linux-image-amd64 2>/dev/null | awk '/Depends:/ {print $2; exit}'; }

download_kernel() {
    local package
    package=$(kernel_package)
    rm -rf fetch && mkdir fetch
    [ -n "$package" ] && (cd fetch && apt-get -q download "$package" >download.log 2>&1)
}

fetch_kernel() {
    [ ! -d kernel ] || return 0
    # The package list may be missing or older than the archive.
    download_kernel || { [ "$(id -u)" -eq 0 ] && apt-get -q update >&2 && download_kernel; } ||
        cannot "no kernel package can be had (apt-get update?)"
    dpkg -x fetch/linux-image-*.deb fetch/kernel
    depmod -b fetch/kernel "$(basename fetch/kernel/lib/modules/*)"
    mv fetch/kernel kernel # complete or not there at all
    rm -rf fetch
}

# The first process mounts this machine's files; it needs these drivers for that.
pack_first_process() {
    [ ! -f first.gz ] || [ "$here/first-process" -nt first.gz ] || return 0
    local file n=10
    rm -rf first
    mkdir -p first/bin first/drivers first/proc first/sys first/dev first/host first/upper first/root
    cp "$(command -v busybox)" first/bin/busybox
    install -m 755 "$here/first-process" first/init
    for file in virtio_pci 9pnet_virtio 9p overlay; do
        modprobe -d kernel -S "$(kernel_version)" --show-depends "$file"
    done | awk '$1 == "insmod" && !seen[$2]++ {print $2}' >drivers.txt
    while read -r file; do
        cp "$file" "first/drivers/$n-$(basename "$file")"
        n=$((n + 1))
    done <drivers.txt
    (cd first && find . | cpio -o -H newc --quiet | gzip -1) >first.gz.new
    mv first.gz.new first.gz
    rm -rf first drivers.txt
}

prepare() {
    [ "$(uname -m)" = x86_64 ] || cannot "only for x86-64 machines"
    command -v qemu-system-x86_64 >/dev/null || cannot "qemu-system-x86_64 is not installed"
    PATH=$PATH:/usr/sbin:/sbin
    fetch_kernel
    pack_first_process
}

run() { # SECONDS COMMAND...
    local limit=$1 version options
    shift
    version=$(kernel_version)
    options="console=ttyS0 quiet loglevel=3 panic=-1 mitigations=off nokaslr tsc=unstable random.trust_cpu=on"
    rm -f share/.status
    printf '%s\n' "$*" >share/.command
    cp "$here/second-process" share/.second-process
    timeout "$limit" qemu-system-x86_64 -machine q35,vmport=off -accel tcg,thread=multi,tb-size=1024 -cpu max \
        -smp 2 -m 2048 -nodefaults -display none -serial stdio -no-reboot \
        -kernel "kernel/boot/vmlinuz-$version" -initrd first.gz \
        -append "$options lab.modules=$LUMRO_LAB_DIR/kernel/lib/modules/$version" \
        -fsdev local,id=host,path=/,security_model=none,readonly=on,multidevs=remap \
        -device virtio-9p-pci,fsdev=host,mount_tag=host \
        -fsdev local,id=share,path=share,security_model=none \
        -device virtio-9p-pci,fsdev=share,mount_tag=share \
        -device virtio-rng-pci </dev/null || :
    if [ ! -f share/.status ]; then
        echo "lab: the guest ended without a status (time limit $limit s)" >&2
        return 99
    fi
    return "$(cat share/.status)"
}

"$@"
