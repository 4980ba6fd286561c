#!/usr/bin/env bash
# Completes command lines of gemdb as a shell does, with the completions as they are installed.
#
#     tests/packaging/complete.sh bash|fish BUILD MODEL
#
# Exit status 77: the shell is not installed.
set -euo pipefail

shell=$1
build=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$3" "$folder/gem.mdb"
model=$folder/gem.mdb
PATH=$build:$PATH

# in_bash WORD...: what bash offers for the last word of `gemdb WORD...`, one a line.
in_bash() {
    # shellcheck source=/dev/null
    source "$build/texts/gemdb.bash"
    COMP_WORDS=(gemdb "$@")
    COMP_CWORD=$#
    $(complete -p gemdb | sed -E 's/.*-F ([^ ]+) .*/\1/') # the function that bash would call
    printf '%s\n' "${COMPREPLY[@]}"
}

# in_fish WORD...: the same of fish, without its descriptions.
in_fish() {
    fish --no-config -c "source '$build/texts/gemdb.fish'; complete -C 'gemdb $*'" | cut -f1
}

# offers EXPECTED WORD...: EXPECTED is the offers in the order of the alphabet, parted by blanks.
offers() {
    local expected=$1 offered
    shift
    offered=$("in_$shell" "$@" | LC_ALL=C sort | tr '\n' ' ')
    if [ "$offered" != "$expected " ]; then
        echo "gemdb $*: offered '$offered' instead of '$expected'"
        exit 1
    fi
}

if ! command -v "$shell" >/dev/null; then
    echo "Skipped: $shell is not installed."
    exit 77
fi
offers 'check' ch
offers '--json' check "$model" --j
offers 'secs_alarm' dump "$model" secs_a
offers 'secs_cusevent secs_cusvar' dump "$model" secs_cus
offers "$model" check "$folder/g"
