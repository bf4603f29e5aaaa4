#!/usr/bin/env bash
# After the free space of a small disk was purged through the program's windows, nothing of a file
# that was deleted before is in the disk's image any more: on ext4 with blocks of 4096 and of 1024
# bytes, and on NTFS. Run by ./test, which has Wine, the program and a display ready. Exit code 77:
# skipped.
set -euo pipefail

image=build/wiped.img mountpoint=$PWD/build/wiped marker=MARKER-OF-A-DELETED-FILE
mkdir -p "$mountpoint"
# The letter of the other small drive, which Wine knows: new letters it sees at its next start only.
letter=$WINEPREFIX/dosdevices/t:
other=$(readlink "$letter" || true)
clean_up() {
    if [ -n "$other" ]; then ln -sfn "$other" "$letter"; else rm -f "$letter"; fi
    umount "$mountpoint" 2> /dev/null || true
    rm -f "$image"
}
trap clean_up EXIT
markers() { { grep -a -o "$marker" "$image" || true; } | wc -l; }

# make_disk FILESYSTEM CLUSTER: an empty image, mounted. Fails where that cannot be done.
make_disk() {
    [ "$(id -u)" = 0 ] || return 1
    rm -f "$image"
    truncate -s 24M "$image"
    if [ "$1" = ntfs ]; then
        mkfs.ntfs -q -F -Q -c "$2" "$image" > /dev/null 2>&1 && ntfs-3g "$image" "$mountpoint" 2> /dev/null
        return
    fi
    mkfs.ext4 -q -m 0 -b "$2" "$image" && mount -o loop "$image" "$mountpoint" 2> /dev/null || return 1
    # ext4 keeps some blocks back for its own records, which no program can fill.
    echo 0 > "/sys/fs/ext4/$(basename "$(findmnt -n -o SOURCE "$mountpoint")")/reserved_clusters"
}

# try_on FILESYSTEM CLUSTER: the whole of the disk was somebody's file, which is deleted.
try_on() {
    local before after
    # Wine finds the device behind a drive letter in this list; without the device the program cannot
    # have the file system's own records flushed, which ext4 needs.
    [ "$1" = ntfs ] || [ -e /etc/mtab ] || { echo "no /etc/mtab"; return 77; }
    make_disk "$1" "$2" || { echo "no right to mount an image"; return 77; }
    { yes "$marker" || true; } 2> /dev/null | head -c 25000000 > "$mountpoint/secret.txt" 2> /dev/null || true
    sync -f "$mountpoint"
    rm "$mountpoint/secret.txt"
    sync -f "$mountpoint"
    before=$(markers)
    echo "$1, clusters of $2: markers after deleting the file: $before"
    [ "$before" -gt 500000 ] || { echo "the deleted file was not there: nothing is shown"; return 1; }
    ln -sfn "$mountpoint" "$letter"
    NW_SMALL_DRIVE='T:\' timeout 120 wine 'C:\tests\nullwright_window_tests.exe' \
        --gtest_filter='DrivesTest.SpeedIsMeasuredAndFreeSpacePurged' < /dev/null || return 1
    umount "$mountpoint"
    after=$(markers)
    echo "$1, clusters of $2: markers after purging the free space: $after"
    [ "$after" = 0 ]
}

done_on=0 result=0
for disk in "ext4 4096" "ext4 1024" "ntfs 4096"; do
    status=0
    # shellcheck disable=SC2086
    try_on $disk || status=$?
    case $status in
    0) done_on=$((done_on + 1)) ;;
    77) echo "skipped: $disk" ;;
    *) result=1 ;;
    esac
    umount "$mountpoint" 2> /dev/null || true
done
[ $result = 0 ] || exit 1
[ $done_on -gt 0 ] || { echo "skipped: no image can be tried here"; exit 77; }
