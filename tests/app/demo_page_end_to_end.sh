#!/usr/bin/env bash
# The demo's web page, end to end in simulated time: the running program
# fills "wxlocal.html" into "wx.html" with every tag replaced, a headless
# browser draws it, `nimbrel tags --all` gives every tag of the list a value
# or "---", and docs/tags.md is what `nimbrel tags --list` prints.
# NIMBREL_SCREENSHOT_DIR, when set, keeps the screenshot there.
set -euo pipefail
nimbrel=$1
# British time, written out so that no time-zone database is needed.
export TZ="GMT0BST,M3.5.0/1,M10.5.0"
source_dir=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
dir=$work/demo
fail() { echo "FAIL: $*"; cat "$dir/programerrorlog.txt" 2>/dev/null || true; exit 1; }

"$nimbrel" demo --dir "$dir" --speed max --start "2026-06-21 11:58:00" --seed 5 --run-for 1800 \
  > "$work/run.out" 2>&1 || fail "the demo did not end cleanly: $(cat "$work/run.out")"
page=$dir/webfiles/wx.html
[ -f "$page" ] || fail "no wx.html"
grep -q '<h1>Demo Station</h1>' "$page" || fail "the station's name is not on the page"
grep -q '&deg;C</div>' "$page" || fail "the temperature has no unit"
left=$(grep -oE '%[A-Za-z0-9,/=.<>#-]+%' "$page" || true)
[ -z "$left" ] || fail "tags left on the page: $left"
# Sun times for Greenwich on the longest day (summer time): sunrise 04:43, sunset 21:21.
grep -qE 'Sunrise</td><td class="v">04:4[2-4]<' "$page" || fail "sunrise is not about 04:43: $(grep Sunrise "$page")"
grep -qE 'Sunset</td><td class="v">21:2[0-2]<' "$page" || fail "sunset is not about 21:21: $(grep Sunset "$page")"

# Every tag of the list, each once, with a value or "---".
"$nimbrel" tags --all --dir "$dir" > "$work/all.out" 2>&1 || fail "tags --all failed: $(cat "$work/all.out")"
test_page=$dir/webfiles/testtags.php
[ "$(wc -l < "$test_page")" -eq "$(wc -l < "$source_dir/publish/tags/tag_names.txt")" ] ||
  fail "testtags.php has $(wc -l < "$test_page") lines"
tr -d '\r' < "$test_page" | sed 's/ = .*//' | sort > "$work/names"
sort "$source_dir/publish/tags/tag_names.txt" | diff - "$work/names" > /dev/null || fail "testtags.php names other tags"
if tr -d '\r' < "$test_page" | grep -E ' = $|%' | grep -v '^[^=]* = [^%]*% *$' > "$work/odd"; then
  fail "tags without a value: $(head -3 "$work/odd")"
fi
tr -d '\r' < "$test_page" | grep -qE '^temp = -?[0-9]+\.[0-9](&deg;C)?$' || fail "the temperature has no value in testtags.php"

# The owners' list is the program's own.
"$nimbrel" tags --list | cmp -s - "$source_dir/docs/tags.md" || fail "docs/tags.md is out of date: run ./dev docs"

# What a person sees: the page drawn by a real browser.
browser=$(command -v chromium || command -v chromium-browser || true)
[ -n "$browser" ] || fail "no chromium to look at the page with (./dev test installs it)"
shot=$work/wx.png
timeout 120 "$browser" --headless --no-sandbox --disable-gpu --hide-scrollbars --window-size=1200,1000 \
  --user-data-dir="$work/browser" --screenshot="$shot" "file://$page" > "$work/browser.out" 2>&1 ||
  fail "chromium failed: $(tail -3 "$work/browser.out")"
[ "$(head -c 8 "$shot" | od -An -tx1 | tr -d ' \n')" = "89504e470d0a1a0a" ] || fail "the screenshot is no PNG"
[ "$(stat -c %s "$shot")" -gt 20000 ] || fail "the screenshot is nearly empty"
if [ -n "${NIMBREL_SCREENSHOT_DIR:-}" ]; then cp "$shot" "$NIMBREL_SCREENSHOT_DIR/wx.png"; fi
echo "wx.html filled and drawn"
