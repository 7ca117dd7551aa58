#!/usr/bin/env bash
# Tests of the soak's checks on made-up inputs, so that a soak that passes
# means what it says: a missing or doubled log line, a wrong rain total or a
# misplaced outage must make them fail. Runs in a second:
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

# --- calendar arithmetic ----------------------------------------------------
expect "a day over a month end" 86400 \
  "$(times_awk -f /dev/stdin <<<'BEGIN { print seconds_of("2026-08-01 00:00:00") - seconds_of("2026-07-31 00:00:00") }')"
expect "a leap day" 172800 \
  "$(times_awk -f /dev/stdin <<<'BEGIN { print seconds_of("2028-03-01 00:00:00") - seconds_of("2028-02-28 00:00:00") }')"
expect "milliseconds" 1.5 \
  "$(times_awk -f /dev/stdin <<<'BEGIN { print seconds_of("2026-07-01 00:00:01.500") - seconds_of("2026-07-01 00:00:00") }')"
expect "back to text" "2028-02-29 23:59" \
  "$(times_awk -f /dev/stdin <<<'BEGIN { print minute_text(seconds_of("2028-02-29 23:59:59")) }')"

# --- packets delivered: the lead and the cut connection ---------------------
record() {  # record TIME CLICKS
  printf '{"sequence":1,"time":"%s","corrupted":false,"rain_total_clicks":%s,"reading":{}}\n' "$1" "$2"
}
{
  record "2026-07-01 00:00:10.000" 0
  record "2026-07-01 00:16:40.000" 3     # 1000 s: inside the cut [1000, 1100)
  record "2026-07-01 00:18:19.000" 4     # 1099 s: still inside
  record "2026-07-01 00:18:20.000" 5     # 1100 s: after it
} > "$work/record.jsonl"
awk -f "$here/times.awk" -f "$here/delivered.awk" -v sim_start="2026-07-01 00:00:00" -v lead=10 \
  -v drop_every=1000 -v drop_for=100 -v summary="$work/summary.txt" "$work/record.jsonl" > "$work/delivered.txt"
expect "packets in the cut left out, times moved by the lead" "0.000 0|1090.000 5" \
  "$(paste -sd'|' "$work/delivered.txt")"
expect "the packets counted" "sent 4|undelivered 2" "$(paste -sd'|' "$work/summary.txt")"

# --- outages ----------------------------------------------------------------
printf '%s\n' "0 0" "100 0" "500 0" "2000 0" "2002 0" > "$work/packets.txt"
outages() { awk -f "$here/outages.awk" -v run_for=2100 -v min_gap=60 "$@" "$work/packets.txt" | paste -sd'|'; }
expect "every long gap without a cut schedule" "0.000 100.000|100.000 500.000|500.000 2000.000|2002.000 2100.000" "$(outages)"
expect "only the gap with the cut, from the cut on" "1200.000 2000.000" \
  "$(outages -v drop_every=1300 -v drop_for=100 -v lead=100)"

# --- one monthly-log line a minute ------------------------------------------
log_minutes() {  # log_minutes FIRST_HHMM COUNT: lines for that many minutes from 2026-07-02 FIRST
  awk -v count="$2" -v first="$1" 'BEGIN {
    print "day month year hour minute temperature"
    for (m = 0; m < count; ++m) {
      t = int(first / 100) * 60 + first % 100 + m
      printf "%2d %2d 2026 %2d %2d 20.0\r\n", 2 + int(t / 1440), 7, int(t % 1440 / 60), t % 60
    }
  }'
}
minutes_check() {  # minutes_check LOG OUTAGES: prints the exit status and the excused count
  local status=0 out
  out=$(awk -f "$here/times.awk" -f "$here/minutes.awk" -v outages_file="$2" -v start="2026-07-01 23:50:00" \
    -v first=600 -v minutes=120 -v slack=0 "$2" "$1") || status=$?
  echo "$status $(echo "$out" | grep -o 'of which [0-9]* had no line' | grep -o '[0-9]*')"
}
: > "$work/none.txt"
log_minutes 0000 120 > "$work/whole.txt"
expect "every minute once" "0 0" "$(minutes_check "$work/whole.txt" "$work/none.txt")"
grep -v '^ 2  7 2026  1  5 ' "$work/whole.txt" > "$work/gap.txt"
expect "a minute missing" "1 0" "$(minutes_check "$work/gap.txt" "$work/none.txt")"
echo "4490 4570" > "$work/outage.txt"   # program seconds: 01:04:50 to 01:06:10 on 2 July
expect "a minute missing in an outage is excused" "0 1" "$(minutes_check "$work/gap.txt" "$work/outage.txt")"
{ cat "$work/whole.txt"; grep '^ 2  7 2026  0 30 ' "$work/whole.txt"; } > "$work/twice.txt"
expect "a minute twice" "1 0" "$(minutes_check "$work/twice.txt" "$work/outage.txt")"
log_minutes 0000 119 > "$work/short.txt"
expect "the last minute missing" "1 0" "$(minutes_check "$work/short.txt" "$work/none.txt")"

# --- rain totals ------------------------------------------------------------
rain_check() {  # rain_check PROGRAM_MM: exit status against the packets in rain.txt
  printf '%s\tmonth\n' "$1" > "$work/totals.txt"
  awk -v totals_file="$work/totals.txt" -v run_for=1000 -v slack=10 -v click_mm=0.254 -f "$here/rain.awk" \
    "$work/totals.txt" "$work/rain.txt" > /dev/null && echo pass || echo fail
}
printf '%s\n' "1 2" "3 2" "500 7" "980 9" "985 9" "1200 12" > "$work/rain.txt"
expect "the simulator's 7 clicks" pass "$(rain_check 1.778)"
expect "one click short" fail "$(rain_check 1.524)"
expect "one click over" fail "$(rain_check 2.032)"
expect "not a whole number of clicks" fail "$(rain_check 1.8)"
printf '%s\n' "1 1" "3 2" "500 7" "980 9" "1005 10" > "$work/rain.txt"
expect "a tip in the first packet may or may not count: narrow" pass "$(rain_check 1.778)"
expect "... wide" pass "$(rain_check 2.286)"
expect "... but no more" fail "$(rain_check 2.54)"

[ "$failures" -eq 0 ] && echo "all passed" || { echo "$failures failed"; exit 1; }
