# Completion of upgradesrv for bash. Options, formats and rules come from the tool itself, so that they are those of the
# version that is installed.

# The options of a command, a line each: "OPTION TYPE", without TYPE for those that take no value.
_upgradesrv_options() {
  local line
  "${COMP_WORDS[0]}" "$@" --help 2>/dev/null | while IFS= read -r line; do
    if [[ $line =~ ^\ \ (-[^ ]+)(\ ([^ ]+))? ]]; then
      local names=${BASH_REMATCH[1]} type=${BASH_REMATCH[3]}
      printf '%s\n' "${names//,/ }" | tr ' ' '\n' | while IFS= read -r line; do printf '%s %s\n' "$line" "$type"; done
    fi
  done
}

_upgradesrv_rules() {
  "${COMP_WORDS[0]}" explain 2>/dev/null | sed 's/ .*//'
}

# The name that a word of the command line stands for; nothing in it is run.
_upgradesrv_name() {
  local word=$1
  [[ $word == \~ || $word == \~/* ]] && word="'$HOME'${word:1}"
  printf '%s\n' "$word" | xargs printf '%s' 2>/dev/null
}

# The paths of findings, but of those that CSV puts in quotes. Names come from a metamodel: without quotes the shell would
# run what is in them.
_upgradesrv_paths() {
  local path
  "${COMP_WORDS[0]}" review --quiet --timeout 5 --fail-on never -o csv "$(_upgradesrv_name "$1")" 2>/dev/null |
    sed -n '2,$s/^[0-9a-f]*,\([^",]*\),.*/\1/p' | while IFS= read -r path; do printf '%q\n' "$path"; done
}

_upgradesrv_formats() {
  "${COMP_WORDS[0]}" review --help 2>/dev/null | sed -n '/ Formats: /{s/.* Formats: //;s/, /\n/g;p;q}'
}

# Offers words, one a line, that begin as what is typed; what bash keeps of that is taken from them.
_upgradesrv_offer() {
  local word
  while IFS= read -r word; do
    if [[ $word == "$current"* ]]; then
      COMPREPLY+=("${word#"$kept"}")
    fi
  done
}

_upgradesrv_offer_files() {
  local begin=$1 file
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    COMPREPLY+=("$file")
  done < <(compgen -f -- "$begin")
}

_upgradesrv_offer_directories() {
  local directory
  compopt -o filenames 2>/dev/null
  while IFS= read -r directory; do
    COMPREPLY+=("$directory")
  done < <(compgen -d -- "$current")
}

_upgradesrv_offer_locations() {
  case $current in
    sqlite3://*) _upgradesrv_offer_files "${current#sqlite3:}" ;;
    postgres*:*) ;;
    *) _upgradesrv_offer_files "$current" ;;
  esac
}

# Offers the values of a type, which is spelled as in the help.
_upgradesrv_offer_values() {
  case $1 in
    'FORMAT[=FILE]')
      if [[ $current == *=* ]]; then
        _upgradesrv_offer_files "${current#*=}"
      else
        compopt -o nospace 2>/dev/null
        _upgradesrv_offer < <(_upgradesrv_formats)
      fi
      ;;
    FORMAT*) _upgradesrv_offer < <(printf '%s\n' text json) ;;
    LEVEL*) _upgradesrv_offer < <(printf '%s\n' loss block attention safe never) ;;
    CODE*) _upgradesrv_offer < <(printf '%s\n' de en es fr ja zh) ;;
    KIND*)
      local listed='' kind
      [[ $current == *,* ]] && listed=${current%,*},
      _upgradesrv_offer < <(for kind in class link behavior; do printf '%s\n' "$listed$kind"; done)
      ;;
    DIALECT*) _upgradesrv_offer < <(printf '%s\n' postgresql sqlite) ;;
    LOCATION*) _upgradesrv_offer_locations ;;
    FILE* | REVIEW.json* | NAME.csv*) _upgradesrv_offer_files "$current" ;;
    DIR* | UPGRADE_DIR*) _upgradesrv_offer_directories ;;
  esac
}

_upgradesrv() {
  local -a words=()
  local i current kept=
  # Bash takes words apart at = and :, and completes what follows the last one.
  for ((i = 0; i <= COMP_CWORD; ++i)); do
    local word=${COMP_WORDS[i]}
    if ((${#words[@]} > 1)) && [[ $word == [=:]* || ${words[-1]} == *[=:] ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
  done
  current=${words[-1]}
  case $current in
    *[=:]*) kept=${current%"${current##*[=:]}"} ;;
  esac
  # An option and its value in one word are two.
  local joined=
  if [[ $current == --*=* ]]; then
    joined=yes
    words[-1]=${current%%=*}
    current=${current#*=}
    words+=("$current")
    kept=${kept#*=}
  fi
  COMPREPLY=()

  # The command, the type of the value that is asked for, and how many arguments there are before it.
  local -a command=() arguments=() options=()
  local type=
  mapfile -t options < <(_upgradesrv_options)
  for ((i = 1; i < ${#words[@]} - 1; ++i)); do
    local word=${words[i]} option
    if [[ -n $type ]]; then
      type=
    elif [[ $word == -* ]]; then
      for option in "${options[@]}"; do
        [[ ${option%% *} == "$word" ]] && type=${option#* }
      done
    elif ((${#command[@]} == 0)) || [[ ${command[*]} == metamodel ]]; then
      command+=("$word")
      mapfile -t options < <(_upgradesrv_options "${command[@]}")
    else
      arguments+=("$word")
    fi
  done

  if [[ -n $type ]]; then
    _upgradesrv_offer_values "$type"
  elif [[ -n $joined ]]; then
    return
  elif [[ $current == -* ]]; then
    _upgradesrv_offer < <(printf '%s\n' "${options[@]%% *}")
  else
    case "${command[*]} ${#arguments[@]}" in
      ' 0') _upgradesrv_offer < <(printf '%s\n' init run review decide explain metamodel help) ;;
      'metamodel 0' | 'help 1') _upgradesrv_offer < <(printf '%s\n' show check copy) ;;
      'help 0') _upgradesrv_offer < <(printf '%s\n' init run review decide explain metamodel) ;;
      'init 0' | 'run 0' | 'review 0' | 'decide 0') _upgradesrv_offer_directories ;;
      decide\ *) _upgradesrv_offer < <(_upgradesrv_paths "${arguments[0]}") ;;
      'explain 0') _upgradesrv_offer < <(_upgradesrv_rules) ;;
      metamodel\ *\ 0 | 'metamodel copy 1') _upgradesrv_offer_locations ;;
    esac
  fi
}

complete -F _upgradesrv upgradesrv
