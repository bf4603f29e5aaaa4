#!/usr/bin/env bash
# Builds the benches and runs them under Wine: "bash tools/bench.sh [argument ...]"; the arguments
# are those of nullwright_bench (see bench/main.cpp). Prints the machine and the table of
# docs/performance.md; fails when a bar is missed.
. "$(dirname "$0")/common.sh"

need_packages "${packages_build[@]}" "${packages_wine[@]}" googletest
build windows nullwright_bench
trap stop_everything EXIT
virtual_display
make_prefix
warm_wine

say "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -1), $(nproc) processors, Linux $(uname -r)," \
    "$(stat -f -c %T "$WINEPREFIX"), $(wine --version), load $(cut -d ' ' -f 1 /proc/loadavg)"
bench nullwright_bench "$@"
