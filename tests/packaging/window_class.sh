#!/usr/bin/env bash
# Opens the window on a display of its own and asks for its class, by which a desktop finds the icon and the
# entry that a window belongs to.
#
#     tests/packaging/window_class.sh SOURCE BUILD
#
# Exit status 77: no display to be had, or nobody to ask.
set -euo pipefail

source_dir=$1
build=$2
if ! command -v xvfb-run >/dev/null || ! command -v xwininfo >/dev/null; then
    echo "Skipped: needs xvfb-run and xwininfo."
    exit 77
fi
if [ -z "${WINDOW_CLASS_DISPLAY:-}" ]; then
    WINDOW_CLASS_DISPLAY=1 exec xvfb-run -a "$0" "$@"
fi

HOME=$(mktemp -d)
export HOME QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$HOME
unset XDG_CONFIG_HOME XDG_DATA_HOME
"$build/gemdb" new "$HOME/model" >/dev/null
"$build/stelvan" "$HOME/model/gem.mdb" &
program=$!
trap 'kill "$program"; wait "$program" || true; rm -rf "$HOME"' EXIT

wanted=$(sed -n 's/^StartupWMClass=//p' "$source_dir/packaging/desktop/stelvan.desktop")
for _ in $(seq 100); do
    windows=$(xwininfo -root -tree)
    if grep -q "\"Stelvan\": (\"stelvan\" \"$wanted\")" <<<"$windows"; then exit 0; fi
    sleep 0.2
done
echo "No window of the class $wanted:"
echo "$windows"
exit 1
