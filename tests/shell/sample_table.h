// SPDX-License-Identifier: MIT
// A small table with every kind of word, for the tests of what is drawn from
// tables.
#ifndef SWCTL_TESTS_SHELL_SAMPLE_TABLE_H
#define SWCTL_TESTS_SHELL_SAMPLE_TABLE_H

#include "command/table.h"

namespace swsh {

inline Answer sample_run(const Arguments &, const Context &) {
  return {};
}

inline Node paint_command() {
  return {
      .name = "paint",
      .help = "Paint a fence",
      .positional = {{.name = "COLOUR",
                      .type = choice({{"red", 1, "Like a rose"}, {"green", 2, "Like grass"}}),
                      .help = "Colour of the paint",
                      .required = true},
                     {.name = "BOARDS", .type = numbers(0, 99), .help = "Boards to paint"}},
      .keywords = {{.name = "coats", .type = number(1, 5, "layers"), .help = "How thick"},
                   {.name = "cover", .type = text(), .help = "What lies below"},
                   {.name = "gloss", .type = flag(), .help = "Shiny"}},
      .details = "Paint dries by itself.\n",
      .run = sample_run,
  };
}

inline Node sell_command() {
  return {
      .name = "sell",
      .help = "Sell a fence",
      .keywords =
          {{.name = "price", .type = number(0, 0xffff), .help = "How much", .required = true},
           {.name = "to", .type = text(), .help = "To whom"}},
      .run = sample_run,
  };
}

inline Node sample_table() {
  Node call = {.name = "call",
               .help = "Call a gate by its name",
               .positional = {{.name = "NAME", .type = text(), .help = "A name"}},
               .run = sample_run};
  Node open = {.name = "open",
               .help = "Open gates",
               .keywords = {{.name = "slowly", .type = flag(), .help = "Without a noise"},
                            {.name = "port", .type = interface_number(0), .help = "Where"}},
               .needs_keyword = true,
               .run = sample_run};
  return {.name = "root",
          .help = "Fences and gates",
          .children = {
              {.name = "fence", .help = "Fences", .children = {paint_command(), sell_command()}},
              {.name = "gate", .help = "Gates", .children = {open, call}},
              {.name = "gatepost", .help = "Count the posts", .run = sample_run}}};
}

}  // namespace swsh

#endif
