#!/usr/bin/env bash
# Measures what purging free space costs beyond the bytes themselves, under Wine on a mounted image:
# "bash tools/fillbench.sh [rounds [mebibytes]]", 10 rounds of some 1024 MiB if not said. As root.
. "$(dirname "$0")/common.sh"

rounds=${1:-10} size=${2:-1024}
need_packages "${packages_build[@]}" "${packages_wine[@]}" googletest e2fsprogs mount
build windows nullwright_fillbench
trap stop_everything EXIT
image=build/fillbench.img mountpoint=$top/build/fillbench
rm -f "$image"
truncate -s "$((size + 64))M" "$image"
mkfs.ext4 -q -m 0 "$image"
mkdir -p "$mountpoint"
mount -o loop "$image" "$mountpoint" || die "An image can be mounted as root only."
mounts+=("$mountpoint")
virtual_display
make_prefix
ln -sfn "$mountpoint" "$WINEPREFIX/dosdevices/x:"
warm_wine
status=0
bench nullwright_fillbench X "$rounds" || status=$?
wineserver -k -w || true
rm -f "$WINEPREFIX/dosdevices/x:"
umount "$mountpoint" && rm -f "$image"
exit $status
