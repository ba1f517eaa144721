Completion of swctl-replay and swctl-faults in bash. It asks the programs.

  $ cat > ask <<'END'
  > . "$1/../../${2#swctl-}/completion/$2"
  > shift
  > COMP_WORDS=("$@")
  > COMP_CWORD=$(($# - 1))
  > "_${1//-/_}"
  > echo "${COMPREPLY[@]}"
  > END
  $ bash ask "$TESTDIR" swctl-replay --
  --help --json --keep-going --version
  $ bash ask "$TESTDIR" swctl-replay calls
  
  $ bash ask "$TESTDIR" swctl-faults --j
  --json --junit
  $ bash ask "$TESTDIR" swctl-faults --
  --help --json --junit --only --processes --result --timeout --version
