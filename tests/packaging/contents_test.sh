#!/usr/bin/env bash
# Checks that what is installed fits together: paths that files name exist, versions agree.
# usage: contents_test.sh STAGE VERSION SOURCE_TREE
set -euo pipefail
stage=$1 version=$2 source=$3
failed=0
fail() { echo "$*"; failed=1; }
demonstration=$stage/usr/share/sorvane/demonstration
data=$demonstration/data
[ ! -e "$stage/usr/local" ] || fail "the package owns files of the data root"

# The demonstration names its data by absolute paths. One of its engagements is about missing files.
named_paths() {
    { grep -hE '^/' "$demonstration/ETXYZ.OUT.turn"
      uncompress -c "$demonstration/ETXYZ.OUT.weave.Z" | grep -E '^/'
      sed -n 's|.*<asterdb>\(.*\)</asterdb>.*|\1|p' "$data/ter0020/ter0020.xml"
      sed -n 's/^Exec=env "PELSAR_DATA=/"/p' "$stage"/usr/share/applications/*.desktop | grep -o '/[^"]*'; } | sort -u
}
[ "$(named_paths | wc -l)" -ge 11 ] || fail "the demonstration names too few paths: $(named_paths)"
while read -r path; do
    [ -e "$stage$path" ] || fail "$path is named and not installed"
done < <(named_paths)
grep -rIl -e "$source" "$stage" && fail "the files above name the source tree"

diff -r "$source/data/openglshaders" "$data/openglshaders" || fail "the shaders differ"
for file in bin/new_sorvane bin/sorvane share/man/man1/new_sorvane.1.gz share/man/man1/sorvane.1.gz \
    share/bash-completion/completions/sorvane share/zsh/vendor-completions/_sorvane \
    share/fish/vendor_completions.d/sorvane.fish share/icons/hicolor/scalable/apps/sorvane.svg; do
    [ -s "$stage/usr/$file" ] || fail "/usr/$file is missing or empty"
done
for script in survey merge unfinished render; do
    [ -x "$stage/usr/share/sorvane/slurm/$script.sh" ] || fail "the job script $script.sh is missing"
done
for side in 16 22 24 32 48 64 128 256; do
    file "$stage/usr/share/icons/hicolor/${side}x$side/apps/sorvane.png" | grep -q "PNG image data, $side x $side, .*RGBA" ||
        fail "there is no icon of $side pixels"
done
unreadable=$(find "$stage" ! -perm -444)
[ -z "$unreadable" ] || fail "not for everyone to read: $unreadable"

doc=$stage/usr/share/doc/sorvane
# The viewer links to the guide; its pages link to each other, to places in them and to pictures.
links() { grep -oE '(href|src)="[^":]*"' "$1" | cut -d'"' -f2 | sort -u; }
[ "$(find "$doc/guide" -name '*.html' | wc -l)" -ge 12 ] || fail "pages of the guide are missing"
for page in "$doc"/*.html "$doc"/guide/*.html; do
    while read -r link; do
        target=${link%%#*}
        [ -n "$target" ] && target=$(dirname "$page")/$target || target=$page
        [ -s "$target" ] || { fail "$page links to $link, which is not there"; continue; }
        [ "${link#*#}" = "$link" ] || grep -qF "id=\"${link#*#}\"" "$target" || fail "$page: no heading for $link"
    done < <(links "$page")
done
zgrep -qF "sorvane ($version-1)" "$doc/changelog.Debian.gz" || fail "Debian's changelog lacks $version"
grep -qF "release version=\"$version\"" "$stage"/usr/share/metainfo/*.xml || fail "the metadata lacks $version"
newest=$(grep -m 1 -oP '^## \[\K[0-9.]+' "$source/CHANGELOG.md")
[ "$newest" = "$version" ] || fail "CHANGELOG.md ends at $newest, the build is $version"
exit $failed
