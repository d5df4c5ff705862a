# Completion of lumatilectl for bash.

_lumatilectl() {
    local word=${COMP_WORDS[COMP_CWORD]} verb=${COMP_WORDS[1]-} choices=
    if [ "$COMP_CWORD" -eq 1 ]; then
        choices='commands run settings status protection exaggerated quit --help --version'
    else
        case $verb:$COMP_CWORD in
            run:2) choices=$(lumatilectl commands 2>/dev/null | cut -f 2) ;;
            settings:2) choices='general commands oled about' ;;
            protection:2) choices='pixelShift edgeJitter idleDimming' ;;
            protection:3 | exaggerated:2) choices='on off' ;;
        esac
    fi
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word" | sort -u)
}
complete -F _lumatilectl lumatilectl
