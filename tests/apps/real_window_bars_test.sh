#!/usr/bin/env bash
# Uses the navigation bar of the viewer on a virtual display as a person would:
#   real_window_bars_test.sh ZOVVIEW SCREEN_PROBE
# Drags it by its grip to each of the four edges, and there clicks each of its items: what the item shows must come
# of it. Where the bar stands must be kept. Closes it, and brings it back by its key.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/real_window_lib.sh"

export XDG_CONFIG_HOME="$work/config"
kept="$XDG_CONFIG_HOME/zovview/settings.json"
mkdir -p "$(dirname "$kept")"
echo '{"version": 1, "welcomeSeen": true}' >"$kept"

open_viewer "$work/house.obj" --log
wait_for "no window with the name of the model" find_window
xdotool key --window "$window" shift+F1 # the panel is in the way of the left edge
settle
xdotool mousemove --window "$window" 400 300
settle
snapshot before

# In pixels of the window, from the top left: the middle of the strip at each edge, which is 36 pixels thick and
# 198 long, its grip at the upper or left end. A menu of the cube's size does not reach the middle of an edge.
declare -A middle=([right]="782 299" [left]="18 299" [top]="400 17" [bottom]="400 581")
# From the middle of an upright strip to its items, and of one that lies.
declare -A upright=([grip]="-5 -89" [close]="9 -90" [disc]="0 -64" [arrow]="0 -45" [home]="0 -22" [fit]="0 6"
  [projection]="0 34" [storyboard]="0 66" [menu]="9 90")
declare -A lying=([grip]="-89 0" [close]="90 -9" [disc]="-64 0" [arrow]="-45 0" [home]="-22 0" [fit]="6 0"
  [projection]="34 0" [storyboard]="66 0" [menu]="90 9")

# place_of EDGE ITEM: sets x and y
place_of() {
  local offset
  case $1 in
    left | right) offset=${upright[$2]} ;;
    *) offset=${lying[$2]} ;;
  esac
  read -r x y <<<"${middle[$1]}"
  x=$((x + ${offset% *})) y=$((y + ${offset#* }))
}

# click_item EDGE ITEM: and away from the bar again
click_item() {
  place_of "$1" "$2"
  xdotool mousemove --window "$window" "$x" "$y"
  settle
  xdotool click 1
  settle
  xdotool mousemove --window "$window" 400 300
  settle
}

# item_must_change EDGE ITEM WHAT
item_must_change() {
  click_item "$1" "$2"
  must_change "$3, at the $1,"
}

close_menu() {
  xdotool key --window "$window" Escape
  settle
  must_change "a menu that closes"
}

is_kept_at() { grep -A 3 '"navigationBar"' "$kept" | grep -q "\"at\": \"$1\""; }

# drag_bar FROM TO X Y: the grip to a place, so that the middle of the strip docks in the middle of the edge
drag_bar() {
  place_of "$1" grip
  drag 1 "$x" "$y" "$3" "$4"
  wait_for "the bar does not dock at the $2" is_kept_at "$2"
  xdotool mousemove --window "$window" 400 300
  settle
  snapshot before
}

click_all() {
  local edge=$1
  item_must_change "$edge" projection "a click on the projection"
  item_must_change "$edge" projection "another click on the projection"
  drag 1 300 400 400 400
  xdotool mousemove --window "$window" 400 300
  settle
  snapshot before
  item_must_change "$edge" home "a click on home"
  xdotool mousemove --window "$window" 400 300 click 5 click 5 click 5
  settle
  snapshot before
  item_must_change "$edge" fit "a click on fit"
  item_must_change "$edge" arrow "a click on the arrow, which opens a menu,"
  close_menu
  item_must_change "$edge" menu "a click on the menu of the bar"
  close_menu
  item_must_change "$edge" disc "a click on the disc, which opens it,"
  item_must_change "$edge" disc "a click on the disc, which closes it,"
  item_must_change "$edge" storyboard "a click on the storyboard, which opens it,"
  item_must_change "$edge" storyboard "a click on the storyboard, which closes it,"
}

click_all right
drag_bar right left 20 210
click_all left
drag_bar left top 395 10
click_all top
drag_bar top bottom 311 589
click_all bottom
drag_bar bottom right 711 299
click_all right

is_hidden() { grep -A 3 '"navigationBar"' "$kept" | grep -q '"shown": false'; }
click_item right close
wait_for "the bar does not close" is_hidden
xdotool key --window "$window" b
settle
wait_for "the key does not bring the bar back" is_kept_at right
is_hidden && fail "the bar stays hidden"

kill -TERM "$viewer"
code=0
wait "$viewer" || code=$?
viewer=
[ "$code" -eq 0 ] || fail "a request to end ends the viewer with code $code"
echo "passed"
