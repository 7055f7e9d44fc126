# drive.bash COMPLETION TOOL [WORD]...
#
# Prints what bash offers for the last word of a command line, one word a line. A word is one after bash has taken words
# apart at = and :.
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
_upgradesrv
printf '%s\n' "${COMPREPLY[@]}"
