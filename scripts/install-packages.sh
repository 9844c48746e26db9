#!/bin/bash
# Installs the packages in the lists scripts/packages/NAME.txt on Debian and systems based on it. Does not call the package
# manager if everything is installed. On other systems it prints the list, and the build continues with what is there.
#
#     scripts/install-packages.sh build test demo
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
readonly attempts=3

listed() {
    local list
    for list in "$@"; do
        sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "scripts/packages/$list.txt"
    done | LC_ALL=C sort -u
}

installed() {
    [[ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

satisfied() {
    local name names
    IFS='|' read -ra names <<<"${1%\?}"
    for name in "${names[@]}"; do
        if installed "$name"; then
            return 0
        fi
    done
    return 1
}

available() {
    [[ -n "$(apt-cache madison "$1" 2>/dev/null)" ]]
}

# The package to install for an entry; nothing for an optional one that this system does not offer.
chosen() {
    local name names
    IFS='|' read -ra names <<<"${1%\?}"
    for name in "${names[@]}"; do
        if available "$name"; then
            echo "$name"
            return
        fi
    done
    [[ "$1" == *\? ]] || echo "${names[0]}"
}

privileged() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    elif [[ -t 0 ]]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

retried() {
    local attempt
    for ((attempt = 1; attempt <= attempts; ++attempt)); do
        if "$@"; then
            return 0
        fi
        echo "install-packages: attempt $attempt of $attempts failed: $*" >&2
        sleep $((attempt * 5))
    done
    return 1
}

apt() {
    privileged env DEBIAN_FRONTEND=noninteractive apt-get -y -q -o Acquire::Retries=3 -o DPkg::Lock::Timeout=600 "$@" \
        </dev/null
}

missing() {
    local entry
    while read -r entry; do
        satisfied "$entry" || echo "$entry"
    done < <(listed "$@")
}

# Whether any of the entries must be installed. On a machine without package lists, missing optional entries do not count,
# since the others are missing there too.
worthAsking() {
    local entry
    for entry in "$@"; do
        if [[ "$entry" != *\? || -n "$(chosen "$entry")" ]]; then
            return 0
        fi
    done
    return 1
}

main() {
    if ! command -v apt-get dpkg-query >/dev/null; then
        echo "This system is not based on Debian. Please install these packages (with Debian's names):" >&2
        listed "$@" | tr '\n' ' ' | fold -s -w 100 >&2
        echo >&2
        return 0
    fi

    local entries entry wanted=()
    mapfile -t entries < <(missing "$@")
    if ! worthAsking "${entries[@]}"; then
        return 0
    fi
    if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
        echo "Packages are missing, and there is no sudo to install them. As root, please run:" >&2
        echo "    apt-get install --no-install-recommends $(printf '%s\n' "${entries[@]%\?}" | sed 's/|.*//' | tr '\n' ' ')" >&2
        return 1
    fi

    # An unreadable package source is no reason to stop: the others may have all packages.
    retried apt update || echo "install-packages: continuing with the existing package lists" >&2
    for entry in "${entries[@]}"; do
        mapfile -t -O "${#wanted[@]}" wanted < <(chosen "$entry")
    done
    if [[ ${#wanted[@]} -gt 0 ]]; then
        retried apt install --no-install-recommends "${wanted[@]}"
    fi
}

main "$@"
