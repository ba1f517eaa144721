# SPDX-License-Identifier: MIT
"""eapol_test.py PROGRAMS: wpa_supplicant asks hostapd for access by IEEE 802.1X over a
cable with the chip in it."""
import time

import neighbours
from neighbours import wait_until

AUTHENTICATOR = """interface=eth0
driver=wired
ieee8021x=1
eap_server=1
eap_user_file={users}
use_pae_group_addr=1
"""
USERS = '"guest" MD5 "{password}"\n'
SUPPLICANT = """ap_scan=0
network={
  key_mgmt=IEEE8021X
  eap=MD5
  identity="guest"
  password="secret"
  eapol_flags=0
}
"""


class Eapol(neighbours.Case):
    def setUp(self):
        super().setUp()
        self.authenticator, self.supplicant = self.hosts(1, 1)
        for host in (self.authenticator, self.supplicant):
            host.up("eth0")

    def file(self, name, text):
        with open(self.path(name), "w", encoding="ascii") as file:
            file.write(text)
        return self.path(name)

    def begin(self, password):
        """What both say."""
        users = self.file("users", USERS.format(password=password))
        server = self.authenticator.start(
            "hostapd", self.file("hostapd", AUTHENTICATOR.format(users=users)))
        wait_until(lambda: "AP-ENABLED" in self.said(server), "hostapd serves")
        client = self.supplicant.start(
            "wpa_supplicant", "-D", "wired", "-i", "eth0", "-c", self.file("wpa", SUPPLICANT))
        return server, client

    def test_a_password_opens(self):
        server, client = self.begin("secret")
        wait_until(lambda: "CTRL-EVENT-EAP-SUCCESS" in self.said(client), "access is granted")
        wait_until(lambda: "CTRL-EVENT-EAP-SUCCESS" in self.said(server), "by hostapd")

    def test_a_wrong_one_does_not(self):
        server, client = self.begin("other")
        wait_until(lambda: "CTRL-EVENT-EAP-FAILURE" in self.said(client), "access is refused")
        self.assertNotIn("CTRL-EVENT-EAP-SUCCESS", self.said(server))

    def test_dropped_by_a_rule_it_goes_unheard(self):
        self.swctl("acl add 1 in-ports 1-2 ethertype 0x888e action drop enable")
        server, client = self.begin("secret")
        wait_until(lambda: self.drops(2)["rule"] >= 1, "the supplicant asks")
        time.sleep(1)
        self.assertNotIn("CTRL-EVENT-EAP", self.said(client) + self.said(server))


if __name__ == "__main__":
    neighbours.main("hostapd", "wpa_supplicant")
