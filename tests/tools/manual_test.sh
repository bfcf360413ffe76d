#!/usr/bin/env bash
# Checks the manual pages with mandoc and man, and has bash, zsh and fish complete command lines with the scripts that
# were built. usage: manual_test.sh PROGRAM MANUAL_FOLDER VIEWER_PAGE
set -euo pipefail
program=$1
manual=$2
viewer_page=$3
failures=0

# expect WHAT ANSWER WORD…: each word is a line of the answer.
expect() {
    local what=$1 answer=$2 word
    shift 2
    for word in "$@"; do
        if ! grep -qxF -- "$word" <<<"$answer"; then
            echo "$what: '$word' is not among: ${answer//$'\n'/ }"
            failures=$((failures + 1))
        fi
    done
}

# refuse WHAT ANSWER WORD…: no word is a line of the answer.
refuse() {
    local what=$1 answer=$2 word
    shift 2
    for word in "$@"; do
        if grep -qxF -- "$word" <<<"$answer"; then
            echo "$what: '$word' is among: ${answer//$'\n'/ }"
            failures=$((failures + 1))
        fi
    done
}

has() { command -v "$1" >/dev/null || { echo "skipped: there is no $1"; return 1; }; }

for page in "$manual/sorvane.1" "$viewer_page"; do
    for lint in "mandoc -Tlint" "man --warnings -l"; do
        has "${lint%% *}" || continue
        complaints=$(MANPAGER="cat" $lint "$page" 2>&1 >/dev/null) || true
        [ "${lint%% *}" = man ] || complaints+=$($lint "$page") || true
        [ -z "$complaints" ] || { echo "$lint: $complaints"; failures=$((failures + 1)); }
    done
done

bash_completes() {
    bash -c '. "$1/sorvane.bash"; COMP_WORDS=("${@:2}"); COMP_CWORD=$(($# - 2)); _sorvane
        printf "%s\n" "${COMPREPLY[@]}"' bash "$manual" "$@"
}
expect "bash, sub-commands" "$(bash_completes sorvane "")" demo export compare --help --version
refuse "bash, sub-commands" "$(bash_completes sorvane "")" manual
expect "bash, begun sub-command" "$(bash_completes sorvane exp)" export
expect "bash, options" "$(bash_completes sorvane export --)" --output --format --unit --origin --help
refuse "bash, options" "$(bash_completes sorvane export --f)" --output
expect "bash, values" "$(bash_completes sorvane export --format "")" csv kml czml glb
expect "bash, values after =" "$(bash_completes sorvane export --format = c)" csv czml
expect "bash, files" "$(bash_completes sorvane export "")" ""

if has zsh; then
    # A shell in a pseudo-terminal, with the answers written out by the function that would list them. Keys are sent
    # once its line editor says that it reads them, and nothing more before it has answered: what comes early goes
    # through the terminal's own editing, or keeps the answer away. The terminal may echo: no command holds a mark that
    # is waited for.
    zsh_completes() {
        zsh -f -c '
            zmodload zsh/zpty
            zpty shell zsh -f -i
            zpty -w shell "PS1= RPS1=; stty -echo; fpath=($1 \$fpath); autoload -U compinit; compinit -u -D"
            zpty -w shell "compadd() {
                [[ \${@[(i)-(O|A|D)]} -le \$# ]] && { builtin compadd \"\$@\"; return }
                local -a found; builtin compadd -O found \"\$@\"; print -rl -- \"<\${^found}>\"
                builtin compadd \"\$@\" }"
            zpty -w shell "answer() { zle complete-word; print ANSW\"\"ERED }; zle -N answer; bindkey \"^I\" answer"
            zpty -w shell "zle-line-init() { print REA\"\"DY }; zle -N zle-line-init"
            zpty -r -m shell line "*READY*"
            zpty -n -w shell "$2"$'"'\\t'"'
            zpty -r -m shell line "*ANSWERED*"
            print -r -- "$line"' zsh "$manual" "$1" | tr -d '\r' | sed -n 's/.*<\(.*\)>.*/\1/p' | tr ' ' '\n'
    }
    zsh -f -n "$manual/_sorvane" || failures=$((failures + 1))
    expect "zsh, sub-commands" "$(zsh_completes "sorvane ")" demo export compare
    refuse "zsh, sub-commands" "$(zsh_completes "sorvane ")" manual
    expect "zsh, options" "$(zsh_completes "sorvane export --")" --output --format --unit
    expect "zsh, values" "$(zsh_completes "sorvane export --format ")" csv kml czml
fi

if has fish; then
    # shellcheck disable=SC2016 # fish expands it
    fish_completes() {
        HOME=$(mktemp -d) fish --no-config -c 'source $argv[1]/sorvane.fish; complete -C $argv[2]' "$manual" "$1" |
            cut -f 1
    }
    expect "fish, sub-commands" "$(fish_completes "sorvane ")" demo export compare
    refuse "fish, sub-commands" "$(fish_completes "sorvane ")" manual
    expect "fish, options" "$(fish_completes "sorvane export --")" --output --format --unit
    expect "fish, values" "$(fish_completes "sorvane export --format ")" csv kml czml
    refuse "fish, other options" "$(fish_completes "sorvane demo --")" --format
fi

"$program" manual man | grep -q '^\.TH SORVANE 1 ' || failures=$((failures + 1))
[ $failures -eq 0 ]
