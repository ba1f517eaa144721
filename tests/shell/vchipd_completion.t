Completion of vchipd in bash. It asks the program.

  $ cat > ask <<'END'
  > . "$1/../../vchip/completion/vchipd"
  > shift
  > COMP_WORDS=("$@")
  > COMP_CWORD=$(($# - 1))
  > _vchipd
  > echo "${COMPREPLY[@]}"
  > END
  $ bash ask "$TESTDIR" vchipd --
  --config --help --image --port --unit --version --virtual-time
  $ bash ask "$TESTDIR" vchipd --p
  --port

Kinds of wires, of which the shell has made words of their own:

  $ bash ask "$TESTDIR" vchipd --port 1 =
  cpu: netdev: pcap: tap: tcp: unix: veth:
  $ bash ask "$TESTDIR" vchipd --port 1 = t
  tap: tcp:

Files everywhere else:

  $ bash ask "$TESTDIR" vchipd --config c
  
