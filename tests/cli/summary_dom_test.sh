#!/usr/bin/env bash
# The summary of the sample evening as headless Chromium builds it: the
# match list, the evening table and the awards are in the DOM; a hostile
# name is text and runs nothing; the page names no other file or site.
# Usage: summary_dom_test.sh VANTOR_CLI SOURCE_DIR
set -uo pipefail
cli=$1 source=$2
chromium=${CHROMIUM:-/usr/bin/chromium}
[ -x "$chromium" ] || { echo "SKIP: no Chromium at $chromium"; exit 77; }
scratch=$(mktemp -d) && trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
dom() { "$chromium" --headless --no-sandbox --disable-gpu --user-data-dir="$scratch/profile" --dump-dom "file://$1" 2>/dev/null; }

cp "$source/samples/evening.log" "$scratch/evening.log"
"$cli" --quiet --side-dir "$scratch" --summary "$scratch/evening-summary.html" "$scratch/evening.log" || fail "vantor-cli"
page=$(dom "$scratch/evening-summary.html")
[ "$(grep -o '<li><a href="#match-[0-9]*">' <<<"$page" | wc -l)" -eq 5 ] || fail "five matches listed"
grep -q '<table class="sortable" id="evening-table">' <<<"$page" || fail "evening table"
[ "$(grep -o '<td>Vortex</td><td>5</td>' <<<"$page" | wc -l)" -eq 1 ] || fail "Vortex played five matches"
grep -q '<li><b>Top fragger</b>: Bramble, Tundra' <<<"$page" || fail "awards"
grep -Eq 'http:|https:|src=|url\(|@import' "$scratch/evening-summary.html" && fail "names another file or site"

printf '%s\r\n' '<script>document.body.dataset.pwned=1</script>^7 got the RED flag!' \
  '<img src=x onerror=document.body.dataset.pwned=2>^7 got the BLUE flag!' \
  '<img src=x onerror=document.body.dataset.pwned=2>^7 was railed by <script>document.body.dataset.pwned=1</script>^7' \
  >"$scratch/hostile.log"
"$cli" --quiet --side-dir "$scratch" --summary "$scratch/hostile-summary.html" "$scratch/hostile.log" || fail "vantor-cli"
page=$(dom "$scratch/hostile-summary.html")
grep -q '<td>&lt;script&gt;document.body.dataset.pwned=1&lt;/script&gt;</td>' <<<"$page" || fail "script name as text"
grep -q '<td>&lt;img src=x onerror=document.body.dataset.pwned=2&gt;</td>' <<<"$page" || fail "img name as text"
grep -q 'data-pwned' <<<"$page" && fail "a name ran"
grep -q '<img' <<<"$page" && fail "a name made an element"
echo "summary DOM: matches, evening table, awards; hostile names are text"
