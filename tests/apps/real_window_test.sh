#!/usr/bin/env bash
# Opens the viewer on a virtual display and uses it as a person would:
#   real_window_test.sh ZOVVIEW SCREEN_PROBE
# Tools, middle button, wheel and cube must change the picture and the shape of the pointer, a drag over the
# edge must set the pointer to the other side, a window left alone must stay as it is, draw no frame and use no
# processor time, a model that is none must end the program with code 2, and a request to end must be met at
# once. Records a session and plays it again. Then interrupts a tour. Nothing here counts on how long anything
# takes: the log of the viewer tells when it has seen an event and is at rest.
set -euo pipefail

zovview=$1
probe=$2
work=$(mktemp -d)
server=
viewer=
cleanup() {
  [ -z "$viewer" ] || kill "$viewer" 2>/dev/null || true
  [ -z "$server" ] || kill "$server" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "FAILED: $*" >&2
  cat "$work/error" >&2 2>/dev/null || true
  exit 1
}

cat >"$work/house.obj" <<'MODEL'
v 0 0 0
v 3 0 0
v 3 0 2
v 0 0 2
v 0 2 0
v 3 2 0
v 3 2 2
v 0 2 2
v 0 3 1
v 3 3 1
f 1 2 3 4
f 1 5 6 2
f 3 7 8 4
f 4 8 9 5 1
f 2 6 10 7 3
f 5 9 10 6
f 8 7 10 9
MODEL

mkdir "$work/screen"
mkfifo "$work/number"
exec 3<>"$work/number"
Xvfb -displayfd 3 -screen 0 1000x700x24 -fbdir "$work/screen" -nolisten tcp -noreset >"$work/xvfb.log" 2>&1 &
server=$!
read -r -t 30 number <&3 || fail "the virtual display does not start: $(cat "$work/xvfb.log")"
export DISPLAY=:$number
unset WAYLAND_DISPLAY SDL_VIDEODRIVER XAUTHORITY

snapshot() { cp "$work/screen/Xvfb_screen0" "$work/$1"; }
differing_bytes() { { cmp -l "$work/$1" "$work/$2" || true; } | wc -l; }

# wait_for WHAT COMMAND...: until the command succeeds, which a busy machine may take long for
wait_for() {
  local what=$1 end=$((SECONDS + 120))
  shift
  until "$@"; do
    kill -0 "$viewer" 2>/dev/null || fail "the viewer has ended: $what"
    [ "$SECONDS" -lt "$end" ] || fail "$what"
    sleep 0.02
  done
}

# Until the viewer has seen all that was done so far, and has come to rest after it: a key that means nothing
# stands behind the rest.
keys_seen() { grep -c ' key-up Pause$' "$work/error"; }
rests_after() { awk -v keys="$1" '/ key-up Pause$/ { ++seen; rest = 0 } / at rest$/ { rest = 1 } END { exit !(seen > keys && rest) }' "$work/error"; }
settle() {
  local seen
  seen=$(keys_seen) || true
  xdotool key --window "$window" Pause
  wait_for "the viewer does not come to rest" rests_after "$seen"
}

processor_time() { awk '{print $14 + $15}' "/proc/$1/stat"; }  # in hundredths of a second

open_viewer() {
  "$zovview" --size 800x600 --no-settings "$@" >"$work/out" 2>"$work/error" &
  viewer=$!
}

open_viewer "$work/house.obj" --log --record "$work/session.txt"
find_window() { window=$(xdotool search --name '^house.obj - zovview$' 2>/dev/null | head -n 1) && [ -n "$window" ]; }
wait_for "no window with the name of the model" find_window
settle

# drag BUTTON FROM_X FROM_Y TO_X TO_Y, in pixels of the window
drag() {
  xdotool mousemove --window "$window" "$2" "$3" mousedown "$1"
  local i
  for i in 1 2 3 4 5; do
    xdotool mousemove --window "$window" $(($2 + ($4 - $2) * i / 5)) $(($3 + ($5 - $3) * i / 5))
  done
  xdotool mouseup "$1" mousemove --window "$window" 700 500
  settle
}

# must_change WHAT: the picture comes to differ from the one before by more than a moved pointer would make it
picture_differs() {
  snapshot after
  [ "$(differing_bytes before after)" -gt 20000 ]
}
must_change() {
  wait_for "$1 changes nothing" picture_differs
  echo "$1: $(differing_bytes before after) bytes of the screen differ"
  mv "$work/after" "$work/before"
}

xdotool mousemove --window "$window" 700 500
settle
# expect_cursor WHAT OPERATOR OTHER: the shape of the pointer comes to be (=), or not to be (!=), an earlier one
cursor_is() { [ "$("$probe" cursor)" "$1" "$2" ]; }
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
xdotool mousemove --window "$window" 780 500 mousedown 1
xdotool mousemove --window "$window" 790 500 mousemove --window "$window" 810 500
wait_for "the pointer is not set to the other side" pointer_at 0 100
xdotool mouseup 1 mousemove --window "$window" 700 500
settle
must_change "an orbit over the edge"

# The cube is at the top right, 102 pixels in a view of 600. The part under the pointer is lit up.
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
xdotool mousemove --window "$window" 746 28
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

echo "not a model" >"$work/broken.glb"
open_viewer "$work/broken.glb"
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
