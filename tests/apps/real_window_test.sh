#!/usr/bin/env bash
# Opens the viewer on a virtual display and uses it as a person would:
#   real_window_test.sh ZOVVIEW SCREEN_PROBE
# Tools, middle button, wheel and cube must change the picture and the shape of the pointer, a drag over the
# edge must set the pointer to the other side, a window left alone must stay as it is, draw no frame and use no
# processor time, a model that is none must end the program with code 2, and a request to end must be met at
# once. Records a session and plays it again. Then interrupts a tour.
set -euo pipefail

source "$(dirname "${BASH_SOURCE[0]}")/real_window_lib.sh"

open_viewer --no-settings "$work/house.obj" --log --record "$work/session.txt"
wait_for "no window with the name of the model" find_window
settle

xdotool mousemove --window "$window" 700 500
settle
# expect_cursor WHAT OPERATOR OTHER: the shape of the pointer comes to be (=), or not to be (!=), an earlier one
cursor_is() { test "$("$probe" cursor)" "$1" "$2"; }
expect_cursor() { wait_for "the shape of the pointer: $1" cursor_is "$2" "$3"; }
pointer_x() { "$probe" pointer | cut -d' ' -f1; }

snapshot before
orbit_cursor=$("$probe" cursor)
drag 1 400 300 550 300
must_change "a left drag, which orbits,"
drag 2 400 300 480 340
must_change "a middle drag, which pans,"
expect_cursor "the orbit again after the pan" = "$orbit_cursor"
xdotool key --window "$window" z
settle
expect_cursor "the zoom tool has its own" != "$orbit_cursor"
drag 1 400 300 400 260
must_change "a drag of the zoom tool"
xdotool mousemove --window "$window" 400 300 click 4 click 4 mousemove --window "$window" 700 500
settle
must_change "the wheel"

# A walk: the press takes the pointer to its start, and its shape tells where it goes.
xdotool key --window "$window" w
settle
walk_cursor=$("$probe" cursor)
expect_cursor "the walk has its own" != "$orbit_cursor"
xdotool mousemove --window "$window" 600 300 mousedown 1
left_edge=$(xdotool getwindowgeometry "$window" | sed -n 's/.*Position: \(-\{0,1\}[0-9]*\),.*/\1/p')
# pointer_at LEAST MOST: from the left edge of the window
pointer_at() { local x=$(($(pointer_x) - left_edge)); [ "$x" -ge "$1" ] && [ "$x" -le "$2" ]; }
wait_for "a walk does not begin at its start" pointer_at 400 400
xdotool mousemove --window "$window" 400 400
expect_cursor "going forward looks otherwise" != "$walk_cursor"
must_change "a walk"
xdotool mouseup 1 mousemove --window "$window" 700 500
settle
snapshot before

# Over the right edge the pointer comes in again on the left, and the orbit goes on.
xdotool key --window "$window" o
settle
xdotool mousemove --window "$window" 690 500 mousedown 1 # near the navigation bar the tools stand back
xdotool mousemove --window "$window" 790 500 mousemove --window "$window" 810 500
wait_for "the pointer is not set to the other side" pointer_at 0 100
xdotool mouseup 1 mousemove --window "$window" 700 500
settle
must_change "an orbit over the edge"

# The cube is at the top right, some 80 pixels of a region of 180. The part under the pointer is lit up.
xdotool key --window "$window" Home
settle
screen_x=$((left_edge + 800 - 120))
screen_y=$(($(xdotool getwindowgeometry "$window" | sed -n 's/.*Position: -\{0,1\}[0-9]*,\(-\{0,1\}[0-9]*\).*/\1/p')))
plain=$("$probe" pixels "$screen_x" "$screen_y" 120 120)
xdotool mousemove --window "$window" 735 60
settle
cp "$work/screen/Xvfb_screen0" "$work/hover"
lit=$("$probe" pixels "$screen_x" "$screen_y" 120 120)
echo "bluish pixels of the cube: $plain without the pointer, $lit with it"
[ "$lit" -gt $((plain + 40)) ] || fail "the part under the pointer is not lit up"
expect_cursor "over the cube it is another" != "$orbit_cursor"
snapshot before
xdotool mousemove --window "$window" 738 36
settle
xdotool click 1
settle
xdotool mousemove --window "$window" 700 500
settle
must_change "a click on the top of the cube"
xdotool key --window "$window" p
settle
must_change "the key of the projection"
xdotool windowsize "$window" 700 500
settle
must_change "a change of size"

# The one span of time: at rest nothing comes that could be waited for.
before_rest=$(processor_time "$viewer")
frames_before=$(grep -c ' frame ' "$work/error")
sleep 10
used=$(($(processor_time "$viewer") - before_rest))
frames=$(($(grep -c ' frame ' "$work/error") - frames_before))
echo "left alone for 10 s: $frames frames, $used hundredths of a second of processor time"
[ "$frames_before" -gt 20 ] || fail "frames are not counted"
[ "$frames" -eq 0 ] || fail "the viewer draws while nothing happens"
[ "$used" -le 2 ] || fail "the viewer does not rest"
snapshot after
[ "$(differing_bytes before after)" -eq 0 ] || fail "the picture changes by itself"

kill -TERM "$viewer"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 0 ] || fail "a request to end ends the viewer with code $code"

# What was done plays again, twice the same, and ends from above, as the click on the cube left it.
"$zovview" --replay "$work/session.txt" >"$work/replay1" 2>"$work/error" || fail "the session does not play"
"$zovview" --replay "$work/session.txt" >"$work/replay2" 2>"$work/error" || fail "the session does not play"
cmp "$work/replay1" "$work/replay2" || fail "the session plays differently"
awk 'END {  # the model stands on y
  across = sqrt(($2 - $5) ^ 2 + ($4 - $7) ^ 2)
  exit !(NR > 30 && across < 0.000001 && $3 > $6)
}' "$work/replay1" || fail "the session ends elsewhere: $(tail -n 1 "$work/replay1")"

# A window is no larger than the display.
open_viewer --no-settings --size 3000x2000 "$work/house.obj" --log
wait_for "no window on a display that is smaller than it" find_window
settle
size=$(xdotool getwindowgeometry "$window" | sed -n 's/.*Geometry: //p')
[ "$size" = 1000x700 ] || fail "on a display of 1000x700 the window has $size"
kill -TERM "$viewer"
wait "$viewer" || fail "a window as large as the display ends with code $?"
viewer=

echo "not a model" >"$work/broken.glb"
open_viewer --no-settings "$work/broken.glb"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 2 ] || fail "a broken model ends the viewer with code $code"
[ "$(wc -l <"$work/error")" -eq 1 ] || fail "a broken model is not told in one line"

# A tour that is interrupted leaves nothing behind.
mkdir "$work/tours"
"$zovview" "$work/house.obj" --headless --out "$work/tours/tour" >"$work/out" 2>"$work/error" &
viewer=$!
wait_for "the tour does not begin" test -e "$work/tours/.tour.partial/001.png"
kill -TERM "$viewer"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 130 ] || fail "an interrupted tour ends with code $code"
[ -z "$(ls -A "$work/tours")" ] || fail "an interrupted tour leaves $(ls -A "$work/tours")"
echo "passed"
