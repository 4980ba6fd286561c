#!/usr/bin/env bash
# Has what is installed beside the programs judged by those who know its form.
#
#     tests/packaging/checks.sh WHAT SOURCE BUILD
#
# WHAT: desktop_entry, metadata, manual_pages, bash, zsh or fish (the completions). Exit status 77: the
# judge is not installed.
set -euo pipefail

source_dir=$2
texts=$3/texts

# need TOOL: ends as skipped where it is not there.
need() {
    if ! command -v "$1" >/dev/null; then
        echo "Skipped: $1 is not installed."
        exit 77
    fi
}

# silent COMMAND...: fails as well where it says anything.
silent() {
    local said
    said=$("$@" 2>&1) || { echo "$said"; exit 1; }
    if [ -n "$said" ]; then
        echo "$said"
        exit 1
    fi
}

case $1 in
    desktop_entry)
        need desktop-file-validate
        silent desktop-file-validate "$source_dir/packaging/desktop/stelvan.desktop"
        ;;
    metadata)
        need appstreamcli
        appstreamcli validate --no-net --pedantic "$3/org.stelvan.Stelvan.metainfo.xml"
        ;;
    manual_pages)
        need mandoc
        for page in gemdb.1 stelvan.1; do silent mandoc -T lint -W warning "$texts/$page"; done
        ;;
    bash) silent bash -n "$texts/gemdb.bash" ;;
    zsh)
        need zsh
        silent zsh -n "$texts/_gemdb"
        ;;
    fish)
        need fish
        silent fish --no-execute "$texts/gemdb.fish"
        ;;
    *)
        echo "There is no check called $1."
        exit 2
        ;;
esac
