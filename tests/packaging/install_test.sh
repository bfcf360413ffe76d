#!/usr/bin/env bash
# Installs the package into a root of its own, runs the installed programs and removes it again: nothing may stay.
# usage: install_test.sh PACKAGE
set -euo pipefail
package=$1
# shellcheck source=tests/packaging/scratchroot.sh
. "$(dirname "${BASH_SOURCE[0]}")/scratchroot.sh"

contents() { find "$root" -mindepth 1 -not -path "$root/var/*" | sort; }
before=$(contents)

manage --install "$package"
for dependency in $(dpkg-query --admindir="$root/var/lib/dpkg" -W -f '${Depends}' sorvane |
    sed 's/([^)]*)//g; s/|[^,]*//g; s/,/ /g'); do
    dpkg-query -W "$dependency" >/dev/null || fail "there is no package $dependency"
done

demonstration=$root/usr/share/sorvane/demonstration
export PELSAR_DATA=$demonstration/data/
engagements=("$demonstration"/ETXYZ.OUT.*)
sorvane=$root/usr/bin/sorvane
"$sorvane" --version | grep -Ex 'sorvane [0-9.]+' || fail "the command does not tell its version"
if "$sorvane" --help | grep '^ *info ' >/dev/null; then
    for engagement in "${engagements[@]}"; do
        "$sorvane" info "$engagement" | grep . >/dev/null || fail "no information on $engagement"
    done
fi

SORVANE_NO_SETTINGS=1 "$root/usr/bin/new_sorvane" "${engagements[@]}" 2>"$root/var/log/messages" &
viewer=$!
window=$(timeout 20 xdotool search --sync --onlyvisible --pid "$viewer" --name '^new_sorvane$' | tail -n 1)
sleep 1
xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+c
wait "$viewer" || fail "the viewer ended with status $?: $(cat "$root/var/log/messages")"

manage --purge sorvane
after=$(contents)
[ "$after" = "$before" ] || fail "left behind: $after"
