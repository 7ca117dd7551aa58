#!/usr/bin/env bash
# Tests of the soak's checks on made-up inputs, so that a soak that passes
# means what it says: a missing or doubled log line, a rain total off by a
# click, an unexpected error-log line or growing memory must make them fail.
# Runs in a second:
#   bash tests/tools/soak_checks_test.sh [tools/soak]
set -euo pipefail
here=${1:-$(cd "$(dirname "$0")/../../tools/soak" && pwd)}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
expect() {  # expect NAME EXPECTED ACTUAL
  if [ "$2" == "$3" ]; then echo "ok   $1"; else echo "FAIL $1: expected '$2', got '$3'"; failures=$((failures + 1)); fi
}
times_awk() { awk -f "$here/times.awk" "$@"; }
verdict() { "$@" > /dev/null && echo pass || echo fail; }  # verdict COMMAND...: pass or fail
start="2026-07-01 23:50:00"

# --- calendar arithmetic ----------------------------------------------------
expect "a day over a month end" 86400 \
  "$(times_awk -f /dev/stdin <<<'BEGIN { print seconds_of("2026-08-01 00:00:00") - seconds_of("2026-07-31 00:00:00") }')"
expect "back to text, on a leap day" "2028-02-29 23:59" \
  "$(times_awk -f /dev/stdin <<<'BEGIN { print minute_text(seconds_of("2028-02-29 23:59:59")) }')"

# --- the record: program seconds, rain clicks, the cuts ----------------------
record() {  # record TIME CLICKS
  printf '{"sequence":1,"time":"%s","corrupted":false,"rain_total_clicks":%s,"reading":{}}\n' "$1" "$2"
}
{
  record "2026-07-01 23:50:02.000" 0
  record "2026-07-02 00:06:39.000" 3     # 999 s: before the cut [1000, 1100)
  record "2026-07-02 00:06:40.000" 4     # 1000 s: inside it
  record "2026-07-02 00:08:19.000" 5     # 1099 s: still inside
  record "2026-07-02 00:08:21.000" 7     # 1101 s: after it
} > "$work/record.jsonl"
times_awk -f "$here/record.awk" -v start="$start" -v cut_every=1000 -v cut_for=100 -v summary="$work/summary.txt" \
  "$work/record.jsonl" > "$work/packets.txt"
expect "program seconds and clicks" "2.000 0|999.000 3|1000.000 4|1099.000 5|1101.000 7" \
  "$(paste -sd'|' "$work/packets.txt")"
expect "the packets into the cut and the rain across it" "2 packets sent into the cut cable; rain between the packets either side of it: 4 clicks" \
  "$(grep -o '2 packets.*' "$work/summary.txt")"

# --- the error log: the cuts, the silences and nothing else --------------------
lost="connection to the simulated console lost: the simulated cable was cut"
silent="no data from the station for more than 30 seconds: the minutes are not logged until it sends again"
connected="connected to the simulated console"
again="the station sends again: logging goes on from"
cut_options=(-v cut_every=1000 -v cut_for=100 -v silent_after=30 -v notice=60)
errorlog_check() {  # errorlog_check FILE: pass or fail for a run of 2500 s with cuts at 1000 and 2000 s
  verdict times_awk -f "$here/errorlog.awk" -v start="$start" -v run_for=2500 "${cut_options[@]}" "$1"
}
printf '%s\r\n' "2026-07-02 00:06:40 $lost" "2026-07-02 00:07:30 $silent" "2026-07-02 00:08:21 $connected" \
  "2026-07-02 00:08:40 $again 00:09" "2026-07-02 00:23:20 $lost" "2026-07-02 00:24:00 $silent" \
  "2026-07-02 00:25:00 $connected" "2026-07-02 00:25:30 $again 00:26" > "$work/errors.txt"
expect "two cuts, their silences and their ends" pass "$(errorlog_check "$work/errors.txt")"
sed '2d' "$work/errors.txt" > "$work/unsaid.txt"
expect "a silence not said" fail "$(errorlog_check "$work/unsaid.txt")"
sed '2a 2026-07-02 00:10:00 cannot write the monthly log' "$work/errors.txt" > "$work/unexpected.txt"
expect "an unexpected line" fail "$(errorlog_check "$work/unexpected.txt")"
head -5 "$work/errors.txt" > "$work/unended.txt"
expect "a cut's end missing" fail "$(errorlog_check "$work/unended.txt")"
sed 's/00:08:21/00:09:50/' "$work/errors.txt" > "$work/late.txt"
expect "an end logged long after the cut" fail "$(errorlog_check "$work/late.txt")"

# --- one monthly-log line a minute ------------------------------------------
log_minutes() {  # log_minutes COUNT: lines for that many minutes from the start
  awk -v count="$1" 'BEGIN {
    print "day month year hour minute temperature"
    for (m = 0; m < count; ++m) {
      t = 23 * 60 + 50 + m
      printf "%2d %2d 2026 %2d %2d 20.0\r\n", 1 + int(t / 1440), 7, int(t % 1440 / 60), t % 60
    }
  }'
}
# Cuts at 3000 and 6000 s: silences from 3030 to 3160 and 6030 to 6160 s.
minutes_check() {
  verdict times_awk -f "$here/minutes.awk" -v start="$start" -v minutes=120 -v cut_every=3000 -v cut_for=100 \
    -v silent_after=30 -v notice=60 "$1"
}
log_minutes 120 > "$work/whole.txt"
expect "every minute once" pass "$(minutes_check "$work/whole.txt")"
grep -v '^ 2  7 2026  0 41 ' "$work/whole.txt" > "$work/silence.txt"
expect "a minute of a silence not logged" pass "$(minutes_check "$work/silence.txt")"
grep -v '^ 2  7 2026  0 40 ' "$work/whole.txt" > "$work/before-silence.txt"
expect "a minute of a cut before its silence missing" fail "$(minutes_check "$work/before-silence.txt")"
grep -v '^ 2  7 2026  1  5 ' "$work/whole.txt" > "$work/gap.txt"
expect "a minute missing" fail "$(minutes_check "$work/gap.txt")"
{ cat "$work/whole.txt"; grep '^ 2  7 2026  0 30 ' "$work/whole.txt"; } > "$work/twice.txt"
expect "a minute twice" fail "$(minutes_check "$work/twice.txt")"
log_minutes 119 > "$work/short.txt"
expect "the last minute missing" fail "$(minutes_check "$work/short.txt")"
log_minutes 121 > "$work/long.txt"
expect "a line after the run" fail "$(minutes_check "$work/long.txt")"

# --- rain totals ------------------------------------------------------------
rain_check() {  # rain_check PROGRAM_MM: against the packets in rain.txt, a run of 1000 s
  printf '%s\tmonth\n' "$1" > "$work/totals.txt"
  verdict awk -v totals_file="$work/totals.txt" -v run_for=1000 -v edge=20 -v click_mm=0.254 -f "$here/rain.awk" \
    "$work/totals.txt" "$work/rain.txt"
}
printf '%s\n' "2 2" "4 2" "500 7" "980 9" "990 9" "1000 9" "1002 12" > "$work/rain.txt"
expect "the console's 7 clicks" pass "$(rain_check 1.778)"
expect "one click short" fail "$(rain_check 1.524)"
expect "one click over" fail "$(rain_check 2.032)"
expect "not a whole number of clicks" fail "$(rain_check 1.8)"
printf '%s\n' "2 1" "4 2" "500 7" "970 9" "990 10" > "$work/rain.txt"
expect "a tip at the start and at the end may or may not count: narrowest" pass "$(rain_check 1.778)"
expect "... widest" pass "$(rain_check 2.286)"
expect "... but no more" fail "$(rain_check 2.54)"

# --- memory -----------------------------------------------------------------
memory_check() {  # memory_check DAYS: against the samples in memory.txt
  verdict awk -v first_day=2 -v days="$1" -v min_samples=3 -v margin_kb=256 -f "$here/memory.awk" "$work/memory.txt"
}
printf '%s\n' "1 5000" "2 5100" "2 5200" "2 5150" "3 5300" "3 5210" "3 5300" "4 5456" "4 5400" "4 5300" \
  > "$work/memory.txt"
expect "flat: 256 kB more on the last day" pass "$(memory_check 3)"
echo "4 5457" >> "$work/memory.txt"
expect "257 kB more" fail "$(memory_check 3)"
expect "a day with too few samples" fail "$(memory_check 4)"

[ "$failures" -eq 0 ] && echo "all passed" || { echo "$failures failed"; exit 1; }
