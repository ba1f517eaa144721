// SPDX-License-Identifier: MIT
// What holds for every entry of the shell's command table.
#include <cctype>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "command/help.h"
#include "command/walker.h"
#include "objects/registry.h"

namespace swsh {
namespace {

using Visit = std::function<void(const Node &, const std::vector<std::string> &path)>;

void for_each_node(const Node &node, const std::vector<std::string> &path, const Visit &visit) {
  visit(node, path);
  for (const Node &child : node.children) {
    std::vector<std::string> deeper = path;
    deeper.push_back(child.name);
    for_each_node(child, deeper, visit);
  }
}

void for_each_node(const Visit &visit) {
  for_each_node(command_table(), {}, visit);
}

std::vector<Parameter> parameters(const Node &node) {
  std::vector<Parameter> all = node.positional;
  all.insert(all.end(), node.keywords.begin(), node.keywords.end());
  return all;
}

bool is_one_good_line(const std::string &help) {
  return !help.empty() && help.find('\n') == std::string::npos && !help.ends_with('.') &&
         std::isupper(static_cast<unsigned char>(help.front())) != 0;
}

template <typename Entries>
void expect_unique(const Entries &entries, const std::string &where) {
  std::set<std::string> names;
  for (const auto &entry : entries) {
    EXPECT_TRUE(names.insert(entry.name).second) << where << ' ' << entry.name;
  }
}

TEST(Table, EveryWordHasOneLineOfHelp) {
  for_each_node([](const Node &node, const auto &) {
    EXPECT_TRUE(is_one_good_line(node.help)) << node.name;
    for (const Parameter &each : parameters(node)) {
      EXPECT_TRUE(is_one_good_line(each.help)) << node.name << ' ' << each.name;
    }
  });
}

TEST(Table, ANodeLeadsOnOrRuns) {
  for_each_node([](const Node &node, const auto &) {
    EXPECT_NE(node.children.empty(), node.run == nullptr) << node.name;
    if (node.run == nullptr) {
      EXPECT_TRUE(parameters(node).empty()) << node.name;
    }
  });
}

TEST(Table, NamesAreUniqueWithinTheirLevel) {
  for_each_node([](const Node &node, const auto &) {
    expect_unique(node.children, node.name);
    expect_unique(parameters(node), node.name);
  });
}

TEST(Table, NoNameIsAWordOfTheShell) {
  for_each_node([](const Node &node, const auto &) {
    for (const Node &child : node.children) {
      for (const char *taken : {"help", "exit", "quit"}) EXPECT_NE(child.name, taken);
    }
    for (const Parameter &each : node.keywords) EXPECT_NE(each.name, "help");
  });
}

TEST(Table, EveryNameSpelledInFullIsFound) {
  for_each_node([](const Node &node, const auto &path) {
    const Walk found = walk(command_table(), path);
    EXPECT_FALSE(found.wrong) << node.name;
    EXPECT_EQ(found.node, &node) << node.name;
  });
}

TEST(Table, RequiredPlacesComeFirst) {
  for_each_node([](const Node &node, const auto &) {
    bool optional = false;
    for (const Parameter &each : node.positional) {
      EXPECT_FALSE(each.required && optional) << node.name << ' ' << each.name;
      optional = optional || !each.required;
    }
  });
}

TEST(Table, PlacesAreUpperCaseAndKeywordsLowerCase) {
  for_each_node([](const Node &node, const auto &) {
    for (const Parameter &each : node.positional) {
      for (const char c : each.name) EXPECT_FALSE(std::islower(static_cast<unsigned char>(c)));
    }
    for (const Parameter &each : node.keywords) {
      if (each.name.starts_with('-')) continue;  // a letter, as other tools have it
      for (const char c : each.name) EXPECT_FALSE(std::isupper(static_cast<unsigned char>(c)));
    }
  });
}

TEST(Table, ChoicesAreThereAndUnique) {
  for_each_node([](const Node &node, const auto &) {
    for (const Parameter &each : parameters(node)) {
      std::set<std::string> words;
      for (const Choice &one : each.type.choices) EXPECT_TRUE(words.insert(one.word).second);
      const bool chosen = each.type.kind == Kind::choice || each.type.kind == Kind::choices;
      EXPECT_EQ(words.empty(), !chosen) << node.name << ' ' << each.name;
    }
  });
}

TEST(Table, RangesAreNotEmpty) {
  for_each_node([](const Node &node, const auto &) {
    for (const Parameter &each : parameters(node)) {
      const Kind kind = each.type.kind;
      const bool ranged = kind == Kind::number || kind == Kind::numbers ||
                          kind == Kind::interface || kind == Kind::interfaces ||
                          kind == Kind::bandwidth;
      if (ranged) {
        EXPECT_LT(each.type.low, each.type.high) << node.name << ' ' << each.name;
      }
    }
  });
}

TEST(Table, OnlyACommandWithKeywordsNeedsOne) {
  for_each_node([](const Node &node, const auto &) {
    if (node.needs_keyword) {
      EXPECT_FALSE(node.keywords.empty()) << node.name;
    }
  });
}

TEST(Table, HelpOfACommandNamesEveryParameter) {
  constexpr size_t kAll = 10000;  // columns: nothing is wrapped
  for_each_node([](const Node &node, const auto &path) {
    const std::string text = help_answer(node, path, kAll).text;
    EXPECT_THAT(text, testing::HasSubstr(node.help));
    for (const Node &child : node.children) {
      EXPECT_THAT(text, testing::HasSubstr("\n  " + child.name + ' ')) << node.name;
    }
    for (const Parameter &each : parameters(node)) {
      EXPECT_THAT(text, testing::HasSubstr("\n  " + each.name + ' ')) << node.name;
      EXPECT_THAT(text, testing::HasSubstr(each.help)) << node.name;
    }
  });
}

TEST(Table, HelpFitsTheUsualWidth) {
  for_each_node([](const Node &node, const auto &path) {
    std::istringstream lines(help_answer(node, path, kUsualWidth).text);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(line.size(), kUsualWidth) << line;
    }
  });
}

TEST(Table, DetailsEndTheirLine) {
  for_each_node([](const Node &node, const auto &) {
    if (!node.details.empty()) {
      EXPECT_TRUE(node.details.ends_with('\n')) << node.name;
    }
  });
}

}  // namespace
}  // namespace swsh
