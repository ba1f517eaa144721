// SPDX-License-Identifier: MIT
#include "links.h"

#include <fcntl.h>
#include <libmnl/libmnl.h>
#include <linux/ethtool.h>
#include <linux/if_link.h>
#include <linux/if_packet.h>
#include <linux/rtnetlink.h>
#include <linux/sockios.h>
#include <linux/veth.h>
#include <net/if.h>
#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "fault.h"
#include "loop.h"

namespace vchipd {
namespace {

constexpr size_t kMessageBytes = 8192;
constexpr uint32_t kModeNone = 1;  // of generated addresses: none

// A request to the system's table of interfaces, and its answer.
class Request {
 public:
  Request(uint16_t type, uint16_t flags, int index)
      : header_(mnl_nlmsg_put_header(memory_)),
        link_(static_cast<ifinfomsg *>(mnl_nlmsg_put_extra_header(header_, sizeof *link_))) {
    header_->nlmsg_type = type;
    header_->nlmsg_flags = static_cast<uint16_t>(NLM_F_REQUEST | flags);
    link_->ifi_index = index;
  }

  nlmsghdr *header() { return header_; }
  ifinfomsg *link() { return link_; }
  // False, with errno, if the system refuses.
  bool ask(mnl_cb_t read = nullptr, void *into = nullptr) {
    mnl_socket *netlink = mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC);
    if (netlink == nullptr) return false;
    const bool done = exchange(netlink, read, into);
    const int fault = errno;
    mnl_socket_close(netlink);
    errno = fault;
    return done;
  }

 private:
  bool exchange(mnl_socket *netlink, mnl_cb_t read, void *into) {
    if (mnl_socket_bind(netlink, 0, MNL_SOCKET_AUTOPID) < 0) return false;
    if (mnl_socket_sendto(netlink, header_, header_->nlmsg_len) < 0) return false;
    char answer[kMessageBytes * 4];
    const ssize_t size = mnl_socket_recvfrom(netlink, answer, sizeof answer);
    if (size < 0) return false;
    return mnl_cb_run(answer, static_cast<size_t>(size), 0, mnl_socket_get_portid(netlink), read,
                      into) >= 0;
  }

  alignas(nlmsghdr) char memory_[kMessageBytes] = {};
  nlmsghdr *header_;
  ifinfomsg *link_;
};

int read_kind(const nlattr *attribute, void *kind) {
  if (mnl_attr_get_type(attribute) == IFLA_INFO_KIND)
    *static_cast<std::string *>(kind) = mnl_attr_get_str(attribute);
  return MNL_CB_OK;
}

int read_attribute(const nlattr *attribute, void *into) {
  Link &link = *static_cast<Link *>(into);
  switch (mnl_attr_get_type(attribute)) {
    case IFLA_IFALIAS: link.alias = mnl_attr_get_str(attribute); break;
    case IFLA_MTU: link.mtu = mnl_attr_get_u32(attribute); break;
    case IFLA_LINKINFO: mnl_attr_parse_nested(attribute, read_kind, &link.kind); break;
    default: break;
  }
  return MNL_CB_OK;
}

int read_link(const nlmsghdr *header, void *into) {
  const auto *info = static_cast<const ifinfomsg *>(mnl_nlmsg_get_payload(header));
  Link &link = *static_cast<Link *>(into);
  link.index = info->ifi_index;
  link.flags = info->ifi_flags;
  mnl_attr_parse(header, sizeof *info, read_attribute, &link);
  return MNL_CB_OK;
}

Fault link_fault(const std::string &what) {
  if (errno == EPERM || errno == EACCES) return no_right(what, "make or change an interface");
  return system_fault(what);
}

void put_name(nlmsghdr *header, const std::string &name) {
  mnl_attr_put_strz(header, IFLA_IFNAME, name.c_str());
}

void set_flags(int index, uint32_t flags, uint32_t change) {
  Request request(RTM_NEWLINK, NLM_F_ACK, index);
  request.link()->ifi_flags = flags;
  request.link()->ifi_change = change;
  if (!request.ask()) throw link_fault("interface " + std::to_string(index));
}

// Names as "ip netns" gives them, paths, and processes.
std::string path_of_space(const std::string &space) {
  if (space.find('/') != space.npos) return space;
  if (space.find_first_not_of("0123456789") == space.npos) return "/proc/" + space + "/ns/net";
  return "/run/netns/" + space;
}

void ethtool(const std::string &name, uint32_t command) {
  const os::Descriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ethtool_value value = {command, 0};
  ifreq request = {};
  memcpy(request.ifr_name, name.c_str(), std::min(name.size(), kLinkNameMax));
  request.ifr_data = reinterpret_cast<char *>(&value);
  // What an interface cannot do it need not stop doing.
  ioctl(any.get(), SIOCETHTOOL, &request);
}

}  // namespace

void expect_link_name(const std::string &wire, const std::string &name) {
  if (name.size() > kLinkNameMax)
    throw WrongWords(wire + ": the name '" + name +
                     "' is too long for an interface: " + std::to_string(name.size()) +
                     " characters, at most " + std::to_string(kLinkNameMax));
  if (name.empty() || name == "." || name == ".." || name.find_first_of("/ \t\n:") != name.npos)
    throw WrongWords(wire + ": '" + name + "' can be no name of an interface");
}

std::optional<Link> find_link(const std::string &name) {
  Request request(RTM_GETLINK, 0, 0);
  put_name(request.header(), name);
  Link link = {};
  if (request.ask(read_link, &link)) return link;
  if (errno == ENODEV) return std::nullopt;
  throw system_fault("interface " + name);
}

void make_veth(const std::string &wire, const std::string &name, const std::string &peer,
               uint32_t mtu) {
  Request request(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL | NLM_F_ACK, 0);
  nlmsghdr *header = request.header();
  put_name(header, name);
  mnl_attr_put_u32(header, IFLA_MTU, mtu);
  nlattr *info = mnl_attr_nest_start(header, IFLA_LINKINFO);
  mnl_attr_put_strz(header, IFLA_INFO_KIND, "veth");
  nlattr *data = mnl_attr_nest_start(header, IFLA_INFO_DATA);
  nlattr *other = mnl_attr_nest_start(header, VETH_INFO_PEER);
  mnl_nlmsg_put_extra_header(header, sizeof(ifinfomsg));
  put_name(header, peer);
  mnl_attr_nest_end(header, other);
  mnl_attr_nest_end(header, data);
  mnl_attr_nest_end(header, info);
  if (request.ask()) return;
  if (errno == EEXIST) throw Fault(wire + ": there is an interface " + peer + " already");
  throw link_fault(wire);
}

void remove_link(int index) {
  Request(RTM_DELLINK, NLM_F_ACK, index).ask();
}

void set_alias(int index, const std::string &alias) {
  Request request(RTM_NEWLINK, NLM_F_ACK, index);
  mnl_attr_put_strz(request.header(), IFLA_IFALIAS, alias.c_str());
  if (!request.ask()) throw link_fault("interface " + std::to_string(index));
}

void set_up(int index, bool up) {
  set_flags(index, up ? uint32_t{IFF_UP} : 0, IFF_UP);
}

void make_silent(int index) {
  set_flags(index, IFF_NOARP, IFF_NOARP);
  Request request(RTM_NEWLINK, NLM_F_ACK, index);
  nlattr *families = mnl_attr_nest_start(request.header(), IFLA_AF_SPEC);
  nlattr *family = mnl_attr_nest_start(request.header(), AF_INET6);
  mnl_attr_put_u8(request.header(), IFLA_INET6_ADDR_GEN_MODE, kModeNone);
  mnl_attr_nest_end(request.header(), family);
  mnl_attr_nest_end(request.header(), families);
  // A system without IPv6 refuses, and has no such protocol to stop.
  request.ask();
}

void move_link(const std::string &wire, int index, const std::string &space,
               const std::string &name) {
  const std::string path = path_of_space(space);
  const os::Descriptor target(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!target) throw system_fault(wire + ": network namespace " + path);
  Request request(RTM_NEWLINK, NLM_F_ACK, index);
  put_name(request.header(), name);
  mnl_attr_put_u32(request.header(), IFLA_NET_NS_FD, static_cast<uint32_t>(target.get()));
  if (!request.ask()) throw link_fault(wire + ": into network namespace " + path);
}

void stop_sending_offloads(const std::string &name) {
  for (const uint32_t command : {ETHTOOL_STSO, ETHTOOL_SGSO, ETHTOOL_STXCSUM})
    ethtool(name, command);
}

void stop_receiving_offloads(const std::string &name) {
  ethtool(name, ETHTOOL_SGRO);
}

LinkMonitor::LinkMonitor(Loop &loop, int index, std::function<void(uint32_t)> changed)
    : loop_(loop), index_(index), changed_(std::move(changed)) {
  netlink_ =
      os::Descriptor(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
  sockaddr_nl address = {};
  address.nl_family = AF_NETLINK;
  address.nl_groups = RTMGRP_LINK;
  if (!netlink_ ||
      bind(netlink_.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
    throw system_fault("netlink");
  loop_.watch(netlink_.get(), EPOLLIN, [this](uint32_t) { read_changes(); });
}

LinkMonitor::~LinkMonitor() {
  loop_.forget(netlink_.get());
}

void LinkMonitor::read_changes() {
  alignas(nlmsghdr) char memory[kMessageBytes * 4];
  for (;;) {
    const ssize_t size = recv(netlink_.get(), memory, sizeof memory, MSG_DONTWAIT);
    if (size < 0 && errno == ENOBUFS) {
      // Some changes were lost: what is now, counts.
      Link link = {};
      changed_(Request(RTM_GETLINK, 0, index_).ask(read_link, &link) ? link.flags : 0);
      continue;
    }
    if (size < 0) return;
    int rest = static_cast<int>(size);
    for (auto *header = reinterpret_cast<const nlmsghdr *>(memory); mnl_nlmsg_ok(header, rest);
         header = mnl_nlmsg_next(header, &rest)) {
      const auto *info = static_cast<const ifinfomsg *>(mnl_nlmsg_get_payload(header));
      if (info->ifi_index != index_) continue;
      if (header->nlmsg_type == RTM_NEWLINK) changed_(info->ifi_flags);
      if (header->nlmsg_type == RTM_DELLINK) changed_(0);
    }
  }
}

}  // namespace vchipd
