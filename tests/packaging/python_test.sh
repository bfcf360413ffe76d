#!/usr/bin/env bash
# Uses the package of the Python module as it is unpacked, and installs and removes it: nothing may stay.
# usage: python_test.sh PACKAGE UNPACKED PYTHON DEMONSTRATION
set -euo pipefail
package=$1 unpacked=$2 python=$3 demonstration=$4
# shellcheck source=tests/packaging/scratchroot.sh
. "$(dirname "${BASH_SOURCE[0]}")/scratchroot.sh"

modules=$unpacked/usr/lib/python3/dist-packages
[ "$(find "$modules" -type f | wc -l)" -ge 6 ] || fail "parts of the module are missing: $(find "$modules")"
[ -z "$(find "$unpacked" ! -perm -444)" ] || fail "not for everyone to read"
[ ! -e "$unpacked/usr/bin" ] || fail "the package has programs"
PYTHONPATH=$modules PYTHONDONTWRITEBYTECODE=1 "$python" - "$demonstration/ETXYZ.OUT.turn" <<'EOF' || fail "can't be used"
import sys, sorvane
assert sorvane.load(sys.argv[1]).measure("range").min() > 0 and sorvane.__file__.startswith(sys.path[1])
EOF
readelf -dW "$modules"/sorvane/_core*.so | grep 'FLAGS.*NOW' >/dev/null || fail "the module is not bound at start"
readelf --dyn-syms -W "$modules"/sorvane/_core*.so | grep -v UND | grep -E 'etxyz|_ZN7sorvane' && fail "the module shows its insides"

for dependency in $(dpkg-deb -f "$package" Depends | sed 's/([^)]*)//g; s/|[^,]*//g; s/,/ /g'); do
    dpkg-query -W "$dependency" >/dev/null || fail "there is no package $dependency"
done
contents() { find "$root" -mindepth 1 -not -path "$root/var/*" | sort; }
before=$(contents)
manage --install "$package"
manage --purge python3-sorvane
[ "$(contents)" = "$before" ] || fail "left behind: $(contents)"
