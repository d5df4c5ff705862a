# Completion of lumatilectl for fish.

complete -c lumatilectl -f
complete -c lumatilectl -n __fish_is_first_token -a commands -d 'list every command'
complete -c lumatilectl -n __fish_is_first_token -a run -d 'run a command on the front window'
complete -c lumatilectl -n __fish_is_first_token -a settings -d 'open the settings'
complete -c lumatilectl -n __fish_is_first_token -a status -d 'print the status lines'
complete -c lumatilectl -n __fish_is_first_token -a protection -d 'print or switch the protections'
complete -c lumatilectl -n __fish_is_first_token -a exaggerated \
    -d 'print or switch the demonstration mode'
complete -c lumatilectl -n __fish_is_first_token -a quit -d 'end Lumatile'
complete -c lumatilectl -n '__fish_seen_subcommand_from run' \
    -a '(lumatilectl commands 2>/dev/null | cut -f 2,3 | sort -u)'
complete -c lumatilectl -n '__fish_seen_subcommand_from settings' -a 'general commands oled about'
complete -c lumatilectl -n '__fish_seen_subcommand_from protection' \
    -a 'pixelShift edgeJitter idleDimming on off'
complete -c lumatilectl -n '__fish_seen_subcommand_from exaggerated' -a 'on off'
