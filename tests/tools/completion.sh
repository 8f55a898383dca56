#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Completes some command lines as bash would, with the completion file named in the first argument.
set -euo pipefail
# shellcheck source=/dev/null
source "$1"

# expect LINE WORD...: completing the last word of LINE offers each WORD.
expect() {
    read -ra COMP_WORDS <<<"$1"
    [[ $1 == *' ' ]] && COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _pellarvine
    local word
    for word in "${@:2}"; do
        [[ " ${COMPREPLY[*]} " == *" $word "* ]] || {
            echo "'$1' offers '${COMPREPLY[*]}', not '$word'"
            exit 1
        }
    done
}

expect 'pellarvine ' seal open digest color markup check new --help --version
expect 'pellarvine se' seal
expect 'pellarvine seal --' --passphrase-file --passphrase-fd --askpass --generate --allow-empty-passphrase
expect 'pellarvine open --f' --force
expect 'pellarvine markup --' --lines --html --ansi
expect 'pellarvine check --' --plugin
expect 'pellarvine new --' --identifier
expect 'pellarvine digest --algorithm ' md5 sha512
expect 'pellarvine digest --algorithm = sha' sha1 sha512
