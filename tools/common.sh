# Sourced by ./run, ./test and the benches: packages, builds, a Wine prefix of our own, a display, cleaning up.
# shellcheck shell=bash

set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top"
mkdir -p build

# The one list of what a bare Debian 12 needs.
packages_build=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix)
packages_wine=(wine wine64 xvfb openbox xdotool imagemagick fonts-liberation)
packages_test=(googletest clang-14 libclang-rt-14-dev clang-format-14
    e2fsprogs ntfs-3g mount python3)
packages_package=(googletest nsis zip)
packages_disk=(libfuse3-dev fuse3)
packages_recovery=(e2fsprogs ntfs-3g mount python3 sleuthkit testdisk foremost)

say() { printf '\n== %s\n' "$*"; }
die() { printf '\n%s\n' "$*" >&2; exit 1; }

# need_packages NAME ...: installs what is missing, or says what to install.
need_packages() {
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] ||
            missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    [ "$(id -u)" = 0 ] || die "Some packages are missing. As root:
    apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
    say "Installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    { apt-get update && apt-get install -y --no-install-recommends "${missing[@]}"; } \
        > build/packages.log 2>&1 || { tail -20 build/packages.log; die "The packages could not be installed."; }
}

# build PRESET [TARGET ...]: configures and builds, quiet while all goes well.
build() {
    local preset=$1 log=build/build-$1.log
    shift
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" ${1+--target "$@"}; } \
        > "$log" 2>&1; then
        grep -nE 'error|FAILED|undefined' "$log" | head -40 || true
        die "The $preset build failed; the whole log is $log"
    fi
}

# ---- Wine and its display -------------------------------------------------------------------

# Names of files are UTF-8, whatever the machine's own locale is; Wine would refuse the others.
export LC_ALL=C.UTF-8
export WINEPREFIX=$top/build/wine/prefix WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe='
product="$WINEPREFIX/drive_c/Program Files/Nullwright"
screenshots=$top/build/screenshots
children=()
mounts=()

# The number of the shell that uses the prefix.
owner=$top/build/wine/owner
wine_is_ours=

# One at a time: the end of one would be the end of the other's programs too.
take_wine() {
    local other
    other=$(cat "$owner" 2> /dev/null || true)
    if [ -n "$other" ] && [ "$(readlink "/proc/$other/cwd")" = "$top" ]; then
        die "Another ./run or ./test is at work here (process $other). End it first."
    fi
    mkdir -p "${owner%/*}"
    echo $$ > "$owner"
    wine_is_ours=yes
    # What one that was killed has left behind.
    wineserver -k > /dev/null 2>&1 || true
    wineserver -w > /dev/null 2>&1 || true
}

# Ctrl-C ends it at once: see patiently.
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# patiently COMMAND ...: runs it so that the shell hears signals meanwhile. Wine's programs pay no
# heed to Ctrl-C, and a shell that waits for a foreground program only hears it afterwards.
patiently() {
    "$@" < /dev/null &
    wait $!
}

# Ends whatever was started here; meant for a trap, so that nothing stays behind.
stop_everything() {
    local place
    if [ -n "$wine_is_ours" ]; then
        wineserver -k > /dev/null 2>&1 || true
        wineserver -w > /dev/null 2>&1 || true
        rm -f "$owner"
    fi
    for place in ${mounts[@]+"${mounts[@]}"}; do
        umount "$place" 2> /dev/null || true
    done
    # shellcheck disable=SC2046
    kill ${children[@]+"${children[@]}"} $(jobs -p) 2> /dev/null || true
    wait 2> /dev/null || true
}

make_prefix() {
    take_wine
    fill_prefix
}

# A prefix without a Z: drive: nothing outside the prefix can be reached from inside.
fill_prefix() {
    [ -f "$WINEPREFIX/ready" ] && return 0
    say "Making a Wine prefix"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    wineboot -i > build/wineboot.log 2>&1 < /dev/null || { cat build/wineboot.log; die "wineboot failed"; }
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f \
        > /dev/null 2>&1 < /dev/null
    wineserver -w
    rm -f "$WINEPREFIX/dosdevices/z:"
    # The user's folders of the prefix are links into the real home; they must not lead out.
    find "$WINEPREFIX/drive_c/users" -type l | while read -r link; do
        rm "$link" && mkdir -p "$link"
    done
    touch "$WINEPREFIX/ready"
}

# Starts a display unless there is one that the caller wants to use, and a window manager on it:
# without one, Wine takes seconds to hide a window.
virtual_display() {
    local size=${1:-1280x960} number file
    file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3> "$file" > /dev/null 2>&1 &
    children+=($!)
    for _ in $(seq 100); do
        [ -s "$file" ] && break
        sleep 0.1
    done
    number=$(cat "$file")
    rm -f "$file"
    [ -n "$number" ] || die "The virtual display did not start."
    export DISPLAY=:$number
    openbox --sm-disable > /dev/null 2>&1 < /dev/null &
    children+=($!)
}

# Keeps the Wine server and its services up with streams of their own; otherwise the first program
# that is started would hand its output pipe to them, and whoever reads it would wait for ever.
warm_wine() {
    wineserver -p > /dev/null 2>&1 < /dev/null
    wine cmd /c exit > /dev/null 2>&1 < /dev/null
}

# Puts the built program where a user would have it.
install_product() {
    mkdir -p "$product"
    cp -f build/windows/product/* "$product/"
}

# bench NAME ARGUMENT ...: runs one of the built benches.
bench() {
    local place=$WINEPREFIX/drive_c/bench name=$1
    shift
    mkdir -p "$place"
    # What a run that was broken off has left.
    rm -rf "$WINEPREFIX/drive_c/nullwright-bench" "$place/nullwright_scratch"
    cp -f "build/windows/bench/$name.exe" build/windows/bench/nwaux6.dll "$place/"
    wine "C:\\bench\\$name.exe" "$@" < /dev/null 2>&1 | tr -d '\r'
}

# screenshot NAME: the whole virtual screen, as build/screenshots/NAME.png.
screenshot() {
    mkdir -p "$screenshots"
    import -window root "$screenshots/$1.png"
}

# wait_for SECONDS COMMAND ...: until the command succeeds.
wait_for() {
    local left=$(($1 * 10))
    shift
    until "$@" > /dev/null 2>&1; do
        left=$((left - 1))
        [ $left -gt 0 ] || return 1
        sleep 0.1
    done
}
