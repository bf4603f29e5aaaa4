#!/usr/bin/env bash
# Measures what purging free space costs beyond the bytes themselves, on two equal mounted images, by
# turns: "bash tools/fillbench.sh [native|wine] [rounds [mebibytes]]"; natively and under Wine, 5
# rounds of some 1024 MiB if not said. As root.
. "$(dirname "$0")/common.sh"

where=both
case ${1-} in
native | wine) where=$1; shift ;;
esac
rounds=${1:-5} size=${2:-1024}
need_packages "${packages_build[@]}" googletest e2fsprogs mount
[ $where = wine ] || build disk nullwright_fillbench
if [ $where != native ]; then
    need_packages "${packages_wine[@]}"
    build windows nullwright_fillbench
fi
trap stop_everything EXIT
root=$top/build/fillbench

# One after the other, so that each begins with fresh images.
attach() {
    local letter device spare
    for letter in X Y; do
        mkdir -p "$root/$letter"
        rm -f "$root/$letter.img"
        # The plain writes are to find room for all that ours could write.
        [ $letter = X ] && spare=64 || spare=66
        truncate -s "$((size + spare))M" "$root/$letter.img"
        mkfs.ext4 -q -m 0 "$root/$letter.img"
        # With delayed allocation a disk that fills to the brim was seen to hang the kernel.
        mount -o loop,nodelalloc "$root/$letter.img" "$root/$letter" ||
            die "An image can be mounted as root only."
        mounts+=("$root/$letter")
        device=$(findmnt -n -o SOURCE "$root/$letter")
        echo 0 > "/sys/fs/ext4/$(basename "$device")/reserved_clusters"
    done
}
detach() {
    umount "$root/X" "$root/Y" && rm -f "$root"/*.img
}

status=0
if [ $where != wine ]; then
    say "On POSIX files"
    attach
    NW_ROOT=$root build/disk/bench/nullwright_fillbench X Y "$rounds" || status=$?
    detach
fi
if [ $where != native ]; then
    say "Under Wine"
    virtual_display
    make_prefix
    attach
    ln -sfn "$root/X" "$WINEPREFIX/dosdevices/x:"
    ln -sfn "$root/Y" "$WINEPREFIX/dosdevices/y:"
    warm_wine
    bench nullwright_fillbench X Y "$rounds" || status=$?
    wineserver -k -w || true
    rm -f "$WINEPREFIX/dosdevices/x:" "$WINEPREFIX/dosdevices/y:"
    detach
fi
exit $status
