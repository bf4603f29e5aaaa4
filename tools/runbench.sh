#!/usr/bin/env bash
# Measures what a run of the report window costs beyond a bare enumeration and beyond the purge
# engine, under Wine: "bash tools/runbench.sh [list | purge | hidden [files [rounds]]]". See
# bench/win32/ListBench.cpp; all of it if nothing is said.
. "$(dirname "$0")/common.sh"

need_packages "${packages_build[@]}" "${packages_wine[@]}" googletest
build windows nullwright_listbench
trap stop_everything EXIT
virtual_display
make_prefix
warm_wine
place=$WINEPREFIX/drive_c/bench
mkdir -p "$place"
cp -f build/windows/bench/nullwright_listbench.exe build/windows/bench/nwaux6.dll "$place/"
# What a run that was broken off has left.
rm -rf "$place/nullwright_listbench"
status=0
wine 'C:\bench\nullwright_listbench.exe' 'C:\bench' "$@" < /dev/null 2>&1 | tr -d '\r' || status=$?
exit $status
