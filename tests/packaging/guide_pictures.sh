#!/usr/bin/env bash
# The pictures of the documents are those that their script draws from the running program, and each is shown
# somewhere.
#
#     tests/packaging/guide_pictures.sh SOURCE BUILD
set -euo pipefail

source_dir=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$source_dir/docs/make_pictures.sh" "$scratch" "$2"
diff <(ls "$source_dir/docs/pictures") <(ls "$scratch")
for picture in "$scratch"/*; do
    name=$(basename "$picture")
    if ! grep -qr --include='*.md' "pictures/$name)" "$source_dir/docs" "$source_dir/README.md"; then
        echo "No document shows $name."
        exit 1
    fi
done
