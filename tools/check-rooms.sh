#!/usr/bin/env bash
# Checks what docs/architecture.md says of the rooms: who may include whom, where <windows.h> and
# #ifdef may stand. Prints what breaks a rule.
cd "$(dirname "$0")/.." || exit 1
status=0

# allow ROOM "ROOM ...": a room includes only these, itself, and what all may include.
allow() {
    local room=$1 pattern
    pattern="^($room|${2// /|})/|^shell/Session\.h$"
    [[ "settings report selection shell" == *"$room"* ]] && pattern+='|^disk/DiskProc\.h$'
    if grep -rnoE '^#include "[^"]+"' "src/$room" | sed -E 's/#include "([^"]+)"/\1/' |
        awk -F: -v pattern="$pattern" '$3 !~ pattern { print; found = 1 } END { exit !found }'; then
        echo "src/$room includes what it may not."
        status=1
    fi
}

allow platform ""
allow ui "platform"
allow support "platform ui"
allow engine "support platform ui"
allow settings "engine support platform ui"
allow selection "settings engine support platform ui"
allow report "settings engine support platform ui"
allow disk "report selection settings engine support platform ui"
allow shell "disk report selection settings engine support platform ui"

if grep -rnE '^ *# *(if|ifdef|elif)|windows\.h' src --include='*.cpp' --include='*.h' |
    grep -vE '^src/(platform/win32|ui/win32|app)/'; then
    echo "Only the win32 folders and app/ may know Windows."
    status=1
fi
exit $status
