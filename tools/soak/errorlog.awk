# The program's error log must hold the simulated cable's cuts and nothing
# else: for each cut that began in the run (from cut_every seconds after the
# start, every cut_every seconds, for cut_for seconds), one "lost" line, the
# data watchdog's line that the station is silent (`silent_after` seconds
# into the cut) and, when the cut ended in the run, one "connected" line and
# the line that logging goes on, each written within `notice` seconds of its
# moment. Prints the lines that do not fit and the ones missing; exits 1 if
# there are any.
#
# Variables: start ("YYYY-MM-DD HH:MM:SS"), run_for, cut_every, cut_for,
# silent_after, notice.

BEGIN {
  start_seconds = seconds_of(start)
  lost_text = "connection to the simulated console lost: the simulated cable was cut"
  silent_text = "no data from the station for more than " silent_after " seconds: the minutes are not logged until it sends again"
  connected_text = "connected to the simulated console"
  again_text = "the station sends again: logging goes on from "
  expected = 0
  found = 0
  for (k = 1; cut_every > 0 && k * cut_every < run_for; ++k) {
    want(lost_text, k * cut_every)
    if (k * cut_every + silent_after < run_for) want(silent_text, k * cut_every + silent_after)
    if (k * cut_every + cut_for >= run_for) break
    want(connected_text, k * cut_every + cut_for)
    want(again_text, k * cut_every + cut_for)
  }
}

function want(text, at) {
  want_text[expected] = text
  want_at[expected++] = at
}

# The line that logging goes on ends with the minute it goes on from.
function fits(text, wanted) { return wanted == again_text ? index(text, wanted) == 1 : text == wanted }

{
  sub(/\r$/, "")
  at = seconds_of(substr($0, 1, 19)) - start_seconds
  text = substr($0, 21)
  if (found < expected && fits(text, want_text[found]) && at >= want_at[found] && at < want_at[found] + notice) {
    ++found
    next
  }
  print "  unexpected: " $0
  ++unexpected
}

END {
  printf "  %d error-log lines about the %d expected cut or reconnection(s)\n", found + 0, expected
  for (i = found; i < expected; ++i)
    printf "  missing: \"%s\" within %d s from %s\n", want_text[i], notice, minute_text(start_seconds + want_at[i])
  exit (unexpected || found < expected) ? 1 : 0
}
