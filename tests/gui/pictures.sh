#!/usr/bin/env bash
# Draws every frame of the window, browsing, editing and at fault, and the first dialog, in every look, size
# and scale, and puts those of one look, size and scale on one sheet to be looked at.
#
#     tests/gui/pictures.sh DATABASE FOLDER [BUILD_FOLDER]
#
# Needs Xvfb and ImageMagick; openbox (a window manager) and the gtk3 platform theme are used where there are.
set -euo pipefail

database=$(realpath "$1")
folder=$2
build=$(realpath "${3:-build/dev}")
mkdir -p "$folder"
folder=$(realpath "$folder")
categories=(GEMEVT GEMVDV GEMSDV GEMVEC CSTALM CSTEVT CSTVDV CSTVSV CSTVEC GEMSTT CSTRPT)
looks=${LOOKS:-fusion fusion-dark gtk3 gtk3-dark}
sizes=${SIZES:-800x600 1024x768 1920x1080}
scales=${SCALES:-1 1.5 2}

if [ -z "${PICTURES_DISPLAY:-}" ]; then
    export PICTURES_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 3840x2160x24" "$0" "$@"
fi
if command -v openbox >/dev/null; then
    openbox --sm-disable >/dev/null 2>&1 &
    manager=$!
    trap 'kill "$manager"' EXIT
fi
export QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME="$folder/config" XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-/tmp}

# draw PICTURE OPTION...: one picture in the look at hand
draw() {
    local picture=$1
    shift
    "$build/stelvan-picture" "${options[@]}" "$@" "$database" "$picture" 2>>"$folder/messages.txt" ||
        echo "no picture: $picture"
    sheet+=("$picture")
}

for look in $looks; do
    options=()
    unset GTK_THEME QT_QPA_PLATFORMTHEME
    case $look in
        fusion) ;;
        fusion-dark) options+=(--dark) ;;
        gtk3) options+=(--desktop); export QT_QPA_PLATFORMTHEME=gtk3 GTK_THEME=Adwaita ;;
        gtk3-dark) options+=(--desktop); export QT_QPA_PLATFORMTHEME=gtk3 GTK_THEME=Adwaita:dark ;;
    esac
    for size in $sizes; do
        for scale in $scales; do
            export QT_SCALE_FACTOR=$scale
            sheet=()
            name="$folder/$look-$size-$scale"
            for category in "${categories[@]}"; do
                draw "$name-$category.png" --size "$size" --category "$category"
                draw "$name-$category-edit.png" --size "$size" --category "$category" --edit
            done
            draw "$name-CSTRPT-8.png" --size "$size" --category CSTRPT --record 8 --edit
            draw "$name-CSTALM-fault.png" --size "$size" --category CSTALM --edit --fault
            draw "$name-CSTALM-all.png" --size "$size" --category CSTALM --all
            draw "$name-first.png" --first
            montage "${sheet[@]}" -tile 4x -geometry 1000x1000+6+6 "$name-sheet.jpg"
            echo "$name-sheet.jpg"
        done
    done
done
