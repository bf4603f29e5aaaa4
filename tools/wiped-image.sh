#!/usr/bin/env bash
# What was purged through the program's windows is in the raw image of its disk no more: files of all
# lengths, and what the free space still held of a deleted file. On ext4 with blocks of 4096 and of
# 1024 bytes, on ext4 that keeps small files in its inodes (without a journal, which would hold them,
# too), and on NTFS, which keeps them in its file records: there also what deleted files left in these.
# Arguments: the disks to try; none: all. Run by ./test, which has Wine, the program and a display
# ready. Exit code 77: skipped.
set -euo pipefail

. tools/small-image.sh

marker=nw-marker-5d1c-
sizes="20 60 100 240 500 600 690 1000 2000 4095 4096 4097 12345 65536 300001 1048576 3000001"

# markers_of LENGTH FILE: fills a file, as far as there is room. "yes" ends by a broken pipe.
markers_of() { { yes "$marker" || true; } 2> /dev/null | tr -d '\n' | head -c "$1" > "$2" 2> /dev/null || true; }

# expect_markers LEAST WHEN: how many there are in the raw image; at most 0 where LEAST is 0.
expect_markers() {
    local count
    count=$({ grep -a -o "$marker" "$image" || true; } | wc -l)
    echo "$disk: markers $2: $count"
    [ "$1" = 0 ] && [ "$count" = 0 ] || [ "$1" != 0 ] && [ "$count" -ge "$1" ]
}

purge_files() {
    local test size tests="WithRandomBytes WithPatternsAndRandomBytes"
    case $1 in
    ntfs | ext4-inline) tests="$tests SlackThenAllInBlocksOf512" ;;
    esac
    for test in $tests; do
        mkdir "$mounted/data"
        for size in $sizes; do markers_of "$size" "$mounted/data/$size.txt"; done
        detach && expect_markers 200000 "in files" && attach "$1" || return 1
        drive nullwright_purge "PurgeFolder.$test" && rmdir "$mounted/data" || return 1
        detach && expect_markers 0 "after purging them" && attach "$1" || return 1
    done
}

purge_free_space() {
    # Wine finds the device behind a drive letter in this list; without the device the program cannot
    # have the file system's own records flushed, which ext4 needs.
    [ "$1" = ntfs ] || [ -e /etc/mtab ] || { echo "no /etc/mtab"; return 77; }
    # The whole of the disk was somebody's file, which is deleted.
    markers_of 25000000 "$mounted/secret.txt"
    sync -f "$mounted"
    rm "$mounted/secret.txt"
    sync -f "$mounted"
    expect_markers 500000 "of a deleted file" || return 1
    drive nullwright_window_tests DrivesTest.FreeSpaceIsPurged || return 1
    detach && expect_markers 0 "after purging the free space"
}

# places TEXT WHEN: how often it is in free file records of NTFS, in those of folders that are there,
# in index blocks, and elsewhere. Names are in UTF-16 there.
places() {
    perl -0777 -ne '
        BEGIN {
            ($text, $when) = splice @ARGV, 0, 2;
            $text =~ s/(.)/$1\0/g if $when =~ /names/ && $when =~ /^ntfs/;
        }
        while (/\Q$text\E/g) {
            my $at = pos() - length $text;
            my $record = substr $_, $at - $at % 1024, 23;
            if ($record =~ /^FILE/) { $n[ord(substr $record, 22) % 2]++ }
            elsif (substr($_, $at - $at % 4096, 4) eq "INDX") { $n[2]++ }
            else { $n[3]++ }
        }
        printf "%s: in free records %d, in folders %d + %d, elsewhere %d\n", $when, map { $_ // 0 } @n[0 .. 3];
    ' "$1" "$disk: $2" "$image"
}

# Names of small files in a folder and below it, purged and deleted, with and without "Overwrite file
# names and dates"; the folders below it go, too. What NTFS keeps in its log does not count. Not on ext4:
# it clears an entry itself, but its journal and the blocks of removed folders keep names in any case.
purge_names() {
    local test i folder found count log utf8
    for test in AllBelowAndTheNames AllBelow; do # in this order: later names would hide earlier ones
        for i in $(seq 200); do
            folder=$mounted/data
            [ $((i % 2)) = 0 ] || folder=$folder/nested/$((i % 5))/below
            mkdir -p "$folder"
            markers_of 240 "$folder/$test-$i.txt"
            markers_of 600 "$folder/second-$test-$i.txt"
        done
        # What was written here is on the disk before it is purged.
        detach && attach "$1" && drive nullwright_purge "PurgeFolder.$test" && detach || return 1
        log=$(ntfscat -i 2 "$image" | tr -d '\0' | { grep -a -o "$test-" || true; } | wc -l)
        found=$(places "$test-" "names after $test")
        utf8=$({ grep -a -o "$test-" "$image" || true; } | wc -l)
        echo "$found (in the log of NTFS $log), in UTF-8 $utf8"
        count=$(sed 's/.*: //; s/[^0-9]/ /g' <<< "$found" | awk '{ print $1 + $2 + $3 + $4 }')
        if [ "$test" = AllBelow ]; then [ "$count" -ge 400 ]; else [ "$count" = "$log" ] && [ "$utf8" = 0 ]; fi || return 1
        expect_markers 0 "after $test" && attach "$1" || return 1
    done
}

# Small files that were deleted one by one, or with their folders: contents and names lie in records.
purge_records() {
    local i folder found
    for i in $(seq 200); do
        folder=$mounted/kept/$((i % 4))
        [ $((i % 2)) = 0 ] || folder=$mounted/gone/$((i % 5))/below
        mkdir -p "$folder"
        markers_of 240 "$folder/nw-old-name-$i.txt"
        markers_of 600 "$folder/second-nw-old-name-$i.txt"
    done
    rm -r "$mounted/gone"
    find "$mounted/kept" -type f -delete
    detach
    found=$(places "$marker" "contents before"; places nw-old-name "names before")
    attach "$1"
    drive nullwright_window_tests DrivesTest.FreeSpaceIsPurged || return 1
    detach
    found+=$'\n'$(places "$marker" "contents after"; places nw-old-name "names after")
    echo "$found"
    # Names stay in folders that are still there, behind those in use.
    [[ $found =~ 'contents before: in free records 1'[01]...,.*'names before: in free records 4'..,.*\
'contents after: in free records 0, in folders 0 + 0, elsewhere 0'.*\
'names after: in free records 0, in folders '[0-9]+' + '[0-9]+', elsewhere 0' ]]
}

[ "$(id -u)" = 0 ] || { echo "skipped: no right to mount an image"; exit 77; }
tried=0 failed=0
[ $# -gt 0 ] || set -- "ext4 4096" "ext4 1024" "ext4-inline 4096" "ntfs 4096"
for disk in "$@"; do
    # shellcheck disable=SC2086
    if ! { make_image $disk && attach $disk; }; then
        echo "skipped: $disk: cannot be mounted"
        continue
    fi
    tried=$((tried + 1)) status=0
    # shellcheck disable=SC2086
    purge_files $disk || failed=1
    # shellcheck disable=SC2086
    [ "${disk% *}" = ext4-inline ] || purge_free_space $disk || status=$?
    case $status in
    0) ;;
    77) echo "skipped: free space of $disk" ;;
    *) failed=1 ;;
    esac
    detach || failed=1
    # shellcheck disable=SC2086
    [ "${disk% *}" != ntfs ] || { make_image $disk && attach $disk && purge_names $disk; } || failed=1
    detach || failed=1
    # shellcheck disable=SC2086
    [ "${disk% *}" != ntfs ] || { make_image $disk && attach $disk && purge_records $disk; } || failed=1
    detach || failed=1
done
[ $failed = 0 ] || { echo "markers were left, or were never there"; exit 1; }
[ $tried -gt 0 ] || { echo "skipped: no image can be mounted here"; exit 77; }
