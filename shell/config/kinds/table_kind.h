// SPDX-License-Identifier: MIT
// Settings of a table whose entries are added with the words that they hold and
// deleted by their place: addresses, groups, rules.
#ifndef SWCTL_SHELL_CONFIG_KINDS_TABLE_KIND_H
#define SWCTL_SHELL_CONFIG_KINDS_TABLE_KIND_H

#include <string>

#include "config/setting.h"

namespace swsh {

// "mac add ID CONTENT" adds, "mac del ID" deletes. `overwrites`: an entry is
// added over another one. Without, it is deleted before.
inline SettingKind table_kind(const std::string &object, const std::string &name,
                              const std::string &add, const std::string &del, bool overwrites) {
  SettingKind kind;
  kind.object = object;
  kind.name = name;
  kind.commands = {add, del};
  kind.usual = [](const Id &) { return Content(); };
  kind.change = [=](const Change &change, Commands &commands) {
    if (!change.to) {
      commands.push_back(del + ' ' + change.ids);
      return;
    }
    commands.push_back(add + ' ' + change.ids + (change.to->empty() ? "" : ' ' + *change.to));
  };
  if (!overwrites) kind.remade = [](const std::string &, const std::string &) { return true; };
  return kind;
}

}  // namespace swsh

#endif
