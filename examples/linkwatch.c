/* SPDX-License-Identifier: MIT */
/*
 * A daemon in small: watches the links of the front ports and keeps a VLAN
 * plan. The plan is set at the start, again when it was changed (SIGHUP), and
 * for a port that comes up, whatever somebody else did to it meanwhile.
 *
 *     cc linkwatch.c $(pkg-config --cflags --libs swctl swctl-vchip)
 *     linkwatch [-1] [-s] [-i MILLISECONDS] PLAN
 *
 * A plan has a line for each VLAN; # begins a comment:
 *
 *     vlan 10 untagged 1-4 tagged 26
 *     vlan 20 untagged 5,6 tagged 26
 */
#define _DEFAULT_SOURCE

#include <swctl/platform/adapter.h>
#include <swctl/swctl.h>

#include <errno.h>
#include <signal.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <syslog.h>
#include <time.h>
#include <unistd.h>

enum { kMostVlans = 64, kLastVlan = 4094, kLineBytes = 256 };

struct vlan {
  uint32_t vid;
  user_pbmp_t untagged;
  user_pbmp_t tagged;
};

struct plan {
  int count;
  struct vlan vlans[kMostVlans];
};

static bool to_syslog;

static void say(int level, const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  if (to_syslog) {
    vsyslog(level, format, arguments);
  } else {
    fprintf(stderr, "linkwatch: ");
    vfprintf(stderr, format, arguments);
    fprintf(stderr, "\n");
  }
  va_end(arguments);
}

/* Bitmaps of logical interfaces, which all lie in the first word. */
static bool has(const user_pbmp_t *ports, int interface) {
  return (ports->word[0] >> interface & 1u) != 0;
}

static void add(user_pbmp_t *ports, int interface) {
  ports->word[0] |= 1u << interface;
}

static struct vlan *find(struct plan *plan, uint32_t vid) {
  for (int i = 0; i < plan->count; ++i) {
    if (plan->vlans[i].vid == vid) return &plan->vlans[i];
  }
  return NULL;
}

/* Reads a number from 1 to `most`, and moves on past it. */
static bool read_number(const char **text, long most, int *number) {
  if (**text < '0' || **text > '9') return false;
  char *end = NULL;
  long value = strtol(*text, &end, 10);
  *text = end;
  *number = (int)value;
  return value >= 1 && value <= most;
}

/* Reads "1-4,7". */
static bool read_ports(const char *text, user_pbmp_t *ports) {
  for (;; ++text) {
    int first = 0, last = 0;
    if (!read_number(&text, USER_FRONT_INTERFACES, &first)) return false;
    last = first;
    if (*text == '-') {
      ++text;
      if (!read_number(&text, USER_FRONT_INTERFACES, &last) || last < first) return false;
    }
    for (int interface = first; interface <= last; ++interface) add(ports, interface);
    if (*text != ',') return *text == '\0';
  }
}

/* What is wrong with a line is said in these words, with the culprit. */
struct fault {
  const char *what;
  const char *word;
};

static struct fault read_members(struct vlan *vlan, char **rest) {
  for (char *word; (word = strtok_r(NULL, " \t\n", rest)) != NULL;) {
    user_pbmp_t *ports = NULL;
    if (strcmp(word, "untagged") == 0) ports = &vlan->untagged;
    if (strcmp(word, "tagged") == 0) ports = &vlan->tagged;
    if (ports == NULL) return (struct fault){"expected untagged or tagged, not", word};
    const char *list = strtok_r(NULL, " \t\n", rest);
    if (list == NULL) return (struct fault){"no ports after", word};
    if (!read_ports(list, ports)) return (struct fault){"no list of ports 1-26", list};
  }
  if ((vlan->untagged.word[0] & vlan->tagged.word[0]) != 0)
    return (struct fault){"a port cannot be both", "untagged and tagged"};
  return (struct fault){NULL, NULL};
}

/* An untagged port has one VLAN: that of the frames it receives. */
static bool is_untagged_elsewhere(const struct plan *plan, const struct vlan *vlan) {
  for (int i = 0; i < plan->count; ++i) {
    if ((plan->vlans[i].untagged.word[0] & vlan->untagged.word[0]) != 0) return true;
  }
  return false;
}

static struct fault read_line(struct plan *plan, char *line) {
  char *rest = NULL;
  line[strcspn(line, "#")] = '\0';
  const char *word = strtok_r(line, " \t\n", &rest);
  if (word == NULL) return (struct fault){NULL, NULL};
  if (strcmp(word, "vlan") != 0) return (struct fault){"expected vlan, not", word};
  struct vlan vlan = {0};
  const char *id = strtok_r(NULL, " \t\n", &rest);
  const char *end = id != NULL ? id : "";
  int vid = 0;
  if (!read_number(&end, kLastVlan, &vid) || *end != '\0')
    return (struct fault){"no VLAN ID 1-4094", id != NULL ? id : "(end of line)"};
  vlan.vid = (uint32_t)vid;
  const struct fault fault = read_members(&vlan, &rest);
  if (fault.what != NULL) return fault;
  if (find(plan, vlan.vid) != NULL) return (struct fault){"there is a line already for VLAN", id};
  if (is_untagged_elsewhere(plan, &vlan))
    return (struct fault){"untagged in another VLAN too: a port of VLAN", id};
  if (plan->count == kMostVlans) return (struct fault){"no room for VLAN", id};
  plan->vlans[plan->count++] = vlan;
  return (struct fault){NULL, NULL};
}

/* The whole file or, with a message, nothing. */
static bool read_plan(const char *path, struct plan *plan) {
  FILE *file = fopen(path, "r");
  if (file == NULL) {
    say(LOG_ERR, "%s: %s", path, strerror(errno));
    return false;
  }
  struct plan read = {0};
  char line[kLineBytes];
  bool good = true;
  for (int number = 1; good && fgets(line, sizeof line, file) != NULL; ++number) {
    struct fault fault = {NULL, NULL};
    if (strchr(line, '\n') == NULL && !feof(file))
      fault = (struct fault){"too long a line", "(more than 254 characters)"};
    else
      fault = read_line(&read, line);
    good = fault.what == NULL;
    if (!good) say(LOG_ERR, "%s:%d: %s %s", path, number, fault.what, fault.word);
  }
  if (ferror(file) != 0) {
    say(LOG_ERR, "%s: cannot be read", path);
    good = false;
  }
  fclose(file);
  if (good) *plan = read;
  return good;
}

static bool refused(const char *function, int32_t result, uint32_t vid) {
  if (result >= 0) return false;
  say(LOG_ERR, "%s refused VLAN %u (result %d)", function, (unsigned)vid, (int)result);
  return true;
}

/* Puts these ports where the plan has them in a VLAN, and leaves the rest. */
static bool add_ports(const struct vlan *vlan, const user_pbmp_t *ports) {
  user_pbmp_t tagged = {{vlan->tagged.word[0] & ports->word[0]}};
  user_pbmp_t untagged = {{vlan->untagged.word[0] & ports->word[0]}};
  int32_t result = user_vlan_port_addEx(0, 0, vlan->vid, vlan->vid, &tagged, &untagged);
  if (refused("user_vlan_port_addEx", result, vlan->vid)) return false;
  for (int interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) {
    if (!has(&untagged, interface)) continue;
    result = user_port_untagged_vlan_set(0, 0, adp_intf_2_phy_id(interface), vlan->vid);
    if (refused("user_port_untagged_vlan_set", result, vlan->vid)) return false;
  }
  return true;
}

static bool apply_vlan(const struct vlan *vlan) {
  user_pbmp_t others = {{0}}, all = {{0}};
  for (int interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) {
    add(&all, interface);
    if (!has(&vlan->tagged, interface) && !has(&vlan->untagged, interface)) add(&others, interface);
  }
  if (refused("user_vlan_create", user_vlan_create(0, 0, vlan->vid), vlan->vid)) return false;
  int32_t result = user_vlan_port_removeEx(0, 0, vlan->vid, vlan->vid, &others);
  if (refused("user_vlan_port_removeEx", result, vlan->vid)) return false;
  return add_ports(vlan, &all);
}

static bool apply_plan(const struct plan *plan) {
  for (int i = 0; i < plan->count; ++i) {
    if (!apply_vlan(&plan->vlans[i])) return false;
  }
  say(LOG_INFO, "the plan is set: %d VLANs", plan->count);
  return true;
}

/* VLANs that a new plan has no longer are destroyed. */
static void drop_missing(const struct plan *old, struct plan *plan) {
  for (int i = 0; i < old->count; ++i) {
    const uint32_t vid = old->vlans[i].vid;
    if (find(plan, vid) == NULL) refused("user_vlan_destroy", user_vlan_destroy(0, 0, vid), vid);
  }
}

static void reload(const char *path, struct plan *plan) {
  const struct plan old = *plan;
  if (!read_plan(path, plan)) {
    say(LOG_WARNING, "the plan stays as it was");
    return;
  }
  drop_missing(&old, plan);
  apply_plan(plan);
}

static bool is_up(int interface) {
  uint32_t link = 0;
  const int32_t result = user_port_link_status_get(0, 0, adp_intf_2_phy_id(interface), &link);
  return result >= 0 && link == 1;
}

static void show_up(int interface) {
  const int32_t port = adp_intf_2_phy_id(interface);
  uint32_t speed = 0, duplex = 0;
  if (user_port_speed_get(0, 0, port, &speed) < 0 || user_port_duplex_get(0, 0, port, &duplex) < 0)
    say(LOG_INFO, "interface %d is up", interface);
  else
    say(LOG_INFO, "interface %d is up, %u Mbit/s %s duplex", interface, (unsigned)speed,
        duplex == USER_DUPLEX_FULL ? "full" : "half");
}

/* Looks at every link; `up` is what was seen the last time. */
static void look(const struct plan *plan, user_pbmp_t *up) {
  for (int interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) {
    const bool was = has(up, interface), now = is_up(interface);
    if (was == now) continue;
    up->word[0] ^= 1u << interface;
    if (!now) {
      say(LOG_INFO, "interface %d is down", interface);
      continue;
    }
    show_up(interface);
    user_pbmp_t one = {{0}};
    add(&one, interface);
    for (int i = 0; i < plan->count; ++i) add_ports(&plan->vlans[i], &one);
  }
}

/* Signals wait until they are asked for, from the very start. */
static void hold_signals(sigset_t *signals) {
  sigemptyset(signals);
  sigaddset(signals, SIGHUP);
  sigaddset(signals, SIGINT);
  sigaddset(signals, SIGTERM);
  sigprocmask(SIG_BLOCK, signals, NULL);
}

static void watch(const char *path, struct plan *plan, long interval, const sigset_t *signals) {
  const struct timespec pause = {interval / 1000, interval % 1000 * 1000000L};
  user_pbmp_t up = {{0}};
  for (;;) {
    look(plan, &up);
    const int signal = sigtimedwait(signals, NULL, &pause);
    if (signal == SIGINT || signal == SIGTERM) return;
    if (signal == SIGHUP) reload(path, plan);
  }
}

static int usage(void) {
  fprintf(stderr,
          "usage: linkwatch [-1] [-s] [-i MILLISECONDS] PLAN\n"
          "  -1  set the plan, show the links that are up, and end\n"
          "  -s  log to syslog instead of standard error\n"
          "  -i  how often to look at the links, 1-60000; 1000 if not given\n");
  return EXIT_FAILURE;
}

int main(int argc, char **argv) {
  bool once = false;
  int interval = 1000;
  for (int option; (option = getopt(argc, argv, "1si:")) != -1;) {
    const char *text = optarg;
    if (option == '1')
      once = true;
    else if (option == 's')
      to_syslog = true;
    else if (option != 'i' || !read_number(&text, 60000, &interval) || *text != '\0')
      return usage();
  }
  if (optind + 1 != argc) return usage();
  if (to_syslog) openlog("linkwatch", LOG_PID, LOG_DAEMON);

  sigset_t signals;
  if (!once) hold_signals(&signals);
  struct plan plan = {0};
  const char *path = argv[optind];
  if (!read_plan(path, &plan) || !apply_plan(&plan)) return EXIT_FAILURE;
  if (!once) {
    watch(path, &plan, interval, &signals);
    return EXIT_SUCCESS;
  }
  user_pbmp_t up = {{0}};
  look(&plan, &up);
  return EXIT_SUCCESS;
}
