#!/usr/bin/env bash
# Installs the package into a root of its own, runs the installed programs and removes it again: nothing may stay.
# usage: install_test.sh PACKAGE
set -euo pipefail
package=$1
# Of the package manager's own helpers, some are kept where only root looks.
export PATH=$PATH:/usr/sbin:/sbin
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
fail() { echo "$*"; exit 1; }

# Dependencies are looked for in the root, which is empty; nothing is run in there.
manage() {
    fakeroot dpkg --root="$root" --log="$root/var/log/dpkg.log" \
        --force-depends --force-not-root --force-script-chrootless "$@" 2>&1
}
contents() { find "$root" -mindepth 1 -not -path "$root/var/*" | sort; }
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/triggers" "$root/var/log"
touch "$root/var/lib/dpkg/status" "$root/var/lib/dpkg/available"
before=$(contents)

manage --install "$package"
for dependency in $(dpkg-query --admindir="$root/var/lib/dpkg" -W -f '${Depends}' sorvane |
    sed 's/([^)]*)//g; s/|[^,]*//g; s/,/ /g'); do
    dpkg-query -W "$dependency" >/dev/null || fail "there is no package $dependency"
done

export PELSAR_DATA=$root/usr/local/pelsar/data/
engagements=("$PELSAR_DATA"demonstration/ETXYZ.OUT.*)
sorvane=$root/usr/bin/sorvane
"$sorvane" --version | grep -Ex 'sorvane [0-9.]+' || fail "the command does not tell its version"
if "$sorvane" --help | grep '^ *info ' >/dev/null; then
    for engagement in "${engagements[@]}"; do
        "$sorvane" info "$engagement" | grep . >/dev/null || fail "no information on $engagement"
    done
fi

"$root/usr/bin/new_sorvane" "${engagements[@]}" 2>"$root/var/log/messages" &
viewer=$!
window=$(timeout 20 xdotool search --sync --onlyvisible --pid "$viewer" --name '^new_sorvane$' | tail -n 1)
sleep 1
xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+c
wait "$viewer" || fail "the viewer ended with status $?: $(cat "$root/var/log/messages")"

manage --purge sorvane
after=$(contents)
[ "$after" = "$before" ] || fail "left behind: $after"
