Completion of vchipctl in bash. It asks the program.

  $ cat > ask <<'END'
  > . "$1/../../vchip/completion/vchipctl"
  > shift
  > COMP_WORDS=("$@")
  > COMP_CWORD=$(($# - 1))
  > _vchipctl
  > echo "${COMPREPLY[@]}"
  > END

Commands, and what follows them:

  $ bash ask "$TESTDIR" vchipctl d
  diff drops dump
  $ bash ask "$TESTDIR" vchipctl link ""
  down up
  $ bash ask "$TESTDIR" vchipctl drops c
  clear
  $ bash ask "$TESTDIR" vchipctl --image chip.img drops ""
  clear show
  $ bash ask "$TESTDIR" vchipctl trace o
  off on

Options, of the command:

  $ bash ask "$TESTDIR" vchipctl send 1 --p
  --pcap
  $ bash ask "$TESTDIR" vchipctl send 1 00 --
  --drain --filter --help --image --json --pcap --unit
  $ bash ask "$TESTDIR" vchipctl -V
  -V

Where an argument may be a file, bash completes files:

  $ bash ask "$TESTDIR" vchipctl send 1 --pcap fr
  
  $ bash ask "$TESTDIR" vchipctl play sc
  
