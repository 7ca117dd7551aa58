#!/usr/bin/env bash
# The performance figures quoted in the README, measured on this machine:
#   tools/perf/day_figures.sh NIMBREL SIMULATOR [SPEED] [SECONDS] [FOLDER]
# Runs the program for SECONDS of program time (default: a day) of one-second ticks against the
# Vantage simulator (a LOOP packet every two seconds, over loopback TCP; the
# simulator is a separate process and is not counted), under /usr/bin/time -v,
# and prints CPU seconds per simulated day (scaled from SECONDS), peak
# resident memory and the start-up time. At speed 1, SECONDS=600 gives the
# real-time figure in ten minutes. FOLDER (default: a new temporary folder) is where the
# program writes; put it on the disk the station will use.
set -euo pipefail
nimbrel=$(realpath "$1")
simulator=$(realpath "$2")
. "$(dirname "$0")/../sim_station.sh"
speed=${3:-2400}
seconds=${4:-86400}
dir=${5:-$(mktemp -d)}
mkdir -p "$dir"
sim_pid=
trap '[ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null; true' EXIT

start="2026-03-10 00:00:00"
"$simulator" --tcp 0 --speed "$speed" --start "$start" --seed 11 > "$dir/sim.out" 2>&1 &
sim_pid=$!
port=$(sim_port "$dir/sim.out")
vantage_tcp_settings "$port" "Figures" > "$dir/NIMBREL.INI"

field() { grep "$1" "$2" | awk -F': ' '{print $2}'; }

# Start-up: a run of a single program second at a high speed is start-up and stop.
/usr/bin/time -v "$nimbrel" --dir "$dir" --start "$start" --speed 1000 --run-for 1 > /dev/null 2> "$dir/startup.txt"
/usr/bin/time -v "$nimbrel" --dir "$dir" --start "$start" --speed "$speed" --run-for "$seconds" > /dev/null 2> "$dir/day.txt"

user=$(field "User time" "$dir/day.txt")
system=$(field "System time" "$dir/day.txt")
rss=$(field "Maximum resident" "$dir/day.txt")
lines=$(awk '$1 ~ /^[0-9]+$/' "$dir/logfiles/32026lg.txt" | wc -l)
echo "speed:                       $speed x real time"
echo "program time:                $seconds s, $lines minute lines in the monthly log"
echo "CPU per simulated day:       $(awk -v u="$user" -v s="$system" -v t="$seconds" 'BEGIN { printf "%.2f", (u + s) * 86400 / t }') s (in the run: user $user s, system $system s)"
echo "peak resident memory:        $rss KiB"
echo "start-up and stop:           $(field "Elapsed" "$dir/startup.txt") (m:ss), peak $(field "Maximum resident" "$dir/startup.txt") KiB"
echo "files in:                    $dir"
