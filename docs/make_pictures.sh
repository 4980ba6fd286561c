#!/usr/bin/env bash
# Draws the pictures of the documents from the running program, over the demo model.
#
#     docs/make_pictures.sh [FOLDER [BUILD_FOLDER]]     FOLDER is docs/pictures where none is given
#
# Needs no display. Where pngquant is installed the pictures are made a third as large.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
folder=$(realpath -m "${1:-docs/pictures}")
build=$(realpath "${2:-build/release}")
mkdir -p "$folder"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$build/gemdb" new --demo "$scratch/wet-bench" >/dev/null
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$scratch
chmod 700 "$scratch"
cd "$scratch" # the pictures show the path by which the model was opened

# draw NAME OPTION...
draw() {
    local picture=$folder/$1.png
    shift
    "$build/stelvan-picture" --size 960x700 "$@" wet-bench/gem.mdb "$picture"
    if command -v pngquant >/dev/null; then
        pngquant --force --skip-if-larger --quality 70-100 --strip --output "$picture" "$picture" ||
            [ $? -ge 98 ] # not worth it: the picture stays as it is
    fi
}

draw first --first
draw window --category CSTRPT --record 18 --edit
draw variable --category CSTVSV --record 8 --edit --fault
draw event --category CSTEVT --record 8 --edit
draw find --category CSTVSV --record 34 --find sc1temp
draw settings --category GEMSTT --record 3
