# The spans of the run in which no packet reached the program: the gaps of
# more than `min_gap` seconds between delivered packets (delivered.awk's
# output), including before the first and after the last one. One line per
# gap, "FROM TO", in program seconds since the start, within [0, run_for].
#
# With `drop_every` set, only the simulator's connection cuts count: a cut
# starts at k*drop_every of simulator time (k >= 1), lasts `drop_for`, and
# maps to program time through `lead`. The outage runs from the cut (or the
# gap's start, if later) to the first packet after it; a silence before the
# cut was the program's own doing and is not listed. Without `drop_every`,
# every long enough gap is listed whole.
#
# Variables: run_for, min_gap; drop_every, drop_for, lead.

# The start of the first cut that overlaps [from, to], or -1.
function cut_within(from, to,    k, cut) {
  for (k = 1; k * drop_every - lead <= to; ++k) {
    cut = k * drop_every - lead
    if (cut < to && cut + drop_for > from) return cut
  }
  return -1
}

function gap(from, to,    cut) {
  if (from < 0) from = 0
  if (to > run_for) to = run_for
  if (drop_every > 0) {
    cut = cut_within(from, to)
    if (cut < 0) return
    if (cut > from) from = cut
  }
  if (to - from > min_gap) printf "%.3f %.3f\n", from, to
}

$1 < 0 || $1 > run_for { next }
{
  gap(seen ? last : 0, $1)
  last = $1
  seen = 1
}

END { gap(seen ? last : 0, run_for) }
