#!/usr/bin/env bash
# Opens the viewer on a virtual display and uses it as a person would:
#   real_window_test.sh ZOVVIEW
# Drags must change the picture, a window left alone must stay as it is and use no processor time, a model
# that is none must end the program with code 2, and a request to end must be met at once. Then interrupts a
# tour.
set -euo pipefail

zovview=$1
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

# Until the screen has not changed for half a second.
settle() {
  local previous=none current tries
  for tries in $(seq 60); do
    sleep 0.5
    current=$(md5sum <"$work/screen/Xvfb_screen0")
    [ "$current" = "$previous" ] && return
    previous=$current
  done
  fail "the picture does not come to rest"
}

processor_time() { awk '{print $14 + $15}' "/proc/$1/stat"; }  # in hundredths of a second

open_viewer() {
  "$zovview" --size 800x600 "$@" >"$work/out" 2>"$work/error" &
  viewer=$!
}

open_viewer "$work/house.obj"
for tries in $(seq 60); do
  window=$(xdotool search --name '^house.obj - zovview$' 2>/dev/null | head -n 1) && [ -n "$window" ] && break
  kill -0 "$viewer" 2>/dev/null || fail "the viewer has ended"
  sleep 0.5
done
[ -n "${window:-}" ] || fail "no window with the name of the model"
settle

# drag BUTTON FROM_X FROM_Y TO_X TO_Y, in pixels of the window
drag() {
  xdotool mousemove --window "$window" "$2" "$3" mousedown "$1"
  local i
  for i in 1 2 3 4 5; do
    xdotool mousemove --window "$window" $(($2 + ($4 - $2) * i / 5)) $(($3 + ($5 - $3) * i / 5))
    sleep 0.03
  done
  xdotool mouseup "$1" mousemove --window "$window" 700 500
  settle
}

# must_change WHAT: the picture differs from the one before by more than a moved pointer would make it
must_change() {
  snapshot after
  local count
  count=$(differing_bytes before after)
  echo "$1: $count bytes of the screen differ"
  [ "$count" -gt 20000 ] || fail "$1 changes nothing"
  mv "$work/after" "$work/before"
}

xdotool mousemove --window "$window" 700 500
settle
snapshot before
drag 1 400 300 550 300
must_change "a left drag"
drag 2 400 300 480 340
must_change "a middle drag"
xdotool key --window "$window" z
drag 1 400 300 400 260
must_change "a drag of the zoom tool"
xdotool key --window "$window" o
settle
xdotool mousemove --window "$window" 400 300 click 4 click 4 mousemove --window "$window" 700 500
settle
must_change "the wheel"
xdotool key --window "$window" p
settle
must_change "the key of the projection"
xdotool windowsize "$window" 700 500
settle
must_change "a change of size"

before_rest=$(processor_time "$viewer")
sleep 5
used=$(($(processor_time "$viewer") - before_rest))
echo "left alone for 5 s: $used hundredths of a second of processor time"
[ "$used" -le 2 ] || fail "the viewer does not rest"
snapshot after
[ "$(differing_bytes before after)" -eq 0 ] || fail "the picture changes by itself"

kill -TERM "$viewer"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 0 ] || fail "a request to end ends the viewer with code $code"

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
for tries in $(seq 300); do
  [ -e "$work/tours/.tour.partial/001.png" ] && break
  sleep 0.1
done
kill -TERM "$viewer"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 130 ] || fail "an interrupted tour ends with code $code"
[ -z "$(ls -A "$work/tours")" ] || fail "an interrupted tour leaves $(ls -A "$work/tours")"
echo "passed"
