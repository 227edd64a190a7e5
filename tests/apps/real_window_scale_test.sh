#!/usr/bin/env bash
# Changes the scale of a desktop while the viewer runs on a virtual display:
#   real_window_scale_test.sh ZOVVIEW SCREEN_PROBE
# The window opens at the scale that the settings manager of the display tells, follows it as it changes, without
# being touched, and survives broken settings and a manager that goes, comes back, or was never there.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/real_window_lib.sh"
trap '[ -z "$manager" ] || kill "$manager" || true; cleanup' EXIT

manager=

# In dots of an inch times 1024.
ONE=98304 ONE_AND_A_HALF=147456 TWO=196608

begin_manager() {
  mkfifo "$work/settings.$1" "$work/told.$1"
  exec 5<>"$work/told.$1"
  "$probe" settings <"$work/settings.$1" >&5 &
  manager=$!
  exec 4>"$work/settings.$1"
}
end_manager() {
  kill "$manager"
  exec 4>&-
  wait "$manager" 2>/dev/null || true
  manager=
}
tell() {
  echo "$1" >&4
  read -r -t 60 <&5 || fail "the settings are not told"
}

window_is() {
  xdotool getwindowgeometry --shell "$window" >"$work/geometry"
  grep -qx "WIDTH=$1" "$work/geometry" && grep -qx "HEIGHT=$2" "$work/geometry"
}
resizes() { grep -c ' resize ' "$work/error" || true; }

# must_follow WHAT: the picture changes and the window comes to rest
must_follow() {
  must_change "$1"
  settle
  snapshot before
}

begin_manager first
tell $ONE_AND_A_HALF
"$probe" resources "Xft.dpi:	288" # the manager counts
open_viewer "$work/house.obj" --size 400x300 --log --no-settings
wait_for "no window with the name of the model" find_window
settle
wait_for "the window is not as large as the settings of the desktop say" window_is 600 450
snapshot before

tell $ONE
must_follow "a smaller scale"
tell $TWO
must_follow "a larger scale"

before=$(resizes)
tell $TWO
settle
[ "$(resizes)" = "$before" ] || fail "the same scale once more changes something"

tell broken
must_follow "broken settings, whose place is taken by the resources,"
"$probe" resources "Xft.dpi:	96"
must_follow "other resources"
tell $TWO
must_follow "settings that are whole again"
end_manager
must_follow "a manager that has gone"
begin_manager second
tell $ONE_AND_A_HALF
must_follow "a manager that has come"
window_is 600 450 || fail "the window is another size"

kill -TERM "$viewer"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 0 ] || fail "a request to end ends the viewer with code $code"
end_manager
echo "passed"
