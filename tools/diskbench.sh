#!/usr/bin/env bash
# Measures purging files on a real Linux disk, without Wine: our run, GNU shred and a plain loop by
# turns; the same where a flush takes 5 ms. "bash tools/diskbench.sh [argument ...]"; the arguments
# are those of nullwright_diskbench (see bench/posix/DiskBench.cpp). NW_DISK names a folder on the disk
# to be measured, build/ if not set. Prints the machine and the table of docs/performance.md; fails
# when a bar is missed.
. "$(dirname "$0")/common.sh"

need_packages "${packages_build[@]}" "${packages_disk[@]}" googletest
build disk
trap stop_everything EXIT
disk=${NW_DISK:-build}
root=$disk/nullwright-diskbench
rm -rf "$root"
mkdir -p "$root/C" "$root/S" "$root/slow"
build/disk/bench/nullwright_slowflush "$root/slow" "$root/S" 5 > build/slowflush.log 2>&1 &
children+=($!)
if wait_for 5 mountpoint -q "$root/S"; then
    mounts+=("$root/S")
else
    cat build/slowflush.log
    rmdir "$root/S"
fi

say "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -1), $(nproc) processors, Linux $(uname -r)," \
    "$(stat -f -c %T "$root/C"), $(shred --version | head -1), load $(cut -d ' ' -f 1 /proc/loadavg)"
status=0
build/disk/bench/nullwright_diskbench "$root" "$@" || status=$?
umount "$root/S" 2> /dev/null || fusermount3 -u "$root/S" 2> /dev/null || true
rm -rf --one-file-system "$root"
exit $status
