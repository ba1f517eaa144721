// SPDX-License-Identifier: MIT
// The configuration as settings: what each is called, what it is after power-on,
// how it is read, and which commands change it. A setting belongs to a kind,
// "port mtu", and has an ID within it, port 3.
#ifndef SWCTL_SHELL_CONFIG_SETTING_H
#define SWCTL_SHELL_CONFIG_SETTING_H

#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "command/table.h"
#include "config/board.h"

namespace swsh {

// What tells the settings of a kind apart: a number, and more words if there
// are any. Settings are sorted by it.
struct Id {
  int64_t number = 0;
  std::string text = {};

  auto operator<=>(const Id &) const = default;
};

// What a setting is, in words of a command; nothing if there is none, such as a
// VLAN that is not there.
using Content = std::optional<std::string>;
using Contents = std::map<Id, Content>;

// A setting that is not among the others, and why.
struct Unread {
  std::string object;
  std::string setting;
  std::string reason;
  std::string missing;  // function of the platform; empty if that is not the reason
};

struct SettingKind;

// Collects what a kind reads. Settings that are as after power-on are left out.
class SettingReader {
 public:
  SettingReader(const Context &of, const Board &on, const SettingKind &kind, Contents &contents,
                std::vector<Unread> &unread)
      : context(of), board(on), kind_(kind), contents_(contents), unread_(unread) {}

  void put(Id id, Content content);
  // There is such a setting, and no command that would make it.
  void leave_out(const std::string &which, const std::string &reason);

  const Context &context;
  const Board &board;

 private:
  const SettingKind &kind_;
  Contents &contents_;
  std::vector<Unread> &unread_;
};

// A command of a file, and where its settings go.
class Statement {
 public:
  Statement(const std::string &words, const Arguments &given, const Board &on)
      : command(words), arguments(given), board(on) {}

  // The argument if it was given; it counts as understood then.
  const Argument *take(const std::string &name);
  // The interfaces of a list that was given. Throws no_such_port() for those that the
  // board does not have.
  std::vector<int64_t> take_ports(const std::string &name);

  const std::string &command;  // "vlan add"
  const Arguments &arguments;
  const Board &board;
  std::vector<std::string> taken;
};

// The settings of a kind while a file is read.
class Draft {
 public:
  Draft(const SettingKind &kind, Contents &contents) : kind_(kind), contents_(contents) {}

  Content at(const Id &id) const;
  void put(const Id &id, Content content);
  // Throws a CommandError if there is another one already.
  void add(const Id &id, Content content);
  const std::vector<Id> &changed() const { return changed_; }

 private:
  const SettingKind &kind_;
  Contents &contents_;
  std::vector<Id> changed_;
};

// One step from a configuration to another; `ids` are several if the kind merges.
struct Change {
  const std::string &ids;
  const Content &from;
  const Content &to;
};
using Commands = std::vector<std::string>;

// What a setting is part of: it comes and goes with it.
struct Owner {
  std::string kind;
  Id id;
};

using Complaint = std::function<void(const Id &, const std::string &message)>;

// Settings of another kind that the chip changes too when one becomes `by`. To what depends
// on more than is known here, so that they are set again afterwards.
struct Upset {
  std::string by;
  std::string kind;
  std::vector<int64_t> ids;
};

struct SettingKind {
  std::string object;                        // of the shell
  std::string name;                          // "mtu"
  std::vector<const char *> needs = {};      // functions that a platform may be without
  bool on_unit_zero = false;                 // the library reaches unit 0 alone
  bool merges = false;                       // IDs are numbers, and a command takes a list of them
  bool removal_merges = false;               // the same of the command that removes it
  bool goes_last = false;                    // others may need it until they are changed
  std::function<Content(const Id &)> usual;  // after power-on
  std::function<void(SettingReader &)> read;
  // Commands of the shell that settings of this kind are written in.
  std::vector<std::string> commands = {};
  // Takes what it understands of a statement into the draft. False if the statement is none
  // of this kind.
  std::function<bool(Statement &, Draft &)> take;
  // `from` is nothing where there was nothing, or where it was removed before.
  std::function<void(const Change &, Commands &)> change;
  // Whether a setting has to be removed before it can become another.
  std::function<bool(const std::string &from, const std::string &to)> remade = {};
  // Commands that come before all others; changes `now` as the chip will be.
  std::function<void(Contents &now, const Contents &wanted, Commands &)> prepare = {};
  std::function<std::optional<Owner>(const Id &)> owner = {};
  bool outlives_owner = false;  // it stays when its owner goes
  std::optional<Upset> upsets = {};
  // What the chip would refuse of all settings together: says it by one of them.
  std::function<void(const Contents &, const Complaint &)> check = {};

  std::string title() const { return name.empty() ? object : object + ' ' + name; }
};

// All kinds, in an order in which a configuration loads. They live as long as the program.
const std::vector<SettingKind> &kinds(const Board &board);

}  // namespace swsh

#endif
