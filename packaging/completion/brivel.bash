# Completion of brivel(1) in bash: brivel itself knows what may come.
_brivel() {
  local line=${COMP_LINE:0:COMP_POINT} word found proposal
  local -a words
  read -ra words <<< "$line"
  [[ $line == *[[:blank:]] ]] && words+=('')
  word=${words[-1]}
  # What bash puts in stands behind the last "=" or ":" of the word.
  local kept=${word%"${word##*[=:]}"}
  COMPREPLY=()
  if found=$(brivel --complete "${words[@]:1}" 2> /dev/null); then
    while IFS=$'\t' read -r proposal _; do
      [[ $proposal ]] && COMPREPLY+=("${proposal#"$kept"}")
    done <<< "$found"
    [[ ${COMPREPLY[*]} == *[/:] ]] && compopt -o nospace
  else
    compopt -o default
  fi
}
complete -F _brivel brivel
