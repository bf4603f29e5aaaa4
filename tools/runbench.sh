#!/usr/bin/env bash
# Measures what a run of the report window costs, under Wine:
#   bash tools/runbench.sh list [rounds]                           beyond a bare enumeration
#   bash tools/runbench.sh purge [hidden] [files [rounds [KiB]]]   beyond the purge engine
# See bench/win32/ListBench.cpp and PurgeRunBench.cpp; both of them if nothing is said.
. "$(dirname "$0")/common.sh"

what=${1:-both}
[ $# -eq 0 ] || shift
case $what in
    list | purge) ;;
    both) set -- ;;
    *) die "What is $what?" ;;
esac
need_packages "${packages_build[@]}" "${packages_wine[@]}" googletest
build windows nullwright_listbench nullwright_purgerunbench
trap stop_everything EXIT
virtual_display
make_prefix
warm_wine
status=0
if [ "$what" != purge ]; then
    bench nullwright_listbench 'C:\bench' "$@" || status=$?
fi
if [ "$what" != list ]; then
    bench nullwright_purgerunbench 'C:\bench' "$@" || status=$?
fi
exit $status
