The version and the files in use.

  $ . "$TESTDIR/setup.sh"

  $ version=$(sed -n 's/^#define SWCTL_VERSION "\(.*\)"/\1/p' \
  >   "$TESTDIR/../../include/swctl/swctl.h")
  $ swctl -V | sed "s/$version/VERSION/"
  swctl VERSION
  $ swctl version | sed "s/$version/VERSION/"
  version   VERSION
  library   /*/lib/libswctl.so.1 (glob)
  platform  /*/lib/libswctl-vchip.so.1 (glob)
  between   /*/lib/libswctl-probe.so.1 (glob)
  $ swctl -p version | sed "s/$version/VERSION/"
  [
    {
      "version": "VERSION",
      "library": "/*/lib/libswctl.so.1", (glob)
      "platform": "/*/lib/libswctl-vchip.so.1", (glob)
      "between": [
        "/*/lib/libswctl-probe.so.1" (glob)
      ]
    }
  ]
