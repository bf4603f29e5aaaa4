#!/usr/bin/env bash
# Looks for what a purge left behind in raw disk images.
#   forensics.sh PROGRAM WORKFOLDER
# PROGRAM is nullwright_purge.exe with nwaux6.dll beside it; WINEPREFIX the Wine prefix to run it
# in, which is given a drive letter for the time of the test. Small images are filled with files of
# marker text of 20 bytes to some MiB: ext4; ext4 that keeps small files in its inodes (without a
# journal, which would hold them, too); NTFS, which keeps them in its file records. After purging,
# no marker may be anywhere in the raw image. A control run that merely deletes shows that the
# markers would be found. Ends with 77 where it cannot mount.
set -euo pipefail

program=$(realpath "$1")
mkdir -p "$2"
work=$(realpath "$2")
: "${WINEPREFIX:?}"
marker=nw-marker-5d1c-
sizes="20 60 100 240 500 690 1000 2000 4095 4096 4097 12345 65536 300001 1048576 3000001"
mount_point=$work/mounted
image=$work/image
letter=

detach() {
    [ -z "$letter" ] || rm -f "$WINEPREFIX/dosdevices/$letter:"
    letter=
    if mountpoint -q "$mount_point"; then
        # Wine lets go of a folder a moment after its program has ended.
        for _ in $(seq 50); do
            umount "$mount_point" 2> /dev/null && return
            sleep 0.1
        done
        umount -l "$mount_point"
        return 1
    fi
}
trap 'detach || true; rm -f "$image"' EXIT

make_image() {
    rm -f "$image"
    truncate -s 48M "$image"
    case $1 in
    ext4) mkfs.ext4 -q -F -m 0 "$image" ;;
    ext4-inline) mkfs.ext4 -q -F -m 0 -I 1024 -O inline_data,^has_journal "$image" ;;
    ntfs) mkntfs -q -Q -F -s 512 -p 0 -H 16 -S 63 "$image" ;;
    esac
}

attach() {
    case $1 in
    ext4*) mount -o loop "$image" "$mount_point" ;;
    # The cache of the driver must not keep a write from the image.
    ntfs) ntfs-3g -o sync "$image" "$mount_point" ;;
    esac
}

count_markers() {
    sync
    { grep -a -o -- "$marker" "$image" || true; } | wc -l
}

fill() {
    local size
    touch "$mount_point/purge-me.mark"
    for size in $sizes; do
        # The pipe ends early by design.
        { yes "$marker" || true; } | tr -d '\n' | head -c "$size" > "$mount_point/file-$size.txt"
    done 2> /dev/null
}

free_letter() {
    for letter in q r s u v w; do
        [ -e "$WINEPREFIX/dosdevices/$letter:" ] || [ -L "$WINEPREFIX/dosdevices/$letter:" ] || return 0
    done
    echo "no free drive letter" >&2
    exit 1
}

# run KIND WHAT ...: prints the number of markers before and after.
run() {
    local kind=$1 before after
    shift
    make_image "$kind" > "$work/make.log" 2>&1
    attach "$kind"
    (set +o pipefail; fill)
    detach
    before=$(count_markers)
    attach "$kind" # so that nothing is in a cache any more
    free_letter
    ln -sfn "$mount_point" "$WINEPREFIX/dosdevices/$letter:"
    if ! timeout 120 wine "$program" "$letter:" "$@" > "$work/run.log" 2>&1 < /dev/null; then
        cat "$work/run.log" >&2
        echo "$kind, $*: the program failed" >&2
        exit 1
    fi
    if [ "$(find "$mount_point" -name 'file-*' | wc -l)" != 0 ]; then
        echo "$kind, $*: files are left" >&2
        exit 1
    fi
    detach
    after=$(count_markers)
    echo "$kind, $*: $before markers before, $after after"
    result="$before $after"
}

skipped=
can_mount() {
    local why
    if why=$( (make_image "$1" && attach "$1") 2>&1); then
        detach
        return 0
    fi
    skipped="$skipped$1 (${why##*$'\n'}) "
    return 1
}

mkdir -p "$mount_point"
failed=0 checked=0
for kind in ext4 ext4-inline ntfs; do
    can_mount "$kind" || continue
    run "$kind" delete
    if [ "${result#* }" = 0 ]; then
        echo "$kind: the control run finds no markers, so this test proves nothing" >&2
        failed=1
    fi
    for type in 0 2; do
        run "$kind" purge $type 1
        [ "${result% *}" -gt 200000 ] && [ "${result#* }" = 0 ] || failed=1
    done
    checked=$((checked + 1))
done
[ $failed = 0 ] || { echo "markers were left, or were never there"; exit 1; }
if [ -n "$skipped" ]; then
    echo "skipped: cannot mount ${skipped% }"
    [ $checked -gt 0 ] || exit 77
fi
echo "$checked kinds of file system examined"
