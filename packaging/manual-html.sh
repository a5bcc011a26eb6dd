#!/bin/sh
# The Markdown pages as HTML for a browser.
#   manual-html.sh CMARK-GFM DOCS OUT
set -eu
cmark=$1 docs=$2 out=$3
mkdir -p "$out"
cp "$docs"/*.png "$out/"
for page in "$docs"/*.md; do
  name=$(basename "$page" .md)
  title=$(sed -n 's/^# //p' "$page" | head -n 1)
  {
    cat <<HEAD
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>$title</title>
<style>
body { max-width: 52em; margin: 2em auto; padding: 0 1em; font: 1em/1.5 sans-serif; color-scheme: light dark; }
table { border-collapse: collapse; }
th, td { border: 1px solid #888; padding: .2em .6em; text-align: left; vertical-align: top; }
pre { overflow-x: auto; border-left: 3px solid #888; padding-left: 1em; }
img { max-width: 100%; }
</style>
</head>
<body>
HEAD
    "$cmark" --to html --extension table "$page" | sed -E 's/(href="[^":]+)\.md(["#])/\1.html\2/g'
    printf '</body>\n</html>\n'
  } >"$out/$name.html.part"
  mv "$out/$name.html.part" "$out/$name.html"
done
touch "$out/manual.html"
