# The LOOP packets of the demo console's record (one JSON line per packet it
# sent, whether or not the cable was whole) as "SECONDS CLICKS" lines: the
# packet's program time in seconds since the run's start and the console's
# rain counter (all bucket tips since the console started). The program's
# clock is the console's, so the times need no matching.
#
# Also writes to the file `summary` how many packets were sent and, for each
# cable cut (from cut_every after the start, every cut_every, for cut_for
# seconds), how many went into the cut cable and how many clicks of rain
# fell between the last packet before the cut and the first after it.
#
# Variables: start ("YYYY-MM-DD HH:MM:SS"), cut_every, cut_for, summary.

BEGIN { start_seconds = seconds_of(start) }

match($0, /"time":"[^"]*"/) {
  at = seconds_of(substr($0, RSTART + 8, RLENGTH - 9)) - start_seconds
  if (!match($0, /"rain_total_clicks":[0-9]+/)) next
  clicks = substr($0, RSTART + 20, RLENGTH - 20) + 0
  printf "%.3f %d\n", at, clicks
  ++sent
  cut = cut_every > 0 ? int(at / cut_every) : 0  # the last cut that began at or before `at`
  if (cut >= 1) {
    if (!(cut in before)) {
      before[cut] = previous
      cuts = cut
    }
    if (at - cut * cut_every < cut_for)
      ++into_cut[cut]
    else if (!(cut in after))
      after[cut] = clicks
  }
  previous = clicks
}

END {
  print "  the console sent " sent + 0 " LOOP packets" > summary
  for (cut = 1; cut <= cuts; ++cut)
    printf "  cut %d: %d packets sent into the cut cable; %s\n", cut, into_cut[cut],
           cut in after ? "rain between the packets either side of it: " after[cut] - before[cut] " clicks" : "the run ended in it" > summary
}
