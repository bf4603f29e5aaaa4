# Sourced by ./test: runs the programs of tests/windows under Wine, on the virtual display.
# shellcheck shell=bash

programs=$WINEPREFIX/drive_c/tests
export NW_TEST_FOLDER='C:\nwtest' NW_PROGRAM='C:\Program Files\Nullwright\nullwright.exe'
python=$(python3 -c 'import sys; print(sys.executable)')
export NW_DROP='"\\?\unix'${python//\//\\}"\" \"$top/tools/drop-files.py\""
rm -rf "$programs" "$WINEPREFIX/drive_c/nwtest"
mkdir -p "$programs" "$WINEPREFIX/drive_c/nwtest"
cp -f build/windows/tests/*.exe build/windows/tests/*.dll "$programs/"

# A small drive that can be filled to the brim; without the right to mount, its tests skip.
small=$top/build/wine/small
mkdir -p "$small"
if [ "$(id -u)" = 0 ] && mount -t tmpfs -o size=24m nullwright "$small" 2> /dev/null; then
    mounts+=("$small")
    ln -sfn "$small" "$WINEPREFIX/dosdevices/t:"
    export NW_SMALL_DRIVE='T:\'
else
    rm -f "$WINEPREFIX/dosdevices/t:"
fi
warm_wine

for program in "$programs"/*_tests.exe "$programs"/*_contract.exe; do
    [ -f "$program" ] || continue
    name=$(basename "$program" .exe)
    gtest "$name" wine "C:\\tests\\$name.exe"
done

step "saved reports" python3 tools/check-reports.py "$WINEPREFIX/drive_c/nwtest"

# resolution DPI: what Windows calls 150 % is 144.
resolution() {
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f \
        > /dev/null 2>&1 < /dev/null
    wineserver -k -w || true
    warm_wine
}
# The main window once more, where there is little room for it.
large_display=$DISPLAY
virtual_display 1366x768
resolution 144
gtest small-screen wine 'C:\tests\nullwright_window_tests.exe' --gtest_filter='LayoutTest.*'
export DISPLAY=$large_display
resolution 96

step "console program" bash tools/cli-tests.sh
step "wiped image" bash tools/wiped-image.sh
