#!/usr/bin/env bash
# The soak: the real program against the Vantage simulator over loopback TCP
# for a simulated week (or DAYS days), with the simulator spoiling a few
# percent of the packets (bad CRCs, packets split in two, bursts of garbage)
# and cutting the connection every two simulated days for ten minutes. Run it
# by hand, not in CI:
#
#   tools/soak/soak.sh NIMBREL SIMULATOR [DAYS] [SPEED]      (or ./dev soak [DAYS] [SPEED])
#
# At the end it checks that (1) the program ended cleanly and logged no
# error but the outages', (2) every minute has exactly one monthly-log line
# save those an outage really lost, (3) the rain totals equal what the
# simulator rained, and (4) the memory stayed flat, and prints the CPU time
# per simulated day, the peak memory and the wall time. Exits 0 only when all
# pass; the working folder is kept when one fails (or when SOAK_KEEP is set).
#
# The default speed, 4000 times real time, is the highest at which the 2-core
# build machine, otherwise idle, passed every week-long run: 5000 to 7000 lost
# the odd minute as soon as other work ran beside it, 8000 half of them. A
# busy machine can lose minutes at any high speed: the program skips what
# its ticks fall behind by more than half a second of real time.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
. "$here/../sim_station.sh"
usage() { echo "usage: $0 NIMBREL SIMULATOR [DAYS (1-29, default 7)] [SPEED (default 4000)]" >&2; exit 2; }
[ $# -ge 2 ] && [ $# -le 4 ] || usage
nimbrel=$1
simulator=$2
days=${3:-7}
speed=${4:-4000}
[[ "$days" =~ ^[0-9]+$ ]] && [ "$days" -ge 1 ] && [ "$days" -le 29 ] || usage
[[ "$speed" =~ ^[0-9]+$ ]] && [ "$speed" -ge 1 ] || usage
for program in "$nimbrel" "$simulator"; do
  [ -x "$program" ] || { echo "not an executable: $program" >&2; exit 2; }
done
[ -x /usr/bin/time ] || { echo "needs /usr/bin/time (Debian package \"time\")" >&2; exit 2; }

# The run: from 23:50 on 1 July to a little after midnight following the
# last day, so that the checked days are whole and all lie in July (no
# month-end rain reset, no clock change). The ten minutes before are for
# connecting: at thousands of times real speed that takes program minutes,
# and the program makes no minute pass, so no daily reset either, before its
# first reading. The time after is for the ticks to catch up: the program
# stops when its clock reaches the end, even when its ticks lag behind (up
# to half a second of real time on a busy machine), and the passes of
# those minutes are then never made. Both clocks start at the same local
# time; the simulator's runs ahead by the real time between the two launches.
start="2026-07-01 23:50:00"
first_minute=600                          # seconds from the start to 00:00 on 2 July
run_for=$((days * 86400 + first_minute + 60 + speed / 2))
seed=2026
drop_every=172800 drop_for=600            # simulator time
fault_rate=0.03
memory_margin_kb=256
slack=$((60 + speed / 50))                # program seconds of doubt in matching the two clocks (20 ms real)
click_mm=0.254                            # "vp rain clicks per inch" left at 100

dir=$(mktemp -d "${TMPDIR:-/tmp}/nimbrel-soak.XXXXXX")
pids=()
finish() {
  local status=$?
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
  if [ "$status" -eq 0 ] && [ -z "${SOAK_KEEP:-}" ]; then rm -rf "$dir"; else echo "the soak's folder is kept: $dir"; fi
}
trap finish EXIT
trap 'exit 130' INT TERM

now() { date +%s.%N; }
# real_seconds A B: B - A, both from now()
real_seconds() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.3f", b - a }'; }
count_lines() {  # count_lines REGEX FILE
  if [ -f "$2" ]; then grep -c -E -e "$1" "$2" || true; else echo 0; fi
}
status_kb() { awk -v key="$2:" '$1 == key { print $2 }' "/proc/$1/status" 2>/dev/null || true; }
child_of() {  # the first child process of $1
  local children
  children=$(cat "/proc/$1/task/$1/children" 2>/dev/null || true)
  [ -n "$children" ] && { echo "${children%% *}"; return; }
  awk -v parent="$1" '$4 == parent { print $1; exit }' /proc/[0-9]*/stat 2>/dev/null || true
}

start_simulator() {
  sim_launched=$(now)
  "$simulator" --tcp 0 --speed "$speed" --start "$start" --seed "$seed" \
    --bad-crc "$fault_rate" --split "$fault_rate" --garbage "$fault_rate" \
    --drop-every "$drop_every" --drop-for "$drop_for" --record "$dir/record.jsonl" > "$dir/sim.out" 2>&1 &
  sim_pid=$!
  pids+=("$sim_pid")
  port=$(sim_port "$dir/sim.out") \
    || { echo "the simulator did not start:"; cat "$dir/sim.out"; exit 1; }
}

write_settings() { vantage_tcp_settings "$port" "Soak" > "$dir/NIMBREL.INI"; }

start_program() {
  program_launched=$(now)
  /usr/bin/time -v -o "$dir/time.txt" "$nimbrel" --dir "$dir" --start "$start" --speed "$speed" \
    --run-for "$run_for" > "$dir/run.out" 2>&1 &
  time_pid=$!
  pids+=("$time_pid")
  lead=$(awk -v s="$(real_seconds "$sim_launched" "$program_launched")" -v speed="$speed" \
    'BEGIN { printf "%.1f", s * speed }')
  program_pid=""
  for _ in $(seq 200); do
    program_pid=$(child_of "$time_pid")
    [ -n "$program_pid" ] && { pids+=("$program_pid"); break; }
    sleep 0.01
  done
}

# Once a simulated day, at 23:50 program time: the program's VmRSS and VmHWM.
sample_memory() {
  : > "$dir/memory.txt"
  local day due now_s rss hwm
  for day in $(seq "$days"); do
    due=$(awk -v t0="$program_launched" -v at=$((first_minute + day * 86400 - 600)) -v speed="$speed" \
      'BEGIN { printf "%.3f", t0 + at / speed }')
    now_s=$(now)
    sleep "$(awk -v a="$now_s" -v b="$due" 'BEGIN { d = b - a; printf "%.3f", (d > 0 ? d : 0) }')"
    [ -n "$program_pid" ] || break
    rss=$(status_kb "$program_pid" VmRSS)
    hwm=$(status_kb "$program_pid" VmHWM)
    [ -n "$rss" ] || break
    echo "$day $rss $hwm" >> "$dir/memory.txt"
    echo "  day $day/$days: VmRSS $rss kB, VmHWM $hwm kB"
  done
}

stop_simulator() {
  # its CPU time, for comparison: fields 14 and 15 of its stat, in clock ticks
  sim_cpu=$(awk -v hz="$(getconf CLK_TCK)" '{ sub(/^.*\) /, ""); printf "%.2f", ($12 + $13) / hz }' \
    "/proc/$sim_pid/stat" 2>/dev/null || echo "?")
  kill -TERM "$sim_pid" 2>/dev/null || true
  wait "$sim_pid" 2>/dev/null || true
}

verdict() {  # verdict NAME OK(0/1)
  if [ "$2" -eq 0 ]; then echo "PASS $1"; else echo "FAIL $1"; failures=$((failures + 1)); fi
}

check_clean_end() {
  local ok=0 unexpected
  [ "$program_status" -eq 0 ] || ok=1
  local host="127\\.0\\.0\\.1:$port"
  unexpected=$(sed -e 's/\r$//' -e 's/^[0-9-]* [0-9:]* //' "$dir/programerrorlog.txt" 2>/dev/null | grep -v -E \
    -e "^connected to $host\$" \
    -e "^connection to $host lost: .*; retrying every " \
    -e "^cannot connect to $host .*; retrying every " \
    -e "^not connected to $host; data for the station is dropped\$" \
    -e "^no data from the station for more than [0-9]+ seconds: the minutes are not logged until it sends again\$" \
    -e "^the station sends again: logging goes on from [0-9:]+\$" || true)
  [ -z "$unexpected" ] || ok=1
  verdict "1 clean end: exit status $program_status, $(count_lines . "$dir/programerrorlog.txt") error-log lines of which $(grep -c . <<<"$unexpected" || true) not about the connection" $ok
  grep -E 'Command terminated by signal|Command exited' "$dir/time.txt" | sed 's/^\s*/  /' || true
  [ -z "$unexpected" ] || { echo "  unexpected error-log lines:"; echo "$unexpected" | head -20 | sed 's/^/    /'; }
}

derive_outages() {
  awk -f "$here/times.awk" -f "$here/delivered.awk" -v sim_start="$start" -v lead="$lead" \
    -v drop_every="$drop_every" -v drop_for="$drop_for" -v summary="$dir/record-summary.txt" \
    "$dir/record.jsonl" > "$dir/delivered.txt"
  awk -f "$here/outages.awk" -v run_for="$run_for" -v min_gap=60 "$dir/delivered.txt" > "$dir/gaps.txt"
  awk -f "$here/outages.awk" -v run_for="$run_for" -v min_gap=60 -v drop_every="$drop_every" \
    -v drop_for="$drop_for" -v lead="$lead" "$dir/delivered.txt" > "$dir/outages.txt"
}

report_outages() {
  local sent undelivered
  sent=$(awk '$1 == "sent" { print $2 }' "$dir/record-summary.txt")
  undelivered=$(awk '$1 == "undelivered" { print $2 }' "$dir/record-summary.txt")
  echo "simulator: $sent LOOP packets sent, $undelivered of them into a cut connection;" \
       "its clock led the program's by $lead s"
  echo "error log: $(count_lines ' lost: ' "$dir/programerrorlog.txt") connections lost," \
       "$(count_lines '[0-9] connected to ' "$dir/programerrorlog.txt") made"
  awk -f "$here/times.awk" -f "$here/cut_timing.awk" -v start="$start" -v drop_every="$drop_every" \
    -v lead="$lead" "$dir/programerrorlog.txt"
  echo "program: $(wc -l < "$dir/delivered.txt") packets reached it (an unbroken stream is $((run_for / 2)));" \
       "$(count_lines 'waking it again' "$dir/logfiles/stationlog.txt") wake-ups after 6 s without data;" \
       "$(wc -l < "$dir/gaps.txt") gaps of over a minute, $(wc -l < "$dir/outages.txt") of them outages:"
  awk -f "$here/times.awk" -f "$here/outage_report.awk" -v start="$start" "$dir/outages.txt"
}

check_minutes() {
  local logs=("$dir"/logfiles/*lg.txt) ok=0 details
  details=$(awk -f "$here/times.awk" -f "$here/minutes.awk" -v outages_file="$dir/outages.txt" \
    -v start="$start" -v first="$first_minute" -v minutes=$((days * 1440)) -v slack="$slack" \
    "$dir/outages.txt" "${logs[@]}") || ok=1
  verdict "2 one monthly-log line a minute, $((days * 1440)) minutes ($(cd "$dir/logfiles" && echo *lg.txt))" $ok
  echo "$details"
}

check_rain() {
  local ini="$dir/NIMBREL.INI" ok=0 details resets daily_sum
  resets=$(count_lines 'Normal daily resetting rain daily value' "$dir/logfiles/stationlog.txt")
  daily_sum=$(awk -v today="$(ini_value "$ini" "new rain storage" "dailyrain new")" '
    /Normal daily resetting rain daily value/ && match($0, /rain today [0-9.eE+-]+ mm/) {
      sum += substr($0, RSTART + 11, RLENGTH - 14)
    }
    END { printf "%.6f", sum + today }' "$dir/logfiles/stationlog.txt")
  {
    printf '%s\tmonth (NIMBREL.INI "new rain storage" "monthlyrain new")\n' \
      "$(ini_value "$ini" "new rain storage" "monthlyrain new")"
    printf '%s\tyear ("yearlyrain new")\n' "$(ini_value "$ini" "new rain storage" "yearlyrain new")"
    printf '%s\tthe %s days filed at the daily resets plus today ("dailyrain new")\n' "$daily_sum" "$resets"
  } > "$dir/rain-totals.txt"
  details=$(awk -v totals_file="$dir/rain-totals.txt" -v run_for="$run_for" -v slack="$slack" \
    -v click_mm="$click_mm" -f "$here/rain.awk" "$dir/rain-totals.txt" "$dir/delivered.txt") || ok=1
  [ "$resets" -eq $((days + 1)) ] || ok=1
  verdict "3 rain totals equal the simulator's rain" $ok
  echo "$details"
  echo "  daily rain resets: $resets (midnights in the run: $((days + 1)))"
  grep 'rain counter jump refused' "$dir/logfiles/stationlog.txt" | sed 's/^/  /' || true
}

check_memory() {
  local first last
  first=$(head -1 "$dir/memory.txt")
  last=$(tail -1 "$dir/memory.txt")
  if [ -z "$first" ] || [ "$(wc -l < "$dir/memory.txt")" -lt "$days" ]; then
    verdict "4 memory flat: only $(wc -l < "$dir/memory.txt") of $days daily samples" 1
  elif [ "$days" -lt 2 ]; then
    set -- $first
    echo "SKIP 4 memory flat: one day gives nothing to compare (VmRSS $2 kB, VmHWM $3 kB)"
  else
    set -- $first $last
    local growth=$(($5 - $2))
    verdict "4 memory flat: VmRSS day 1 $2 kB, day $4 $5 kB (growth $growth kB, allowed $memory_margin_kb)" \
      $([ "$growth" -le "$memory_margin_kb" ] && echo 0 || echo 1)
    echo "  VmHWM day 1 $3 kB, day $4 $6 kB"
  fi
}

print_figures() {
  awk -v days_run="$(awk -v r="$run_for" 'BEGIN { print r / 86400 }')" -v speed="$speed" -v sim_cpu="$sim_cpu" -F': ' '
    /User time/ { user = $2 } /System time/ { sys = $2 }
    /Maximum resident set size/ { peak = $2 } /Elapsed \(wall clock\)/ { wall = $2 }
    END {
      printf "speed %d x real time; wall time %s for %.3f simulated days\n", speed, wall, days_run
      printf "CPU %.2f s user + %.2f s system = %.2f s per simulated day\n", user, sys, (user + sys) / days_run
      printf "peak RSS %d kB (/usr/bin/time); the simulator used %s s of CPU\n", peak, sim_cpu
    }' "$dir/time.txt"
}

echo "soak: $days simulated days at $speed x real time (about $((run_for / speed)) s); folder $dir"
start_simulator
write_settings
start_program
sample_memory
program_status=0
wait "$time_pid" || program_status=$?
stop_simulator
pids=()  # all ended: their ids may be handed out again
derive_outages

failures=0
report_outages
check_clean_end
check_minutes
check_rain
check_memory
print_figures
[ "$failures" -eq 0 ] || { echo "$failures check(s) failed"; exit 1; }
echo "all checks passed"
