# Completion of lumatilectl for bash.

_lumatilectl() {
    local word=${COMP_WORDS[COMP_CWORD]} verb=${COMP_WORDS[1]-} choices= choice quoted
    if [ "$COMP_CWORD" -eq 1 ]; then
        choices=$(printf '%s\n' commands run settings status protection exaggerated quit \
            --help --version)
    else
        case $verb:$COMP_CWORD in
            run:2) choices=$(lumatilectl commands 2>/dev/null | cut -f 2) ;;
            settings:2) choices=$(printf '%s\n' general commands oled about) ;;
            protection:2) choices=$(printf '%s\n' pixelShift edgeJitter idleDimming) ;;
            protection:3 | exaggerated:2) choices=$(printf '%s\n' on off) ;;
        esac
    fi
    # Names of commands come from shared settings: they are words, whatever stands in them.
    COMPREPLY=()
    while IFS= read -r choice; do
        printf -v quoted '%q' "$choice"
        if [ -n "$choice" ] && [[ $quoted == "$word"* ]]; then
            COMPREPLY+=("$quoted")
        fi
    done < <(printf '%s\n' "$choices" | sort -u)
}
complete -F _lumatilectl lumatilectl
