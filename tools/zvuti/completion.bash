# Bash completion for zvuti: commands, options, record names, files.
_zvuti() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local commands='decode encode diff records guess export check mask convert number time wheel'
  local command="" place=0 i
  # An option with a value takes the next word, or the two after it in "--color=never", which are three words.
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      -o | --output | --color | --packet | --skip | --html | --most | --from | --to | --words | --levels | --ignore | \
        --slot | --slots | --top-speed | --gain | --start | --even | --every | --svg)
        ((i++))
        [[ ${COMP_WORDS[i]} == '=' ]] && ((i++))
        ;;
      -*) ;;
      *)
        if [[ -z $command ]]; then command=${COMP_WORDS[i]}; else ((place++)); fi
        ;;
    esac
  done

  [[ $previous == '=' && COMP_CWORD -gt 2 ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
  [[ $current == '=' ]] && current=""
  case $previous in
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$current"); return ;;
    --from | --to) mapfile -t COMPREPLY < <(compgen -W 'gbk utf-8 utf-16' -- "$current"); return ;;
    --ignore)
      mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" check --help 2>/dev/null |
        sed -n '/Kinds of findings:/,$s/^  \([a-z-]*\)  .*/\1/p')" -- "$current")
      return
      ;;
  esac

  local options='--help --color'
  case $command in
    '') options='--help --version --color' ;;
    decode) options+=' --hex --packet --json --all-bytes --html --skip' ;;
    encode) options+=' --hex --output' ;;
    diff) options+=' --hex --packet --json' ;;
    records) options+=' --names --json' ;;
    guess) options+=' --hex --packet --scan --most' ;;
    export) options+=' --output' ;;
    check) options+=' --words --levels --ignore' ;;
    mask) options+=' --count --from --output' ;;
    convert) options+=' --from --to --output' ;;
    wheel) options+=' --slot --slots --top-speed --gain --start --even --every --csv --svg' ;;
  esac
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
  elif [[ -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
  elif [[ $place -eq 0 && $command == export ]]; then
    mapfile -t COMPREPLY < <(compgen -W 'wireshark kaitai' -- "$current")
  elif [[ $place -eq 0 && $command =~ ^(decode|encode|diff|records)$ ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" records --names 2>/dev/null)" -- "$current")
  elif [[ $command =~ ^(decode|encode|diff|guess|export|check|mask|convert|wheel)$ ]]; then
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}
complete -F _zvuti zvuti
