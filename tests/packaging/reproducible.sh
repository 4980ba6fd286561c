#!/usr/bin/env bash
# Makes the packages of one commit twice, in two folders of different names, and compares their bytes.
# Takes as long as two builds from nothing.
#
#     tests/packaging/reproducible.sh [FOLDER]
#
# The two sources and what was made of them stay in FOLDER, where one is given.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
if [ $# -gt 0 ]; then
    mkdir -p "$1"
    folder=$(cd "$1" && pwd)
else
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
fi
commit=$(git -C "$root" rev-parse HEAD)

# make_in NAME: the packages of the commit, built in FOLDER/NAME.
make_in() {
    rm -rf "${folder:?}/$1"
    git clone -q --no-hardlinks "$root" "$folder/$1"
    git -C "$folder/$1" checkout -q "$commit"
    (cd "$folder/$1" && ./package)
}

# sums NAME: of what was made there.
sums() {
    (cd "$folder/$1/build/package" && sha256sum -- *.deb *.tar.xz)
}

make_in one
make_in "another-folder-with-a-longer-name"
first=$(sums one)
second=$(sums "another-folder-with-a-longer-name")
echo "$first"
if [ "$first" != "$second" ]; then
    echo "Not the same in the other folder:"
    echo "$second"
    exit 1
fi
echo "The same bytes twice."
