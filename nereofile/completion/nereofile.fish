# Completion of nereofile for fish. A test compares it with nereofile --help.

set -l commands info check diff get set unset convert codes
set -l kinds configuration-xml configuration-text control materials geometry-boundary results

function __nereofile_addresses
    set -l words (commandline -opc)
    nereofile get $words[3] 2>/dev/null | string match -r '^[^= ]+(?==)'
end

complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -f
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a info -d 'show what files are and what they say'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a check -d 'report what is wrong in files'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a diff -d 'compare what two files say'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a get -d 'print values by their addresses'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a set -d 'change values, and no other byte'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a unset -d 'remove settings, constants and flags'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a convert -d 'write another form, or a table'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -a codes -d 'list field variables and node flags'
complete -c nereofile -n "not __fish_seen_subcommand_from $commands" -l version -d 'show the version'
complete -c nereofile -l help -d 'show how it is called'

complete -c nereofile -n '__fish_seen_subcommand_from info check diff get codes' -l json -d 'one JSON document'
complete -c nereofile -n '__fish_seen_subcommand_from info check get' -l kind -x -a "$kinds" -d 'take for this kind'
complete -c nereofile -n '__fish_seen_subcommand_from info' -l stats -d 'what the values of each field are like'
complete -c nereofile -n '__fish_seen_subcommand_from check' -l strict -d 'warnings count as errors'
complete -c nereofile -n '__fish_seen_subcommand_from check diff' -l quiet -d 'the exit code only'
complete -c nereofile -n '__fish_seen_subcommand_from check' -l case -d 'the files belong together'
complete -c nereofile -n '__fish_seen_subcommand_from diff' -l absolute -x -d 'tolerance'
complete -c nereofile -n '__fish_seen_subcommand_from diff' -l relative -x -d 'tolerance, share of the larger number'
complete -c nereofile -n '__fish_seen_subcommand_from diff' -l peak -x -d 'tolerance, share of the peak of the field'
complete -c nereofile -n '__fish_seen_subcommand_from diff convert' -l fields -x -d 'names, with commas'
complete -c nereofile -n '__fish_seen_subcommand_from get' -l effective -d 'as the solver has it, with the origin'
complete -c nereofile -n '__fish_seen_subcommand_from get set unset' -a '(__nereofile_addresses)'
complete -c nereofile -n '__fish_seen_subcommand_from set unset' -l output -r -d 'write there instead'
complete -c nereofile -n '__fish_seen_subcommand_from set unset' -l dry-run -d 'show what would change'
complete -c nereofile -n '__fish_seen_subcommand_from convert' -l nodes -x -d 'FIRST:LAST'
complete -c nereofile -n '__fish_seen_subcommand_from convert' -l force -d 'convert a file with errors'
complete -c nereofile -n '__fish_seen_subcommand_from codes' -f
