# shellcheck shell=bash
# Run by "./run demo" and by ./test, with a prefix and a display at hand: prepares a folder, lets
# tests/windows/Demo.cpp drive the program's windows through listing, estimating and purging it,
# takes pictures, and shows and compares what is left on the disk.
# shellcheck source=common.sh
[ -n "${product-}" ] || . "$(dirname "${BASH_SOURCE[0]}")/common.sh"

demo_root=$WINEPREFIX/drive_c/nwdemo
demo_outside=$WINEPREFIX/drive_c/nwdemo-outside

# some_file PATH BYTES: a file that is full of a sentence.
some_file() {
    mkdir -p "$(dirname "$1")"
    # "yes" ends by a broken pipe: that is meant.
    { yes 'This is a secret. ' || true; } 2> /dev/null | tr -d '\n' | head -c "$2" > "$1" || true
}

make_demo_tree() {
    local size letters=$demo_root/letters
    [ ! -d "$demo_root" ] || chmod -R u+w "$demo_root"
    rm -rf "$demo_root" "$demo_outside"
    mkdir -p "$letters"
    for size in 0 1 20 511 512 700 4095 4096 4097 65535 65536 65537 1048576 3000001; do
        some_file "$letters/size-$size.txt" "$size"
    done
    for size in 1 2 3 4; do
        some_file "$letters/2019/letter-$size.txt" $((size * 1500))
        some_file "$letters/2020/letter-$size.txt" $((size * 900))
        some_file "$letters/2019/spring/deep/deeper/note-$size.txt" $((size * 700))
    done
    some_file "$letters/2019/spring/deep/stays.doc" 5000
    some_file "$letters/read-only.txt" 5000
    some_file "$letters/.hidden.txt" 5000
    some_file "$letters/with blanks (and brackets) & more é.txt" 5000
    chmod a-w "$letters/read-only.txt"
    some_file "$letters/stays.doc" 9000
    some_file "$letters/stays.txt.bak" 100
    some_file "$demo_root/beside/stays.txt" 7000
    some_file "$demo_root/kept.dat" 10000
    some_file "$demo_outside/behind-a-link.txt" 3000
    ln -s ../../nwdemo-outside "$letters/link"
}

# What is there, except for the file that is overwritten and kept: names and checksums.
demo_state() {
    (cd "$WINEPREFIX/drive_c" &&
        find nwdemo nwdemo-outside -type f ! -path nwdemo/kept.dat ! -path nwdemo/picture -exec sha256sum {} + | sort -k 2)
}

# The files that are to stay: in the folder those that are no texts, and everything outside it.
demo_expected() {
    demo_state | grep -vE '  nwdemo/letters/.*\.txt$'
}

run_demo() {
    local log=$top/build/demo.log pid name place status=0
    say "A folder to be purged: all *.txt in it and below it"
    make_demo_tree
    (cd "$demo_root/.." && find nwdemo nwdemo-outside -printf '%10s  %M  %p %l\n' | sort -k 3)
    demo_expected > build/demo-expected.txt
    : > build/demo-places.txt
    mkdir -p "$WINEPREFIX/drive_c/tests"
    cp -f build/windows/tests/nullwright_demo.exe "$WINEPREFIX/drive_c/tests/"

    say "Nullwright at work, driven through its windows"
    (
        cd "$WINEPREFIX/drive_c" # a folder that exists inside
        export NW_TEST_FOLDER='C:\nwdemo' NW_PROGRAM='C:\Program Files\Nullwright\nullwright.exe'
        exec timeout 300 wine 'C:\tests\nullwright_demo.exe' --gtest_brief=1
    ) > "$log" 2>&1 < /dev/null &
    pid=$!
    while kill -0 "$pid" 2> /dev/null; do
        if [ -s "$demo_root/picture" ]; then
            read -r name place < "$demo_root/picture"
            echo "$name $place" >> build/demo-places.txt
            sleep 0.3 # what was just shown is painted in the next moment
            mkdir -p "$screenshots"
            import -window root "$screenshots/demo-$name.png" ||
                { echo "There is no picture of $name."; status=1; }
            rm -f "$demo_root/picture"
        fi
        sleep 0.05
    done
    wait "$pid" || status=$?
    tr -d '\r' < "$log"

    say "What is left on the disk"
    (cd "$demo_root/.." && find nwdemo nwdemo-outside -printf '%10s  %M  %p %l\n' | sort -k 3)
    echo "kept.dat after the purge, its first bytes:"
    od -A d -t x1 -N 32 "$demo_root/kept.dat"
    demo_state > build/demo-left.txt
    if ! diff build/demo-expected.txt build/demo-left.txt; then
        echo "That is not what should be left."
        status=1
    fi
    [ -L "$demo_root/letters/link" ] || { echo "The link is gone."; status=1; }
    [ ! -d "$demo_root/letters/2019/spring/deep/deeper" ] || { echo "An empty folder is left."; status=1; }
    [ "$(od -A n -t x1 -v "$demo_root/kept.dat" | tr -d ' \n' | sed 's/f5//g')" = "" ] ||
        { echo "kept.dat holds other bytes than the last pattern."; status=1; }
    grep -q 'PASSED' "$log" || status=1
    if [ "$status" = 0 ]; then
        echo "All that was chosen is gone; all that was not is as it was."
        echo "Pictures: $screenshots/demo-*.png"
    else
        echo "The demonstration FAILED."
    fi
    return "$status"
}
run_demo
