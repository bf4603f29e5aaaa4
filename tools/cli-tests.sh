#!/usr/bin/env bash
# The console program under Wine, as scripts use it: no display, no terminal, streams redirected.
# By itself it makes a prefix of its own; inside ./test it takes the one that is there.
. "$(dirname "$0")/common.sh"

if [ -z "${NW_TEST_FOLDER-}" ]; then
    WINEPREFIX=$top/build/wine/cli
    product="$WINEPREFIX/drive_c/Program Files/Nullwright"
    trap 'wineserver -k 2> /dev/null || true; stop_everything' EXIT
    fill_prefix > /dev/null
    install_product
    mkdir -p "$top/build/wine/cli-small"
    if [ "$(id -u)" = 0 ] && mount -t tmpfs -o size=24m nullwright "$top/build/wine/cli-small" 2> /dev/null; then
        mounts+=("$top/build/wine/cli-small")
        ln -sfn "$top/build/wine/cli-small" "$WINEPREFIX/dosdevices/t:"
        NW_SMALL_DRIVE='T:\'
    fi
    warm_wine
fi
display=${DISPLAY-}
unset DISPLAY
drive=$WINEPREFIX/drive_c
folder=$drive/cli-tests
log=$top/build/cli-tests.out
error=$top/build/cli-tests.err
failures=0
complain() { echo "FAILED: $*"; failures=$((failures + 1)); }

# expect CODE ARGUMENT ...: runs it, its input from fd 0.
expect() {
    local code=$1 status=0
    shift
    timeout 120 wine 'C:\Program Files\Nullwright\nullwright-cli.exe' "$@" > "$log" 2> "$error" || status=$?
    [ "$status" = "$code" ] || complain "$* ended with $status, not $code: $(tail -3 "$error")"
}
# told TEXT: in the output or the errors of the last one.
told() { grep -qaF -- "$1" "$log" "$error" || complain "not told: $1 ($(cat "$log" "$error" | tail -3))"; }
# left COUNT: so many files are left in the folder.
left() { [ "$(find "$folder" -type f | wc -l)" = "$1" ] || complain "$(find "$folder" -type f | wc -l) files are left, not $1"; }
fresh() {
    rm -rf "$folder"
    mkdir -p "$folder/sub"
    echo secret > "$folder/a.txt"
    echo secret > "$folder/sub/b.txt"
}

size=$(stat -c %s "$product/nullwright-cli.exe")
[ "$size" -lt 2097152 ] || complain "nullwright-cli.exe has $size bytes."

# ---- Words, and wrong ones ----------------------------------------------------------------------

fresh
expect 0 version < /dev/null
told "Nullwright $(sed -n 's/^project(Nullwright VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
expect 0 help questions < /dev/null
expect 0 purge /? < /dev/null
told "--remove-empty-folders"
expect 2 < /dev/null
expect 2 purge 'C:\cli-tests' < /dev/null
told "--yes"
expect 2 speed C: --verify < /dev/null
left 2

# ---- Files: names, paths, input, output ----------------------------------------------------------

long=$folder
for _ in {1..6}; do long=$long/$(printf 'x%.0s' {1..60}); done
mkdir -p "$long"
echo secret > "$long/$(printf 'y%.0s' {1..50}).txt"
echo secret > "$folder/ünïcødé 文字 😀.txt"
expect 0 list 'C:\cli-tests' -r < /dev/null
told "ünïcødé 文字 😀.txt (7 bytes)"
told "Number of files: 4"
expect 0 purge 'C:\cli-tests\ünïcødé 文字 😀.txt' -y -n 1 < /dev/null
left 3
cd "$folder"
expect 0 purge sub -y --type both --passes 1 < /dev/null
cd "$top"
left 2
place="C:\\cli-tests\\$(realpath --relative-to="$folder" "$long" | tr / '\\')"
# A list of more than a megabyte: one file.
name=$place\\$(printf 'y%.0s' {1..50}).txt
for _ in {1..2600}; do printf '%s\r\n' "$name"; done > "$top/build/cli-tests.in"
[ "$(stat -c %s "$top/build/cli-tests.in")" -gt 1048576 ] || complain "The list is too short."
expect 0 list --from - < "$top/build/cli-tests.in"
[ "$(grep -c 'yyy.txt (7 bytes)' "$log")" = 1 ] || complain "A file that a list names often is not there once."
printf '%s\\y?%s\0' "$place" "${name##*\\yy}" > "$top/build/cli-tests.in"
expect 2 purge -y -n 1 --from - < "$top/build/cli-tests.in" # a pattern
printf '%s\0' "$name" > "$top/build/cli-tests.in"
expect 0 purge -y -n 1 --from - < "$top/build/cli-tests.in"
left 1
expect 0 purge 'C:\cli-tests\a.txt' -y -n 1 --verify --keep < /dev/null
told "a.txt (7 bytes) purged and verified"
expect 0 purge 'C:\cli-tests' -y -q --keep -o 'C:\cli-tests\report.txt' < /dev/null
[ -s "$log" ] && complain "--quiet told something."
grep -q 'Purged files not deleted' "$folder/report.txt" || complain "The report file is not right."
rm -f "$folder/report.txt"

# Whoever reads the output goes away: the listing ends, and nothing hangs.
mkdir "$folder/many"
(cd "$folder/many" && seq -f 'file %g.tmp' 10000 | xargs -d '\n' touch)
timeout 60 bash -c "wine 'C:\Program Files\Nullwright\nullwright-cli.exe' list 'C:\cli-tests' -r < /dev/null 2> /dev/null | head -1" > /dev/null ||
    complain "A broken pipe ended with $?."

# ---- Ten thousand files, three of which cannot be purged: records ----------------------------------

for name in 'file 7.tmp' 'file 77.tmp' 'file 7777.tmp'; do
    rm "$folder/many/$name" && mkfifo "$folder/many/$name" # listed as a file, and never opened
done
expect 1 purge 'C:\cli-tests' -r -y -n 1 --json -o 'C:\report.json' < /dev/null
python3 - "$log" "$drive/report.json" << 'END' || complain "The records are not right."
import json, sys
records = [json.loads(line) for line in open(sys.argv[1], encoding="utf-8")]
assert records == [json.loads(line) for line in open(sys.argv[2], encoding="utf-8")]
files, run = records[:-1], records[-1]
assert len(files) == 10001 and run["failed"] == 3 and run["purged"] == 9998, run
assert {f["path"] for f in files if f["result"] != "purged"} == {
    rf"C:\cli-tests\many\file {n}.tmp" for n in (7, 77, 7777)}
assert all({"path", "bytes", "result", "passes", "error", "time"} <= f.keys() for f in files)
END
find "$folder" -type p -delete
left 0

# ---- Ctrl+C ----------------------------------------------------------------------------------------

# interrupted CONDITION TIMES ARGUMENT ...: stopped once that is true, as often as that.
interrupted() {
    local condition=$1 times=$2 status=0 pid
    shift 2
    wine 'C:\Program Files\Nullwright\nullwright-cli.exe' "$@" > "$log" 2> "$error" < /dev/null &
    pid=$!
    for _ in {1..2000}; do # closely: on a fast machine little time is left
        eval "$condition" > /dev/null 2>&1 && break
        sleep 0.01
    done
    for _ in $(seq "$times"); do kill -INT "$pid" 2> /dev/null || true; sleep 0.3; done
    wait "$pid" || status=$?
    [ "$status" = 3 ] || complain "$* ended with $status after Ctrl+C: $(tail -3 "$error")"
}
fresh
for i in 1 2 3; do head -c 400M /dev/zero > "$folder/big$i"; done
interrupted 'grep -q Purging "$log"' 2 purge 'C:\cli-tests' -y -n 9
told "Purge operation was stopped."
[ "$(stat -c %s "$folder/big3")" = $((400 << 20)) ] || complain "A file that was stopped has another length."
rm -f "$folder"/big*

if [ -n "${NW_SMALL_DRIVE-}" ]; then
    small=$WINEPREFIX/dosdevices/t:/
    echo secret > "$small/kept.txt"
    cd "$folder"
    expect 0 speed T: -o speed.txt < /dev/null
    cd "$top"
    grep -q "MB/sec for one overwrite" "$folder/speed.txt" || complain "The report of a test is not there."
    expect 0 free-space 't:\' --yes --passes 1 < /dev/null
    told "The free space has been purged."
    interrupted 'ls "$small"/_nw_dummy*' 1 free-space T: -y -t both -n 5
    [ "$(ls "$small")" = kept.txt ] || complain "After Ctrl+C there is left: $(ls "$small")"
    interrupted 'grep -q Testing "$log"' 1 disk T: -y -n 9
    [ "$(ls "$small")" = kept.txt ] || complain "After Ctrl+C in the test of the speed there is left: $(ls "$small")"
    mkdir "$small/Keep"
    echo secret > "$small/Keep/k.txt"
    expect 0 disk T: -y -n 1 --exclude Keep --verify --names --json < /dev/null
    python3 -c 'import json, sys; r = json.loads(open(sys.argv[1]).readline()); assert (r["path"], r["verified"]) == ("T:\\kept.txt", True)' "$log" ||
        complain "The records of a disk are not right."
    [ "$(cd "$small" && find . -type f)" = ./Keep/k.txt ] || complain "A disk holds: $(cd "$small" && find .)"
    rm -rf "$small/Keep"
fi

# ---- Setups ----------------------------------------------------------------------------------------

fresh
printf '1.0\r\n1\r\n0\r\nC:\\cli-tests\\\r\nC:\\\r\n1\r\n1\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n1\r\n' > "$drive/weekly.nws"
expect 2 run 'C:\weekly.nws' -y < /dev/null
expect 0 run 'C:\weekly.nws' -y --files '*.txt' < /dev/null
told "alternate bit patterns once"
[ -e "$folder/sub" ] && complain "The empty folder was not removed."
left 0
rm -rf "$folder" "$drive/weekly.nws" "$drive/report.json"
# The desktop that Wine has made without a display would be that of the next program, too.
wineserver -k -w || true
[ -z "$display" ] || DISPLAY=$display warm_wine
echo "$failures failures"
[ "$failures" = 0 ]
