#!/usr/bin/env bash
# Checks that the programs are hardened: position-independent, bound at start, and, when they are built for release, with
# checked library calls. usage: hardening_test.sh STAGE BUILD_TYPE
set -euo pipefail
stage=$1 type=$2
failed=0
fail() { echo "$*"; failed=1; }
for program in "$stage"/usr/bin/*; do
    dynamic=$(readelf -dW "$program")
    grep -q 'FLAGS_1.*NOW.*PIE' <<<"$dynamic" || fail "$program is not position-independent and bound at start"
    readelf -lW "$program" | grep GNU_RELRO >/dev/null || fail "$program keeps its tables writable"
    [ "$type" = Debug ] || readelf --dyn-syms -W "$program" | grep '_chk@' >/dev/null || fail "$program has no checked calls"
done
exit $failed
