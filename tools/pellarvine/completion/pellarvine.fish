# SPDX-License-Identifier: MIT
# fish completion for pellarvine
set -l commands seal open digest color markup check new

complete -c pellarvine -n "not __fish_seen_subcommand_from $commands" -f
complete -c pellarvine -n __fish_use_subcommand -a seal -d 'Encrypt a file under a passphrase'
complete -c pellarvine -n __fish_use_subcommand -a open -d 'Decrypt a sealed file'
complete -c pellarvine -n __fish_use_subcommand -a digest -d 'Print checksums of files'
complete -c pellarvine -n __fish_use_subcommand -a color -d 'Show colors given in hexadecimal'
complete -c pellarvine -n __fish_use_subcommand -a markup -d 'Turn markup into styled text'
complete -c pellarvine -n __fish_use_subcommand -a check -d 'Check interface files and storyboards'
complete -c pellarvine -n __fish_use_subcommand -a new -d 'Write a small program to begin with'
complete -c pellarvine -s h -l help -d 'Show help'
complete -c pellarvine -n __fish_use_subcommand -s v -l version -d 'Show the version'

set -l sealing '__fish_seen_subcommand_from seal open'
complete -c pellarvine -n $sealing -l passphrase-file -rF -d 'Read the passphrase from a file'
complete -c pellarvine -n $sealing -l passphrase-fd -x -d 'Read the passphrase from a file descriptor'
complete -c pellarvine -n $sealing -l askpass -rF -d 'Run a program to ask for the passphrase'
complete -c pellarvine -n $sealing -s f -l force -d 'Replace OUT if it exists'
complete -c pellarvine -n $sealing -s q -l quiet -d 'Show no progress'
complete -c pellarvine -n '__fish_seen_subcommand_from seal' -l generate -d 'Make up a passphrase and print it'
complete -c pellarvine -n '__fish_seen_subcommand_from seal' -l allow-empty-passphrase \
    -d 'Seal under an empty passphrase'

complete -c pellarvine -n '__fish_seen_subcommand_from digest' -s a -l algorithm -x \
    -a 'md5 sha1 sha224 sha256 sha384 sha512' -d 'The digest'

complete -c pellarvine -n '__fish_seen_subcommand_from markup' -l lines -d 'Each line is a text of its own'
complete -c pellarvine -n '__fish_seen_subcommand_from markup' -l html -d 'Print HTML'
complete -c pellarvine -n '__fish_seen_subcommand_from markup' -l ansi -d 'Print for a terminal'
complete -c pellarvine -n '__fish_seen_subcommand_from check' -l plugin -rF \
    -d 'Load a library that registers classes'
complete -c pellarvine -n '__fish_seen_subcommand_from color' -f
complete -c pellarvine -n '__fish_seen_subcommand_from new' -f
complete -c pellarvine -n '__fish_seen_subcommand_from new' -s i -l identifier -x \
    -d 'The identifier'
