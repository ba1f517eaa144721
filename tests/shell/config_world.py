# SPDX-License-Identifier: MIT
"""Random commands that make settings, and a dump of the chip without what is no setting."""
import json
import os
import random
import subprocess
import sys

R = random.Random()


def ports(lo=1):
    k=R.randint(1,6); return ','.join(map(str,sorted(R.sample(range(lo,27),k))))
def vid(): return R.choice([1,10,11,12,20,30,R.randint(2,4094)])
def vids(): a=R.randint(2,60); return '%d-%d'%(a,a+R.randint(0,9))
def mac(m=0): return '%02x:00:5e:%02x:%02x:%02x'%(R.choice([1] if m else [2,0x0a]),R.randint(0,127),R.randint(0,3),R.randint(0,255))
def onoff(): return R.choice(['on','off'])
COMMANDS = [lambda:'vlan add %s tagged %s'%(vids(),ports(0)),lambda:'vlan add %s untagged %s'%(vids(),ports(0)),lambda:'vlan add %s'%vids(),
lambda:'vlan del %d'%vid(),lambda:'vlan set 1 untagged %s'%ports(0),lambda:'vlan port add %s tagged %s'%(vids(),ports(0)),
lambda:'vlan default %d'%vid(),lambda:'vlan default %d ports %s'%(vid(),ports(0)),
lambda:'vlan rule add translation %d from %d to %d ports %s'%(R.randint(0,5),vid(),vid(),ports()),
lambda:'vlan rule add double-tag %d inner %d outer %d priority %d'%(R.randint(0,5),vid(),vid(),R.randint(0,7)),
lambda:'vlan rule add mac %d %s vlan %d mask ff:ff:ff:00:00:ff ports %s'%(R.randint(0,5),mac(),vid(),ports()),
lambda:'vlan rule add ip4 %d 192.0.%d.0/24 vlan %d priority %d'%(R.randint(0,5),R.randint(0,9),vid(),R.randint(0,7)),
lambda:'vlan rule add voice %d %s vlan %d priority %d'%(R.randint(0,5),mac(),vid(),R.randint(0,7)),
lambda:'vlan rule add protocol %d vlan %d encapsulation %s ethertype 0x%x'%(R.randint(0,5),vid(),R.choice(['ethernet','llc','snap']),R.randint(0,65535)),
lambda:'vlan rule del mac %d'%R.randint(0,5),
lambda:'vlan translate add %d port %d from %d to %d'%(R.randint(0,20),R.randint(1,26),vid(),vid()),lambda:'vlan translate del %d'%R.randint(0,20),
lambda:'stp instance add %d'%R.randint(1,15),lambda:'stp instance del %d'%R.randint(1,15),lambda:'stp vlan add %d instance %d'%(vid(),R.randint(0,15)),
lambda:'stp set %d %s state %s'%(R.randint(0,15),ports(),R.choice('disabled blocking listening learning forwarding'.split())),
lambda:'port set %s admin %s'%(ports(),onoff()),lambda:'port set %s speed %s duplex %s'%(ports(),R.choice(['10','100','1000','10000']),R.choice(['half','full'])),
lambda:'port set %s autoneg %s'%(ports(),onoff()),lambda:'port set %s pause %s'%(ports(),onoff()),lambda:'port set %s advertise %s'%(ports(),R.choice(['10-half','100-full,pause','1000-full,asymmetric-pause'])),
lambda:'port set %s backpressure %s mdix %s eee %s'%(ports(),onoff(),R.choice(['auto','straight','crossed']),onoff()),
lambda:'port set %s loopback %s mtu %d'%(ports(),onoff(),R.randint(64,16383)),lambda:'port set %s learning %s'%(ports(),R.choice('on off forward cpu copy restore'.split())),
lambda:'port set %s isolation %s'%(ports(),R.choice(['none',ports(0)])),lambda:'port set %s vlan %d filter %s'%(ports(),vid(),onoff()),
lambda:'port set %s tpid 0x%x entry %d'%(ports(),R.choice([0x8100,0x9100,0x88a8]),R.randint(0,3)),lambda:'port set %s dtag %s'%(ports(),onoff()),
lambda:'port set %s ingress %dkbit egress %dmbit'%(ports(),R.randint(16,100000),R.randint(1,1000)),
lambda:'flood set %s'%ports(0),lambda:'flood remove %s'%ports(0),lambda:'dos set %d action %s'%(R.randint(0,15),R.choice(['drop','forward'])),
lambda:'dos protect ports %s state %s'%(ports(),onoff()),
lambda:'storm set %s type %d rate %d'%(ports(),R.randint(0,4),R.randint(0,100)),lambda:'storm set %s type %d control %s selection %d'%(ports(),R.randint(0,4),onoff(),R.randint(0,1)),lambda:'storm mode %s'%R.choice(['bytes','packets']),
lambda:'qos map set %d queue %d'%(R.randint(0,7),R.randint(0,7)),lambda:'qos dscp set %d-63 priority %d'%(R.randint(0,63),R.randint(0,7)),lambda:'qos default set %s priority %d'%(ports(),R.randint(0,7)),
lambda:'qos tag set %d internal %d'%(R.randint(0,7),R.randint(0,7)),lambda:'qos trust set %s %s'%(ports(),R.choice(['port','tag','dscp','none'])),
lambda:'qos schedule set %s'%R.choice(['strict','equal','weighted weights 1,0,2,3,4,5,6,7','weighted-0 weights 0,0,0,0,0,0,0,0','weighted weights 1,1,1,1,1,1,1,1']),
lambda:'meter set %d rate %d'%(R.randint(0,9),R.randint(16,1000)),lambda:'meter set %d burst %d state %s'%(R.randint(0,9),128*R.randint(1,4),onoff()),lambda:'meter del %d'%R.randint(0,9),
lambda:'trunk set %d %s'%(R.randint(0,5),ports()),lambda:'trunk hash %s'%R.choice('none macs ips source-port'.split()),lambda:'trunk del %d'%R.randint(0,5),
lambda:'mirror add %d to %d ports %s direction %s'%(R.randint(0,3),R.randint(0,26),ports(0),R.choice(['ingress','egress','both'])),lambda:'mirror add %d to %d flows'%(R.randint(0,3),R.randint(0,26)),lambda:'mirror del %d'%R.randint(0,3),
lambda:'mac add %s vlan %d port %d'%(mac(),vid(),R.randint(0,26)),lambda:'mac add %s vlan 1 port %d trunk %d'%(mac(),R.randint(0,26),R.randint(0,9)),lambda:'mac limit %s max %d'%(ports(),R.randint(0,8191)),lambda:'mac aging %d'%R.randint(0,900),
lambda:'mcast add %s vlan %d ports %s'%(mac(1),vid(),ports(0)),lambda:'mcast ip add 232.1.2.%d vlan %d ports %s'%(R.randint(0,9),vid(),ports(0)),
lambda:'mcast ip add ff3e::%d vlan %d source 2001:db8::%d ports %s'%(R.randint(1,9),vid(),R.randint(1,9),ports(0)),lambda:'mcast ip lookup %s %s'%(R.choice(['ip','ip6']),R.choice(['mac','address'])),
lambda:'mcast ip miss %s %s action %d'%(R.choice(['ip','ip6']),ports(),R.randint(0,3)),
lambda:'trap set %s %s'%(R.choice('igmp mld own-mac lacp oam bpdu lldp'.split()),R.choice('cpu forward drop'.split())),lambda:'trap set lldp %s ports %s'%(R.choice('cpu forward drop'.split()),ports()),
lambda:'acl add %d in-ports %s dst-mac 01:80:c2:00:00:00/ff:ff:ff:ff:ff:f0 action trap enable'%(R.randint(0,1535),ports(0)),
lambda:'acl add %d src-ip 10.%d.0.0/16 protocol %s dst-port %d action drop,meter:%d'%(R.randint(0,40),R.randint(0,255),R.choice(['udp','tcp','icmp','igmp','47','6']),R.randint(0,65535),R.randint(0,9)),
lambda:'acl add %d dscp %d frame-type 2 action redirect:%d,count:%d'%(R.randint(0,40),R.randint(0,63),R.randint(1,26),R.randint(0,99)),
lambda:'acl add %d traffic-class 0x%x src-ip6 2001:db8::/32 action mirror:1,priority:3'%(R.randint(0,40),R.randint(0,255)),
lambda:'acl add %d outer-vlan-id %d/0xff0 inner-priority 3 action remark-1:%d,outer-vlan:7'%(R.randint(0,40),R.randint(0,4095),R.randint(0,7)),
lambda:'acl del %d'%R.randint(0,40),lambda:'acl enable %d'%R.randint(0,40),lambda:'acl double %d'%R.randint(0,40),lambda:'acl template %d %d'%(R.randint(0,40),R.randint(0,7)),
lambda:'acl miss %s %s'%(ports(0),R.choice(['drop','forward'])),
]


def run(*words, text=None, status=0, **environment):
    done = subprocess.run(words, input=text, capture_output=True, text=True,
                          env={**os.environ, **environment})
    if status is not None and done.returncode != status:
        sys.exit(f"{' '.join(words)}: status {done.returncode}: {done.stderr[-2000:]}")
    return done


# What nobody can read or set, or what is no setting; docs/shell.md says so.
NO_BOARD_PORTS = {25, 27}


def without_absent(value):
    """Without ports of the chip that are on no interface of the board."""
    if isinstance(value, dict):
        return {key: sorted(set(each) - NO_BOARD_PORTS)
                if key in ("ports", "may_send_to", "member", "untagged") and each
                and all(isinstance(one, int) for one in each) else without_absent(each)
                for key, each in value.items()}
    if isinstance(value, list):
        return [without_absent(each) for each in value]
    return value


def settings(dump):
    unit = json.loads(dump)["units"][0]
    for block in ("time", "drops", "queue", "counter", "acl_count"):
        unit.pop(block, None)
    for port in unit["tag"]["ports"]:
        for key in ("outer_pvid", "ingress_keep", "egress_keep", "outer_tag_status"):
            port.pop(key)
    used = sorted({port["egress_inner_tpid"] for port in unit["tag"]["ports"]})
    for key in ("inner_tpid", "outer_tpid"):
        unit["tag"][key] = [unit["tag"][key][index] for index in used]
    for group in unit["group"]:
        group.pop("index")
        group.pop("forwarding")
    unit["group"].sort(key=str)
    for family in ("ip", "ip6"):
        unit["mcast_ip"][family].sort(key=str)
    for entry in unit["l2"]["addresses"]:
        entry.pop("index")
    unit["l2"]["addresses"].sort(key=str)
    bursts = unit["meter"].pop("burst_sizes")
    meters = unit["meter"]["meters"]
    for meter in meters:
        meter["burst"] = bursts[meter.pop("burst_slot")]
    unit["meter"]["meters"] = [each for each in meters if each["rate"] or each["enabled"]]
    unit["rate"].pop("storm_burst")
    for key in ("templates", "selectors"):
        unit["acl"].pop(key)
    for rule in unit["acl"]["rules"]:
        rule.pop("text")
        for field in rule["match"]:
            if field["field"] == 0:
                field.pop("mask")
                field.pop("text")
        rule["match"] = [each for each in rule["match"] if each != {"field": 0, "data": [0]}]
    unit["acl"]["rules"] = [each for each in unit["acl"]["rules"]
                            if each["match"] or each["valid"] or each["joined"] or each["actions"]]
    for group in range(4):
        if all(port["group"] != group for port in unit["qos"]["ports"]):
            unit["qos"]["groups"][group] = None
    for group in unit["mirror"]:
        group.pop("field7")
        if not group["flows"] and not group["ingress"] and not group["egress"]:
            group.pop("cpu_port")
    return without_absent(unit)


def random_text(most=150):
    commands = COMMANDS + ([lambda: "acl init"] if R.random() < .15 else [])
    return "\n".join(R.choice(commands)() for _ in range(R.randint(1, most)))


def state():
    text = run("swctl", "config", "show").stdout
    if any(line.startswith("#") for line in text.splitlines()):
        sys.exit("not read: " + text)
    return text, settings(run("vchipctl", "dump").stdout)


