#!/usr/bin/env bash
# The runs on a real disk, with their I/O thread and small files side by side, under the thread
# sanitizer. Apart from ./test, since it builds the logic once more.
. "$(dirname "$0")/common.sh"

need_packages "${packages_build[@]}" googletest
build threads nullwright_posix_tests
setarch -R build/threads/tests/nullwright_posix_tests "$@"
