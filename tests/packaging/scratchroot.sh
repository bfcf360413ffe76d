# Gives $root, an empty root of its own for the package manager, and `manage`, which works in it. To be sourced.
# shellcheck shell=bash
# Of the package manager's own helpers, some are kept where only root looks.
export PATH=$PATH:/usr/sbin:/sbin
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
fail() { echo "$*"; exit 1; }

# Dependencies are looked for in the root, which is empty; the package's scripts are run outside of it and told where it
# lies.
manage() {
    fakeroot dpkg --root="$root" --log="$root/var/log/dpkg.log" \
        --force-depends --force-not-root --force-script-chrootless "$@" 2>&1
}
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/triggers" "$root/var/log" \
    "$root/usr/local" # which every system has
touch "$root/var/lib/dpkg/status" "$root/var/lib/dpkg/available"
