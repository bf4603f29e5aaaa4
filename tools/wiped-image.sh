#!/usr/bin/env bash
# After the free space of a small disk was purged through the program's windows, nothing of a file
# that was deleted before is in the disk's image any more. Run by ./test, which has Wine, the
# program and a display ready. Exit code 77: skipped.
set -euo pipefail

image=build/wiped.img mountpoint=$PWD/build/wiped marker=MARKER-OF-A-DELETED-FILE
mkdir -p "$mountpoint"
rm -f "$image"
truncate -s 24M "$image"
mkfs.ext4 -q -m 0 -b 4096 "$image"
if [ "$(id -u)" != 0 ] || ! mount -o loop "$image" "$mountpoint" 2> /dev/null; then
    echo "skipped: no image can be mounted here"
    exit 77
fi
# The letter of the other small drive, which Wine knows: new letters it sees at its next start only.
letter=$WINEPREFIX/dosdevices/t:
other=$(readlink "$letter" || true)
clean_up() {
    if [ -n "$other" ]; then ln -sfn "$other" "$letter"; else rm -f "$letter"; fi
    umount "$mountpoint" 2> /dev/null || true
    rm -f "$image"
}
trap clean_up EXIT
# ext4 keeps some blocks back for its own records, which no program can fill.
echo 0 > "/sys/fs/ext4/$(basename "$(findmnt -n -o SOURCE "$mountpoint")")/reserved_clusters"
markers() { { grep -a -o "$marker" "$image" || true; } | wc -l; }

# In front of it lies room for the file system's own records (the block of a new folder): what such
# a block held stays when it is given back before it was ever written, and no program can help that.
head -c 2000000 /dev/zero > "$mountpoint/room"
sync -f "$mountpoint"
{ yes "$marker" || true; } | head -c 3000000 > "$mountpoint/secret.txt"
sync -f "$mountpoint"
rm "$mountpoint/secret.txt" "$mountpoint/room"
sync -f "$mountpoint"
before=$(markers)
echo "markers after deleting the file: $before"
[ "$before" -gt 100000 ] || { echo "the deleted file was not there: nothing is shown"; exit 1; }

ln -sfn "$mountpoint" "$letter"
NW_SMALL_DRIVE='T:\' timeout 120 wine 'C:\tests\nullwright_window_tests.exe' \
    --gtest_filter='DrivesTest.SpeedIsMeasuredAndFreeSpacePurged' < /dev/null
umount "$mountpoint"
after=$(markers)
echo "markers after purging the free space: $after"
[ "$after" = 0 ]
