# bash completion for fernhop                                              -*- shell-script -*-

# Identifiers from a JSON list of Fernhop, one in each line.
_fernhop_identifiers() {
    local field=$1
    shift
    fernhop "$@" --json 2>/dev/null | sed -n "s/^ *\"$field\": \"\(.*\)\",\{0,1\}$/\1/p"
}

# Offers the lines that begin with the word at the cursor, quoted, since identifiers may contain anything. ("compgen -W"
# would expand commands in them.)
_fernhop_offer() {
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        if [[ -n $line && $line == "$cur"* ]]; then
            COMPREPLY+=("$(printf '%q' "$line")")
        fi
    done <<<"$1"
}

# The words of the command line without its options; `place` is the number of the word to complete among them.
_fernhop_positionals() {
    local index
    positionals=()
    for ((index = 1; index < cword; index++)); do
        case ${words[index]} in
            --source) ((index++)) ;;
            --source=* | --json | --) ;;
            *) positionals+=("${words[index]}") ;;
        esac
    done
    place=${#positionals[@]}
}

_fernhop_rule_argument() {
    local rules=${positionals[0]} verb=${positionals[1]} kind=
    case $rules-$verb-$place in
        url-rules-add-3 | url-rules-edit-4 | app-rules-set-3) kind=browser ;;
        url-rules-edit-2 | url-rules-remove-2 | dialog-edit-url-rule-2) kind=rule ;;
        app-rules-set-2 | dialog-edit-app-rule-2) kind=app ;;
        app-rules-remove-2) kind=ruled ;;
    esac
    case $kind in
        browser) _fernhop_offer "$(_fernhop_identifiers bundleID browsers)" ;;
        rule) _fernhop_offer "$(_fernhop_identifiers id url-rules list)" ;;
        app) _fernhop_offer "$(_fernhop_identifiers bundleID apps)" ;;
        ruled) _fernhop_offer "$(_fernhop_identifiers sourceBundleID app-rules list)" ;;
    esac
}

_fernhop_options() {
    local options=--help
    case ${positionals[0]}${positionals[1]:+-${positionals[1]}} in
        '') options=$'--help\n--version' ;;
        explain) options=$'--source\n--json\n--help' ;;
        status | apps | browsers | url-rules-list | app-rules-list) options=$'--json\n--help' ;;
    esac
    _fernhop_offer "$options"
}

_fernhop() {
    local cur=${COMP_WORDS[COMP_CWORD]} cword=$COMP_CWORD place
    local -a words=("${COMP_WORDS[@]}") positionals
    COMPREPLY=()
    _fernhop_positionals
    if [[ ${words[cword - 1]} == --source ]]; then
        _fernhop_offer "$(_fernhop_identifiers bundleID apps)"
    elif [[ $cur == -* ]]; then
        _fernhop_options
    elif ((place == 0)); then
        _fernhop_offer "$(printf '%s\n' open explain match status apps browsers url-rules app-rules routing default \
            restore-on-quit export import dialog refresh quit)"
    else
        case ${positionals[0]}-$place in
            url-rules-1) _fernhop_offer $'list\nadd\nedit\nremove' ;;
            app-rules-1) _fernhop_offer $'list\nset\nremove' ;;
            dialog-1) _fernhop_offer $'add-app-rules\nedit-app-rule\nadd-url-rule\nedit-url-rule\nfeedback' ;;
            url-rules-* | app-rules-* | dialog-*) _fernhop_rule_argument ;;
            routing-1 | restore-on-quit-1) _fernhop_offer $'on\noff' ;;
            default-1) _fernhop_offer "$(_fernhop_identifiers bundleID browsers)" ;;
            export-1 | import-1)
                compopt -o filenames 2>/dev/null
                mapfile -t COMPREPLY < <(compgen -f -- "$cur")
                ;;
        esac
    fi
}

complete -F _fernhop fernhop
