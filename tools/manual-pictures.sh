#!/usr/bin/env bash
# Renews the pictures in src/app/manual.html: lets the demonstration run once more, cuts the windows
# out of what it shows, and puts them behind the marks "<!-- picture: NAME: what it shows -->",
# as a part of the page, so that the page needs no other file.
. "$(dirname "$0")/common.sh"

manual=src/app/manual.html
pictures=build/manual-pictures

# A prefix of its own, in which Wine draws the title bars as Windows does.
export WINEPREFIX=$top/build/wine/manual
product="$WINEPREFIX/drive_c/Program Files/Nullwright"

need_packages "${packages_build[@]}" "${packages_wine[@]}" googletest fonts-wine
build windows
trap stop_everything EXIT
virtual_display
make_prefix
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f > /dev/null 2>&1 < /dev/null
wineserver -k -w || true
# The signs on the buttons of title bars.
cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
install_product
warm_wine
. tools/demo.sh

rm -rf "$pictures"
mkdir -p "$pictures"
while read -r name place; do
    convert "$screenshots/demo-$name.png" -crop "$place" +repage +dither -colors 32 \
        -define png:exclude-chunks=all -define png:compression-level=9 "PNG8:$pictures/${name#*-}.png"
    base64 -w 0 "$pictures/${name#*-}.png" > "$pictures/${name#*-}.base64"
done < build/demo-places.txt

# Behind each mark one line, that of the picture; an older one is dropped.
awk -v folder="$pictures" '
    behind && /^<img / { next }
    { print; behind = 0 }
    /^<!-- picture: / {
        name = alt = $0
        sub(/^<!-- picture: /, "", name); sub(/:.*/, "", name)
        sub(/^<!-- picture: [^:]*: /, "", alt); sub(/ -->$/, "", alt)
        file = folder "/" name ".base64"
        if ((getline data < file) <= 0) { print "no picture " name > "/dev/stderr"; exit 1 }
        print "<img src=\"data:image/png;base64," data "\" alt=\"" alt "\">"
        behind = 1
    }' "$manual" > "$pictures/manual.html"
cp "$pictures/manual.html" "$manual"
ls -l "$pictures"/*.png "$manual"
