#!/usr/bin/env bash
# Checks what docs/architecture.md says of the rooms: who may include whom, where <windows.h> and
# #ifdef may stand, and how files begin, are named and how long they are. Prints what breaks a rule.
cd "$(dirname "$0")/.." || exit 1
status=0

complain() {
    echo "$*"
    status=1
}

# allow FOLDER "ROOM ...": the folder's files include only these rooms and the folder itself.
allow() {
    local folder=$1 pattern
    pattern="^($folder|${2// /|})/"
    if grep -rnoE '^ *#include "[^"]+"' "$root$folder" --include='*.cpp' --include='*.h' |
        sed -E 's/ *#include "([^"]+)"/\1/' |
        awk -F: -v pattern="$pattern" '$3 ~ "/" && $3 !~ pattern { print; found = 1 } END { exit !found }'; then
        complain "$root$folder includes what it may not."
    fi
}

# From the ground floor up. A room may include those below it, never one above.
root=src/
seams="platform ui"
allow platform win32
allow ui win32
allow session ""
below="session $seams"
for room in support drives engine settings selection report/run report disk shell; do
    # Neither needs the other.
    case $room in
    selection) allow selection "$below" ;;
    report | report/run) allow $room "${below/ selection/}" ;;
    *) allow $room "$below" ;;
    esac
    below="$below $room"
done
allow app "shell ui platform"
allow cli "$below"
# A back end knows its seam only, and what all that is written for Windows shares.
allow win32 ""
allow platform/win32 "platform win32"
allow ui/win32 "ui win32"
allow ui/console "ui win32"
root=
allow nwaux6 win32
all="cli shell disk report selection settings engine drives support session platform ui"
allow tests "$all fakes contract posix windows win32"
allow tests/fakes "fakes $all"
allow tests/posix "posix fakes contract $all"
allow tests/contract "contract fakes posix platform"
allow bench "$all fakes posix"

if grep -rnE '^ *# *(if|ifdef|elif)|windows\.h' src --include='*.cpp' --include='*.h' |
    grep -vE '^src/(win32|platform/win32|ui/win32|ui/console/win32|app)/'; then
    complain "Only the win32 folders and app/ may know Windows."
fi

files() { find src nwaux6 tests bench fuzz -name '*.cpp' -o -name '*.h'; }

# The first line of every file, a .cpp beside its header too, tells a newcomer what lives there.
for file in $(files); do
    [ "$(head -c 2 "$file")" = // ] || complain "$file does not begin with what lives there."
    [ "$(wc -l < "$file")" -le 400 ] || complain "$file has more than 400 lines."
done

# A public function is defined in the file named like its header. A header that is declared low and
# defined high, so that a lower room can call up, says so in its first lines ("defined in").
for header in src/{session,support,drives,engine,settings,selection,report/run,report,disk,shell,cli}/*.h; do
    head -4 "$header" | grep -q 'defined in ' && continue
    source=${header%.h}.cpp
    for name in $(awk '/^(inline|constexpr|template|extern|struct|enum|using|namespace|static|#|\/\/)/ { next }
            /^[A-Za-z_].*[ *&][A-Za-z_0-9]+\(/ { sub(/\(.*/, ""); sub(/.*[ *&]/, ""); print }' "$header"); do
        if ! grep -qE "^[A-Za-z_].*[ *&]$name\(" "$source" 2> /dev/null; then
            complain "$header declares $name, which ${source##*/} does not define."
        fi
    done
done
exit $status
