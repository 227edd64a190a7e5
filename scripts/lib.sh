# What the scripts share. Sourced by each, with bash.
set -euo pipefail

ZOV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$ZOV_ROOT"

zov_say() { printf '== %s\n' "$*"; }

zov_die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# zov_setup PURPOSE...: Debian packages for these purposes; see packages.txt.
zov_setup() { "$ZOV_ROOT/scripts/setup" "$@"; }

# Runs a command and shows its output only when it fails. zov_quietly LOG COMMAND...
zov_quietly() {
  local log=$1
  shift
  mkdir -p "$(dirname "$log")"
  "$@" >"$log" 2>&1 || {
    tail -n 60 "$log" >&2
    zov_die "failed: $* (all of it in $log)"
  }
}

# zov_build PRESET [TARGET...]: configures and builds into build/PRESET. Without targets, everything.
zov_build() {
  local preset=$1
  shift
  zov_quietly "build/$preset.configure.log" cmake --preset "$preset"
  cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
