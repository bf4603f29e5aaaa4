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
bench nullwright_listbench 'C:\bench' "$@"
