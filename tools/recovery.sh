#!/usr/bin/env bash
# What the recovery programs of others find: on ext4 and on NTFS, pictures, texts and archives of all
# sizes are deleted, purged, purged with "Overwrite file names and dates", or deleted and the free space
# purged, all through the program's real windows under Wine. Then Sleuth Kit, PhotoRec, foremost and
# ntfsundelete look at the raw image. Prints a table: how many files each brings back whole, by their
# checksums or with something behind their end, how many of their names each lists, and how many the image
# holds, with and without the journal of the file system. As root; no part of ./test.
. "$(dirname "$0")/common.sh"

need_packages "${packages_build[@]}" "${packages_wine[@]}" googletest "${packages_recovery[@]}"
[ "$(id -u)" = 0 ] || die "Images are mounted: this needs root."
work=$top/build/recovery
rm -rf "$work"
mkdir -p "$work/files"
build windows
trap stop_everything EXIT
virtual_display
make_prefix
install_product
mkdir -p "$WINEPREFIX/drive_c/tests" "$WINEPREFIX/drive_c/nwtest"
cp -f build/windows/tests/*.exe build/windows/tests/*.dll "$WINEPREFIX/drive_c/tests/"
export NW_TEST_FOLDER='C:\nwtest' NW_PROGRAM='C:\Program Files\Nullwright\nullwright.exe'
. tools/small-image.sh
trap 'clean_up; stop_everything' EXIT
image_size=48M
ln -sfn "$mounted" "$letter" # before Wine starts
warm_wine

# The files: each with a name and contents of its own, the same in every run.
make_files() {
    local i side
    for i in $(seq 8); do
        side=$((40 * i * i))
        convert -seed "$i" -size "${side}x$((side * 3 / 4))" plasma:red-blue "$work/files/holiday-picture-$i.jpg"
        convert -seed "$i" -size "$((side / 8))x$((side / 8))" plasma:green-white "$work/files/drawing-number-$i.png"
    done
    python3 - "$work/files" << 'END'
import gzip, pathlib, random, sys, zipfile
folder = pathlib.Path(sys.argv[1])
random.seed(5)
words = ["".join(random.choices("abcdefghijklmnoprstuvwy", k=random.randint(2, 9))) for _ in range(3000)]
text = lambda size: " ".join(random.choices(words, k=size // 3))[:size]
for size in (80, 240, 400, 600, 900, 2000, 4096, 9000, 40000, 250000):
    (folder / f"private-letter-{size}.txt").write_text(text(size))
for size in (100, 500, 3000, 60000, 700000):
    with gzip.GzipFile(folder / f"packed-diary-{size}.gz", "wb", mtime=0) as packed:
        packed.write(text(size).encode())
    with zipfile.ZipFile(folder / f"archive-of-{size}.zip", "w", zipfile.ZIP_DEFLATED) as archive:
        for part in "abc":
            archive.writestr(zipfile.ZipInfo(f"{part}.txt"), text(size // 3))
END
}

# Half of them in the folder, half in two folders below it.
copy_files() {
    local file i=0 folder
    for file in "$work"/files/*; do
        folder=$mounted/data
        [ $((i % 2)) = 0 ] || folder=$folder/nested/$((i % 4))
        i=$((i + 1))
        mkdir -p "$folder"
        cp "$file" "$folder/"
    done
}

# look_for_files: lets each of the tools loose on the image, and prints its part of the table's row.
look_for_files() {
    local out=$work/found
    rm -rf "$out"
    mkdir -p "$out"/{tsk,undelete}
    fls -r -p "$image" > "$out/names-fls" 2> /dev/null || true
    tsk_recover -e "$image" "$out/tsk" > /dev/null 2>&1 || true
    (cd "$out" && # where it leaves the state of its search
        photorec /log /logname "$out/photorec.log" /d "$out/photorec" /cmd "$top/$image" \
            partition_none,fileopt,everything,enable,wholespace,search > /dev/null 2>&1 < /dev/null) || true
    foremost -t all -q -i "$image" -o "$out/foremost" > /dev/null 2>&1 || true
    if [ "${1% *}" = ntfs ]; then
        ntfsundelete -f -s "$image" > "$out/names-undelete" 2> /dev/null || true
        ntfsundelete -f -u -m '*' -d "$out/undelete" "$image" > /dev/null 2>&1 || true
        ntfscat -i 2 "$image" > "$out/journal"
    else
        debugfs -R "dump <8> $out/journal" "$image" > /dev/null 2>&1
    fi
    python3 - "$work/files" "$out" "${1% *}" "$image" << 'END'
import hashlib, pathlib, sys
originals = {p.name: p.read_bytes() for p in pathlib.Path(sys.argv[1]).iterdir()}
out = pathlib.Path(sys.argv[2])

def whole(*folders):
    """How many originals are among what was found, byte by byte, whatever stands behind their end."""
    found = [p.read_bytes() for f in folders for p in out.glob(f + "/**/*") if p.is_file()]
    sums = {hashlib.sha256(f).digest() for f in found}
    return sum(hashlib.sha256(data).digest() in sums or any(f.startswith(data) for f in found)
               for data in originals.values())

def names(file):
    text = (out / file).read_text(errors="replace")
    return sum(name in text for name in originals)

ntfs = sys.argv[3] == "ntfs"
# What no tool lists, but a disk editor would find: anywhere, and outside the file system's journal.
raw, journal = pathlib.Path(sys.argv[4]).read_bytes(), (out / "journal").read_bytes()
forms = lambda name: (name.encode(), name.encode("utf-16-le"))
print(whole("tsk"), whole("photorec*"), whole("foremost"), whole("undelete") if ntfs else "-",
      names("names-fls"), names("names-undelete") if ntfs else "-",
      sum(any(b in raw for b in forms(n)) for n in originals),
      sum(any(raw.count(b) > journal.count(b) for b in forms(n)) for n in originals), sep=" | ")
END
}

make_files
files=$(find "$work/files" -type f | wc -l)
table="| disk | what was done to the $files files | tsk_recover | PhotoRec | foremost | ntfsundelete | names: fls | names: ntfsundelete | names: raw image | names: raw image without journal |
|---|---|---|---|---|---|---|---|---|---|"
for disk in "ext4 4096" "ntfs 4096"; do
    for what in deleted purged "purged, names overwritten" "deleted, free space purged" \
        "purged, names overwritten, free space purged"; do
        say "$disk: $what"
        # shellcheck disable=SC2086
        make_image $disk && attach $disk
        copy_files
        detach && attach "${disk% *}" # they are on the disk
        case $what in
        deleted*) rm -r "$mounted/data" ;;
        *overwritten*) drive nullwright_purge PurgeFolder.AllBelowAndTheNames ;;
        *) drive nullwright_purge PurgeFolder.AllBelow ;;
        esac
        case $what in *"free space purged") drive nullwright_window_tests DrivesTest.FreeSpaceIsPurged ;; esac
        detach
        table+=$'\n'"| ${disk% *} | $what | $(look_for_files "$disk") |"
        echo "${table##*$'\n'}"
    done
done
say "Files that came back whole, and names that were listed"
echo "$table" | tee "$work/table.md"
