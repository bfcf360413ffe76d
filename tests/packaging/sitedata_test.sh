#!/usr/bin/env bash
# What a site keeps in the data root survives the package and `cmake --install`, byte for byte: bodies and terrain under
# the demonstration's names, a shader of its own, and a shader that it has changed after the package brought it.
# usage: sitedata_test.sh PACKAGE CMAKE BUILD_FOLDER
set -euo pipefail
package=$1 cmake=$2 build=$3
here=$(dirname "${BASH_SOURCE[0]}")
# shellcheck source=tests/packaging/scratchroot.sh
. "$here/scratchroot.sh"
data=$root/usr/local/pelsar/data
shaders=$data/openglshaders

for name in tgt4004/tgt4004.vnl tgt0450/tgt0450_b0001.rad tgt0451/tgt0451.vnl ter0010/ter0010.top \
    openglshaders/TerrainRefl.frag; do
    mkdir -p "$(dirname "$data/$name")"
    echo "the site's own $name" >"$data/$name"
done
state() { (cd "$data" && find . -type f -exec sha256sum {} + | sort); }
own=$(state)
expect_own() { [ "$(state)" = "$own" ] || fail "$1: $(diff <(echo "$own") <(state))"; }
same_shader() { cmp -s "$root/usr/share/sorvane/demonstration/data/openglshaders/$1" "$shaders/$1"; }

manage --install "$package"
echo "$own" | (cd "$data" && sha256sum --quiet -c) || fail "the package has changed what is the site's"
[ "$(find "$data" -type f | wc -l)" = 8 ] || fail "more than three shaders were added: $(find "$data" -type f)"
for name in TerrainRefl.vert SandfordRobertson_simple.vert SandfordRobertson_simple.frag; do
    same_shader "$name" || fail "$name is not what the package brings"
done
manage --install "$package" # again, as an upgrade does
same_shader TerrainRefl.vert || fail "an upgrade has lost a shader"
manage --remove sorvane
expect_own "after remove"

manage --install "$package"
echo "// changed" >>"$shaders/TerrainRefl.vert"
own=$(state | grep -v SandfordRobertson)
manage --purge sorvane
expect_own "after purge"

staged=$root/staged
mkdir -p "$staged$(dirname "${data#"$root"}")"
cp -r "$data" "$staged${data#"$root"}"
DESTDIR=$staged "$cmake" --install "$build" --prefix /opt/sorvane >"$root/log"
grep -q '^-- Kept, though it differs.*TerrainRefl.frag' "$root/log" || fail "nothing is said of the shader that stayed"
data=$staged${data#"$root"}
echo "$own" | (cd "$data" && sha256sum --quiet -c) || fail "cmake --install has changed what is the site's"
[ "$(find "$data" -type f | wc -l)" = 8 ] || fail "cmake --install has not added two shaders"
grep -qx /opt/sorvane/share/sorvane/demonstration/data/tgt4004/tgt4004.vnl \
    "$staged/opt/sorvane/share/sorvane/demonstration/ETXYZ.OUT.turn" || fail "the demonstration does not know its place"
