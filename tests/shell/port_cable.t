The cable test.

  $ . "$TESTDIR/setup.sh"
  $ vchipctl link up 3
  $ vchipctl pair 3 A-D none --length 2400
  $ vchipctl pair 3 B open --length 1200
  $ vchipctl pair 3 C short --length 60
  $ vchipctl pair 3 D mismatch,crosstalk --length 2300
  $ swctl port cable 3
  port 3: short
    A  ok        24 m    ================================|
    B  open      12 m    ================
    C  short     1 m     =]
    D  faulty    23 m    ==============================x
  $ vchipctl medium 25 fibre
  $ swctl port cable 25
  swctl: port cable 25: User_port_cablediag refused port 25: the port's medium has no such test (result -1021)
  [2]
  $ swctl -j port cable 4
  [{"port":4,"state":"open","pairs":[{"pair":"A","state":"open","length":1},{"pair":"B","state":"open","length":1},{"pair":"C","state":"open","length":1},{"pair":"D","state":"open","length":1}]}]
