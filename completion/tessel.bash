# Completion of the program tessel in bash. Commands, options and their words are those that the program's help tells, so
# that they need not be said here again.

_tessel_commands() { # PROGRAM
  "$1" --help 2>/dev/null | sed -n 's/^  \([a-z][a-z-]*\) .*/\1/p'
}

_tessel_usage() { # PROGRAM COMMAND: the synopsis on one line
  "$1" "$2" --help 2>/dev/null | sed '/^$/q' | tr -s '\n ' ' '
}

_tessel_kinds='measure unit propertynamespace entitytype propertydefinition valuedefinition propertyset site building story'

_tessel_offer() { # CURRENT WORDS
  COMPREPLY=($(compgen -W "$2" -- "$1"))
}

_tessel_offer_list() { # CURRENT: of several kinds with commas between, the last one is completed
  local done='' kind
  [[ $1 == *,* ]] && done=${1%,*},
  _tessel_offer "${1##*,}" "$_tessel_kinds"
  COMPREPLY=("${COMPREPLY[@]/#/$done}")
  compopt -o nospace 2>/dev/null
}

# The value of an option: "text|json" in the synopsis is one of these words, LIST is kinds, and any other is free.
_tessel_offer_value() { # CURRENT SYNOPSIS_OF_VALUE
  case $2 in
    *'|'*) _tessel_offer "$1" "${2//|/ }" ;;
    LIST) _tessel_offer_list "$1" ;;
  esac
}

# Whether a "--" before the current word has ended the options.
_tessel_options_ended() {
  local index
  for ((index = 2; index < COMP_CWORD; index++)); do
    [ "${COMP_WORDS[index]}" = -- ] && return
  done
  return 1
}

# How many words before the current one are neither options nor their values.
_tessel_operands() { # USAGE
  local index count=0
  for ((index = 2; index < COMP_CWORD; index++)); do
    case ${COMP_WORDS[index]} in
      --)
        echo $((count + COMP_CWORD - index - 1))
        return
        ;;
      --*) [[ $1 == *"[${COMP_WORDS[index]} "* ]] && ((index++))
        [[ ${COMP_WORDS[index]} == = ]] && ((index++)) ;;
      *) ((count++)) ;;
    esac
  done
  echo "$count"
}

_tessel() {
  local program=$1 command=${COMP_WORDS[1]} current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} usage operands
  COMPREPLY=()
  if [ "$COMP_CWORD" = 1 ]; then
    _tessel_offer "$current" "$(_tessel_commands "$program") help --help --version"
    return
  fi
  if [ "$command" = help ]; then
    [ "$COMP_CWORD" = 2 ] && _tessel_offer "$current" "$(_tessel_commands "$program")"
    return
  fi

  usage=$(_tessel_usage "$program" "$command")
  # bash splits "--option=value" into three words.
  [ "$current" = = ] && current=''
  [ "$option" = = ] && option=${COMP_WORDS[COMP_CWORD - 2]}
  local ended=''
  _tessel_options_ended && ended=1
  if [[ ! $ended && $option == --* && $usage == *"[$option "* ]]; then
    usage=${usage#*"[$option "}
    _tessel_offer_value "$current" "${usage%%]*}"
    return
  fi
  if [[ ! $ended && $current == -* ]]; then
    _tessel_offer "$current" "$(grep -o -e '--[a-z-]*' <<<"$usage") --help"
    return
  fi

  # What is not offered here is completed as a file name.
  operands=$(_tessel_operands "$usage")
  case $usage in
    *' FILE KIND '*) [ "$operands" = 1 ] && _tessel_offer "$current" "$_tessel_kinds" ;;
    *' FILE [KIND...]'*) [ "$operands" -ge 1 ] && _tessel_offer "$current" "$_tessel_kinds" ;;
  esac
}

complete -o bashdefault -o default -F _tessel tessel
