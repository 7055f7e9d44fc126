# drive.zsh LINE BIN_DIR COMPLETION_DIR
#
# Prints what zsh offers at the end of a line, one word a line.
zmodload zsh/zpty
local out=$(mktemp)
local init=$(mktemp)
cat > $init <<INIT
PATH=${2}:\$PATH
fpath=($3 \$fpath)
autoload -Uz compinit
compinit -u -D
bindkey '^I' complete-word
compadd() {
  if [[ \${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
    builtin compadd "\$@"
    return
  fi
  local -a hits
  builtin compadd -A hits "\$@"
  print -rl -- \$hits >> $out
  builtin compadd "\$@"
}
finished() { print -r -- "=end" >> $out; zle -I }
zle -N finished
bindkey '^X^X' finished
INIT
zpty z zsh -f -i
zpty -w z "source $init; print REA''DY"
zpty -r -m z line '*READY*'
zpty -n -w z "$1"$'\t'$'\x18\x18'
integer n=0
until grep -q '^=end' $out || (( ++n > 100 )); do sleep 0.1; done
zpty -d z
grep -v '^=end' $out | sort -u
rm -f $out $init
