# The LOOP packets the program could have received, from the simulator's
# record: one line per packet, "SECONDS CLICKS", the packet's time as seconds
# of program time since the program started and the console's rain counter
# (all bucket tips since the simulator started).
#
# The simulator keeps its console running while the connection is cut, so
# the record also holds packets sent into the void; those inside the drop
# spans [k*drop_every, k*drop_every + drop_for) of simulator time (k >= 1)
# are left out. The simulator started `lead` program seconds before the
# program, so its times are that much ahead.
#
# Variables: sim_start ("YYYY-MM-DD HH:MM:SS"), lead, drop_every, drop_for,
# summary (a file that gets "sent N" and "undelivered N").

BEGIN { start_seconds = seconds_of(sim_start) }

function inside_drop(sim_seconds) {
  return drop_every > 0 && sim_seconds >= drop_every && sim_seconds % drop_every < drop_for
}

match($0, /"time":"[^"]*"/) {
  sim_seconds = seconds_of(substr($0, RSTART + 8, RLENGTH - 9)) - start_seconds
  if (!match($0, /"rain_total_clicks":[0-9]+/)) next
  clicks = substr($0, RSTART + 20, RLENGTH - 20) + 0
  ++sent
  if (inside_drop(sim_seconds)) {
    ++undelivered
    next
  }
  printf "%.3f %d\n", sim_seconds - lead, clicks
}

END {
  print "sent " sent + 0 > summary
  print "undelivered " undelivered + 0 > summary
}
