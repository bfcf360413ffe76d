#!/usr/bin/env bash
# Turns a document into a page for a browser, with links between the pages. usage: to_html.sh DOCUMENT.md PAGE.html
set -euo pipefail
title=$(sed -n 's/^# //p' "$1" | head -n 1)
mkdir -p "$(dirname "$2")"
{
    cat <<EOF
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>$title</title>
<style>
body { max-width: 50em; margin: 2em auto; padding: 0 1em; font-family: sans-serif; line-height: 1.5; }
img { max-width: 100%; }
table { border-collapse: collapse; }
th, td { border: 1px solid #999; padding: 0.2em 0.6em; text-align: left; vertical-align: top; }
pre { overflow-x: auto; padding: 0.5em; background: #8882; }
</style>
</head>
<body>
EOF
    # Headings get the names that links to them use: lower case, blanks as hyphens, nothing else but letters and digits.
    cmark-gfm --extension table --unsafe "$1" | sed -E '
        s|^<h([1-6])>(.*)</h[1-6]>$|<h\1 id="\L\2\E">\2</h\1>|
        :tags;   s|^(<h. id="[^"<]*)<[^>]*>|\1|; t tags
        :marks;  s|^(<h. id="[^"]*)[^-a-z0-9 "]|\1|; t marks
        :blanks; s|^(<h. id="[^" ]*) |\1-|; t blanks
        s|href="([^":]*)README\.md|href="\1index.html|g
        s|href="([^":]*)\.md|href="\1.html|g'
    echo '</body></html>'
} >"$2"
