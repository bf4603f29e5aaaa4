# shellcheck shell=bash
# Sourced by the scripts that let the program work on the image of a small disk: makes, mounts and
# unmounts it, and lets a test drive the program's windows on it. Wine, the program and a display are
# ready, see common.sh.

image=build/small.img mounted=$PWD/build/small-image image_size=24M
mkdir -p "$mounted"
# The letter of the other small drive, which Wine knows: new letters it sees at its next start only.
letter=$WINEPREFIX/dosdevices/t:
other=$(readlink "$letter" || true)

detach() {
    mountpoint -q "$mounted" || return 0
    # Wine lets go of a folder a moment after its program has ended.
    for _ in $(seq 50); do
        umount "$mounted" 2> /dev/null && return
        sleep 0.1
    done
    umount -l "$mounted"
    return 1
}
clean_up() {
    if [ -n "$other" ]; then ln -sfn "$other" "$letter"; else rm -f "$letter"; fi
    detach || true
    rm -f "$image"
}
trap clean_up EXIT

# make_image FORMAT BLOCK, attach FORMAT BLOCK: ext4, ext4-inline, ntfs.
make_image() {
    rm -f "$image"
    truncate -s "$image_size" "$image"
    case $1 in
    ext4) mkfs.ext4 -q -m 0 -b "$2" "$image" ;;
    ext4-inline) mkfs.ext4 -q -m 0 -b "$2" -I 1024 -O 'inline_data,^has_journal' "$image" ;;
    ntfs) mkfs.ntfs -q -F -Q -c "$2" -p 0 -H 16 -S 63 "$image" > /dev/null 2>&1 ;;
    esac
}

attach() {
    case $1 in
    ext4*)
        mount -o loop "$image" "$mounted" 2> /dev/null || return 1
        # ext4 keeps some blocks back for its own records, which no program can fill.
        echo 0 > "/sys/fs/ext4/$(basename "$(findmnt -n -o SOURCE "$mounted")")/reserved_clusters"
        ;;
    ntfs) ntfs-3g "$image" "$mounted" 2> /dev/null ;;
    esac
}

# drive PROGRAM TEST: lets a test drive Nullwright on the disk.
drive() {
    ln -sfn "$mounted" "$letter"
    NW_SMALL_DRIVE='T:\' timeout 120 wine "C:\\tests\\$1.exe" --gtest_brief=1 --gtest_filter="$2" < /dev/null
}
