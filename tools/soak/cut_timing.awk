# How the program's clock matches the simulator's: for each connection loss
# in the program's error log, how many seconds after the simulator's cut it
# was logged (cuts at k*drop_every of simulator time, mapped to program time
# through `lead`). A few seconds is the logging's own delay; much more means
# the clocks were matched badly and the outages are misplaced.
#
# Variables: start ("YYYY-MM-DD HH:MM:SS"), drop_every, lead.

BEGIN { start_seconds = seconds_of(start) }

/ lost: / {
  at = seconds_of(substr($0, 1, 19)) - start_seconds
  k = int((at + lead) / drop_every + 0.5)
  text = text sprintf("%s%+.0f s", text == "" ? "" : ", ", at - (k * drop_every - lead))
}

END { if (text != "") print "  the losses were logged at " text " from the cuts" }
