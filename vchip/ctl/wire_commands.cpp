// SPDX-License-Identifier: MIT
#include "wire_commands.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "os/json.h"
#include "port_names.h"
#include "usage_error.h"
#include "wires_client.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

std::string carrier_text(const Json &row) {
  std::string text = row["carrier"] ? "up" : "down";
  const std::string note = row["note"];
  return note.empty() ? text : text + " (" + note + ")";
}

void print_wires(const Json &rows) {
  size_t wire_width = 4;
  size_t carrier_width = 7;
  for (const Json &row : rows) {
    wire_width = std::max(wire_width, row["wire"].get<std::string>().size());
    carrier_width = std::max(carrier_width, carrier_text(row).size());
  }
  printf("port  %-*s  %-*s  %12s  %12s  %10s  %8s  %10s\n", static_cast<int>(wire_width), "wire",
         static_cast<int>(carrier_width), "carrier", "received", "sent", "lost", "unusable",
         "missed");
  for (const Json &row : rows)
    printf("%-4s  %-*s  %-*s  %12" PRIu64 "  %12" PRIu64 "  %10" PRIu64 "  %8" PRIu64 "  %10" PRIu64
           "\n",
           port_name(row["port"]).c_str(), static_cast<int>(wire_width),
           row["wire"].get<std::string>().c_str(), static_cast<int>(carrier_width),
           carrier_text(row).c_str(), row["received"].get<uint64_t>(), row["sent"].get<uint64_t>(),
           row["lost"].get<uint64_t>(), row["unusable"].get<uint64_t>(),
           row["missed"].get<uint64_t>());
}

// Names the first of the ports without a wire or a carrier.
void expect_up(const Json &rows, const std::vector<int32_t> &ports) {
  for (const int32_t port : ports) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const Json &each) { return each["port"] == port; });
    if (row == rows.end()) throw Refused("port " + port_name(port) + " has no wire");
    if (!(*row)["carrier"])
      throw Refused("port " + port_name(port) + ": " + (*row)["wire"].get<std::string>() + " is " +
                    carrier_text(*row));
  }
}

void print(Json rows, bool json) {
  if (!json) return print_wires(rows);
  for (Json &row : rows) row["port"] = port_json(row["port"]);
  printf("%s\n", os::json_text(rows).c_str());
}

}  // namespace

void wire(const WireWords &words) {
  const int32_t port = parse_one_port(words.port);
  ask_vchipd(parse_unit(words.unit), {{"do", "wire"}, {"port", port}, {"wire", words.wire}});
}

void wires(const WireWords &words) {
  const std::vector<int32_t> wanted = words.up ? parse_ports(*words.up) : std::vector<int32_t>();
  Json rows = ask_vchipd(parse_unit(words.unit), {{"do", "wires"}})["wires"];
  std::sort(rows.begin(), rows.end(), [](const Json &first, const Json &second) {
    return port_rank(first["port"]) < port_rank(second["port"]);
  });
  print(rows, words.json);
  expect_up(rows, wanted);
}

void add_wire_commands(os::Command &app, WireWords &words, std::function<void()> &run) {
  os::Command one = app.add_subcommand("wire", "Change the wire of a port while vchipd runs");
  one.add_option("PORT", words.port, "Port as printed on the box, 1 to 26, 0 the CPU, or p0 to p27")
      .required();
  one.add_option("WIRE", words.wire, "Such as veth:sw3, as vchipd takes it; none takes it away")
      .required();
  one.callback([&] { run = [&] { wire(words); }; });
  os::Command all = app.add_subcommand("wires", "The wires of the ports, and their frames");
  all.add_flag("-j,--json", words.json, "Print JSON");
  all.add_option("--up", words.up, "Refuse unless these ports, such as 1-4, have a carrier");
  all.callback([&] { run = [&] { wires(words); }; });
  for (os::Command command : {one, all})
    command.add_option("--unit", words.unit, "Switch unit, 0 or 1; 0 if not given");
}

}  // namespace vchipctl
