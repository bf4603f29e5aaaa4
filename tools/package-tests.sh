#!/usr/bin/env bash
# Packs the built product twice, and lets a user's life with it pass in a Wine prefix of its own:
# installed, started, replaced, removed, and unpacked. Nothing may be left behind.
. "$(dirname "$0")/common.sh"

work=$top/build/package-tests
WINEPREFIX=$work/prefix
drive=$WINEPREFIX/drive_c
rm -rf "$work"
mkdir -p "$work/product"
trap 'wineserver -k 2> /dev/null || true; stop_everything' EXIT
failures=0
complain() { echo "FAILED: $*"; failures=$((failures + 1)); }

# ---- Packing -----------------------------------------------------------------------------------

cp build/windows/product/*.* "$work/product/"
export NW_PRODUCT=$work/product
NW_DIST=$work/dist1 ./package > "$work/package.log" 2>&1 || { cat "$work/package.log"; die "./package failed."; }
NW_DIST=$work/dist2 ./package > "$work/package.log" 2>&1
cmp "$work/dist1/SHA256SUMS" "$work/dist2/SHA256SUMS" || complain "Packed twice, the bytes differ."
setup=$(ls "$work"/dist1/*-setup.exe)
version=${setup##*nullwright-} version=${version%-setup.exe}
wide=${version//./\\x00.\\x00}
for file in nullwright.exe nullwright-cli.exe nwaux6.dll; do
    grep -qaP "P\x00r\x00o\x00d\x00u\x00c\x00t\x00V\x00e\x00r\x00s\x00i\x00o\x00n(\x00)+$wide" "$work/product/$file" ||
        complain "$file does not say that it is version $version."
done
grep -q "Version $version" "$work/product/manual.html" || complain "The manual lacks its version."

# ---- Installing --------------------------------------------------------------------------------

[ -n "${DISPLAY-}" ] || virtual_display
fill_prefix > /dev/null
warm_wine
cp "$setup" "$drive/setup.exe"
cp build/windows/tests/nullwright_installed.exe "$drive/"
mkdir "$drive/scratch"

quiet() { timeout 60 wine "$@" > "$work/wine.log" 2>&1 < /dev/null; }
# expect CODE COMMAND ...
expect() {
    local code=$1 status=0
    shift
    quiet "$@" || status=$?
    [ "$status" = "$code" ] || complain "$* ended with $status instead of $code."
}
# A PATH longer than the texts of the set-up script's language.
long=$(printf 'C:\\folder %03d;' {1..90})%SystemRoot%
quiet reg add 'HKCU\Software\Classes' /f # on Windows it is always there
quiet reg add 'HKCU\Environment' /v Path /t REG_EXPAND_SZ /d "$long" /f
path_now() { wine reg query "$1" /v Path 2> /dev/null < /dev/null | tr -d '\r' | sed -n 's/.*REG_EXPAND_SZ *//p'; }
found() { # WHERE: the console program answers by its name alone
    quiet cmd /c nullwright-cli version
    grep -q "^Nullwright $version" "$work/wine.log" || complain "nullwright-cli is not found by $1."
}
machine='HKLM\System\CurrentControlSet\Control\Session Manager\Environment'

# snapshot NAME: files and registry, without what is Wine's own.
snapshot() {
    local key
    (cd "$drive" && find . -not -path '*/Temp/*' -not -path './scratch/*' | sort) > "$work/$1.files"
    for key in HKCU 'HKLM\Software' "$machine"; do
        quiet reg export "$key" 'C:\scratch\registry.reg' /y
        iconv -f utf-16 -t utf-8 "$drive/scratch/registry.reg"
    done | tr -d '\r' | awk 'BEGIN { RS = ""; ORS = "\n\n" } !/^\[HKEY_CURRENT_USER\\Software\\Wine/' > "$work/$1.registry"
}
nothing_left() {
    local kind
    for kind in files registry; do
        diff "$work/before.$kind" "$work/after.$kind" || complain "$1 has left something behind."
    done
}
remove() {
    quiet "C:\\${1//\//\\}\\uninstall.exe" /S
    wait_for 15 test ! -e "$drive/$1" || complain "$1 is still there."
    sleep 0.3
}
tests() { # by FILTER
    NW_TEST_FOLDER='C:\scratch' NW_SETUP='C:\setup.exe' quiet 'C:\nullwright_installed.exe' --gtest_filter="$1" ||
        { grep -a -v -E '^\[( RUN|       OK|-----)' "$work/wine.log"; complain "$1"; }
}

quiet reg add 'HKCU\Software\Wine' /v Version /d win7 /f
expect 4 'C:\setup.exe' /S
quiet reg add 'HKCU\Software\Wine' /v Version /d win10 /f
snapshot before

user=$(cd "$drive" && ls -d users/*/AppData/Roaming | grep -v Public | head -1)
user=${user%/AppData/Roaming}
home="$user/AppData/Local/Programs/Nullwright"
expect 0 'C:\setup.exe' /S
[ "$(path_now 'HKCU\Environment')" = "$long;C:\\${home//\//\\}" ] || complain "PATH is not as it should be."
mkdir -p "$drive/$user/AppData/Roaming/Nullwright"
touch "$drive/$user/AppData/Roaming/Nullwright/nullwright.pos"
# Wine passes 1,023 characters of a variable in the registry on to programs: a short one this time.
quiet reg add 'HKCU\Environment' /v Path /t REG_EXPAND_SZ /d '%SystemRoot%\Fonts' /f
expect 0 'C:\setup.exe' /S # over it
found "the user's PATH"
for folder in OtherPlace "$home"; do # instead of it, and back
    expect 0 'C:\setup.exe' /S "/D=C:\\${folder//\//\\}"
    [ "$(path_now 'HKCU\Environment')" = "%SystemRoot%\\Fonts;C:\\${folder//\//\\}" ] || complain "PATH is not that of $folder."
done
[ ! -e "$drive/OtherPlace" ] || complain "The folder before is still there."
quiet reg add 'HKCU\Environment' /v Path /t REG_EXPAND_SZ /d "$long;C:\\${home//\//\\}" /f
[ -f "$drive/$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Nullwright.lnk" ] || complain "no link in the start menu"
[ -f "$drive/$user/AppData/Roaming/Microsoft/Windows/SendTo/Nullwright.lnk" ] || complain "no link in Send to"
NW_LINK="C:\\${user//\//\\}\\AppData\\Roaming\\Microsoft\\Windows\\SendTo\\Nullwright.lnk" tests 'SendTo.*'
remove "$home"
[ -f "$drive/$user/AppData/Roaming/Nullwright/nullwright.pos" ] || complain "The settings are gone."
rm -rf "$drive/$user/AppData/Roaming/Nullwright"
snapshot after
nothing_left "The installation for one user"

before=$(path_now "$machine")
expect 0 'C:\setup.exe' /S /AllUsers /Parts=StartMenu,Desktop,Operations,Explorer,Path
[ -f "$drive/Program Files/Nullwright/nullwright.exe" ] || complain "It is not where programs are."
[ "$(path_now "$machine")" = "$before;C:\\Program Files\\Nullwright" ] || complain "PATH of the machine is not as it should be."
found "the machine's PATH"
[ -f "$drive/users/Public/Desktop/Nullwright.lnk" ] || complain "no icon on the desktop"
# Wine finds file types in the machine's part of the registry only, so this is the time to try them.
export NW_LINK='C:\ProgramData\Microsoft\Windows\Start Menu\Programs\Nullwright.lnk'
tests 'Installed.*'
remove "Program Files/Nullwright"
snapshot after
nothing_left "The installation for all users"

# ---- Unpacked ----------------------------------------------------------------------------------

odd="$drive/scratch/Ordner mit ü und 日本"
mkdir "$odd"
(cd "$odd" && cmake -E tar xf "$work"/dist1/*-portable.zip)
NW_PROGRAM='C:\scratch\Ordner mit ü und 日本\Nullwright\nullwright.exe' tests 'Portable.*'
[ -f "$odd/Nullwright/nullwright.usr" ] || complain "no settings beside the portable program"
snapshot after
nothing_left "The portable program"

[ "$failures" = 0 ] && echo "Packed, installed, replaced, removed, unpacked: nothing left behind."
