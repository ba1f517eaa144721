The object stp: spanning-tree instances.

  $ . "$TESTDIR/setup.sh"

After power-on there is instance 0, with every port forwarding:

  $ swctl stp show
  instance  state       ports
  0         forwarding  1-26

  $ swctl stp instance add 3
  $ swctl stp set 3 1-4,26 state forwarding
  $ swctl stp set 3 5 state blocking
  $ swctl stp set 3 6 state learning
  $ swctl stp show 3
  instance  state       ports
  3         disabled    7-25
  3         blocking    5
  3         listening   6
  3         forwarding  1-4,26
  $ swctl stp show
  instance  state       ports
  0         forwarding  1-26
  3         disabled    7-25
  3         blocking    5
  3         listening   6
  3         forwarding  1-4,26

A session knows which of listening and learning it asked for:

  $ printf 'stp set 3 6 state learning\nstp show 3\n' | swctl | grep ' 6$'
  3         learning    6

VLANs belong to an instance and fall back to instance 0:

  $ swctl vlan add 10
  $ swctl stp vlan add 10 instance 3
  $ vchipctl dump --unit 0 --block vlan --compact | grep -o '"vid":10[^}]*'
  "vid":10,"member":[],"untagged":[],"stg":3
  $ swctl stp vlan show
  instance  vlans
  0         1
  3         10
  $ swctl -j stp vlan show 3
  [{"instance":3,"vlans":[10]}]
  $ swctl stp vlan show 4
  swctl: stp vlan show 4: there is no instance 4
  [1]
  $ swctl stp vlan del 10
  $ swctl stp vlan show
  instance  vlans
  0         1,10
  3         -
  $ vchipctl dump --unit 0 --block vlan --compact | grep -o '"vid":10[^}]*'
  "vid":10,"member":[],"untagged":[],"stg":0
  $ swctl stp instance del 3
  $ swctl -j stp show
  [{"instance":0,"state":"forwarding","ports":[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26]}]

What is not there:

  $ swctl stp show 3
  swctl: stp show 3: there is no instance 3
  [1]
  $ swctl stp set 3 1 state blocking
  swctl: stp set 3 1 state blocking: there is no instance 3
  [1]
  $ swctl stp vlan add 10 instance 3
  swctl: stp vlan add 10 instance 3: there is no instance 3
  [1]
  $ swctl stp instance add 0
  swctl: stp instance add 0: user_stg_create_id refused instance 0: the spanning-tree instance exists already (result -1062)
  [2]
  $ swctl stp instance add 16
  swctl: stp instance add: bad value "16", expected a number 0-15
  [1]
  $ swctl stp vlan add 99 instance 0
  swctl: stp vlan add 99 instance 0: there is no VLAN 99
  [1]
