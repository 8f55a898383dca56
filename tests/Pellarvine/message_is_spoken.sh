#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# message_is_spoken.sh PROGRAM: whether the Orca screen reader says what a message says, by Orca's
# log. On an X server, a session bus and an accessibility bus of its own.
set -euo pipefail

for command in orca Xvfb dbus-run-session openbox; do
  if ! command -v "$command" > /dev/null; then
    echo "Skipped: $command is not installed."
    exit 77
  fi
done

if [ "${1:-}" != --in-session ]; then
  folder=$(mktemp -d)
  trap 'rm -rf "$folder"' EXIT
  export HOME=$folder XDG_RUNTIME_DIR=$folder XDG_CONFIG_HOME=$folder XDG_DATA_HOME=$folder
  chmod 700 "$folder"
  unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS
  dbus-run-session -- "$0" --in-session "$1"
  exit
fi
program=$2
log=$HOME/orca.log
touch "$log"
# Orca waits for the speech that it has asked for. Without a sound device that of a usual voice never
# ends.
mkdir "$HOME/speech-dispatcher"
printf '%s\n' 'AddModule "dummy" "sd_dummy" ""' 'DefaultModule dummy' \
  > "$HOME/speech-dispatcher/speechd.conf"

own=()
# Waits for their ends: Orca does not start while another one is still running.
trap 'kill "${own[@]}" 2> /dev/null || true; wait' EXIT
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3> "$HOME/display" 2> /dev/null &
own+=($!)

# wait_until COMMAND...
wait_until() {
  for _ in {1..300}; do
    if "$@"; then
      return 0
    fi
    sleep 0.1
  done
  return 1
}

speaks() {
  grep -q "SPEECH OUTPUT: .*$1" "$log"
}

fail() {
  echo "$1; Orca said:"
  grep "SPEECH OUTPUT" "$log" || echo "nothing"
  exit 1
}

wait_until test -s "$HOME/display" || fail "The X server did not start"
DISPLAY=:$(cat "$HOME/display")
export DISPLAY QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
openbox 2> /dev/null &
own+=($!)
# Orca's log as it comes, and not a block at a time.
mkdir "$HOME/python"
cat > "$HOME/python/sitecustomize.py" << 'EOF'
import builtins
usual = builtins.open
builtins.open = lambda file, mode='r', buffering=-1, *more, **named: usual(
    file, mode, 1 if str(file).endswith('orca.log') else buffering, *more, **named)
EOF
PYTHONPATH=$HOME/python orca --debug-file="$log" > "$HOME/orca.output" 2>&1 &
own+=($!)
wait_until speaks "Screen reader on" || fail "Orca did not start"

mkfifo "$HOME/messages"
"$program" < "$HOME/messages" &
own+=($!)
exec 4> "$HOME/messages"
wait_until speaks "Folder of notes" || fail "Orca did not find the window"

for message in "The first note could not be deleted" "Nor could the second"; do
  echo "$message" >&4
  wait_until speaks "$message" || fail "A message was not spoken"
done
