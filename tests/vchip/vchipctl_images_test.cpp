// SPDX-License-Identifier: MIT
// What vchipctl says of images as such: who uses them, what is wrong with them,
// what differs between two, and what becomes of one from elsewhere.
#include <fstream>

#include "vchipctl.h"

namespace {

using VchipctlImages = Vchipctl;

TEST_F(VchipctlImages, StatusOfAnImageThatNobodyUses) {
  expect_done("reset");
  const Answer text = run("status");
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(text.output.find("image " + image_ + "\n  lock                 "), 0u) << text.output;
  EXPECT_NE(text.output.find("\n  held                 by nobody\n"
                             "  interrupted writes   0\n  size                 "),
            std::string::npos);
  EXPECT_NE(text.output.find(" KB on disk\n  open                 by nobody\n"), std::string::npos);
  const json all = json::parse(run("status -j").output);
  ASSERT_EQ(all.size(), 1u);
  EXPECT_EQ(all[0]["image"], image_);
  EXPECT_EQ(all[0]["held"], nullptr);
  EXPECT_EQ(all[0]["users"], json::array());
  EXPECT_EQ(all[0]["size"], std::filesystem::file_size(image_));
}

TEST_F(VchipctlImages, CheckNamesWhatIsImpossible) {
  expect_done("link up 3");
  expect_done("check");
  EXPECT_EQ(json::parse(run("check -j").output), json::array());
  // A quarter of it, where the second unit is. Only the counters of rules may hold anything.
  std::string bytes(static_cast<size_t>(std::filesystem::file_size(image_)), '\0');
  std::ifstream(image_, std::ios::binary).read(bytes.data(), static_cast<long>(bytes.size()));
  const auto middle = bytes.begin() + static_cast<long>(bytes.size() / 2);
  std::fill(middle, middle + static_cast<long>(bytes.size() / 4), '\xff');
  std::ofstream(image_, std::ios::binary) << bytes;
  const Answer found = run("check");
  EXPECT_EQ(found.status, 2);
  EXPECT_NE(
      found.output.find(image_ + ": unit 1 switch_wide.tag_counts: 4294967295, expected 0 to 1\n"),
      std::string::npos);
  EXPECT_NE(found.output.find(" words that no call could have left\n"), std::string::npos);
  // It is refused as damaged, and as it was.
  EXPECT_EQ(run("dump").status, 2);
}

TEST_F(VchipctlImages, StatusMakesNoImage) {
  const Answer result = run("status");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output,
            "vchipctl: image " + image_ + ": cannot be opened: No such file or directory\n");
  EXPECT_FALSE(std::filesystem::exists(image_));
}

TEST_F(VchipctlImages, SeveralImages) {
  const std::string b = directory_ + "/b.img", list = image_ + "," + b;
  expect_done("--image " + list + " reset");
  expect_done("--image " + b + " link up 3");
  std::ofstream(directory_ + "/a.txt") << "SWVCHI, but no image\n";
  for (const std::string &word : {list, directory_}) {
    const json states = json::parse(run("--image " + word + " status --json").output);
    ASSERT_EQ(states.size(), 2u) << word;
    const json dumps = dump("--image " + word);
    ASSERT_EQ(dumps.size(), 2u) << word;
    const size_t other = word == list ? 1 : 0;
    EXPECT_EQ(states[other]["image"], b);
    EXPECT_EQ(dumps[other]["image"], b);
    EXPECT_EQ(dumps[other], dump("--image " + b));
    const json parts = dump("--unit 0 --block port --image " + word);
    EXPECT_EQ(parts[other]["image"], b);
    EXPECT_EQ(parts[other]["part"], dumps[other]["units"][0]["port"]);
  }
  expect_done("--image " + directory_ + " reset");
  EXPECT_EQ(dump("--image " + b + " --unit 0"), dump("--unit 0"));
}

TEST_F(VchipctlImages, SeveralImagesOfWhichOneIsBad) {
  const std::string bad = directory_ + "/bad.img";
  expect_done("link up 3");
  std::ofstream(bad) << "SWVCHIP\n and no more";
  const Answer reset = run("--image " + directory_ + " reset");
  EXPECT_EQ(reset.status, 2);
  EXPECT_EQ(reset.output.find("vchipctl: image " + bad + ": truncated: "), 0u) << reset.output;
  EXPECT_NE(reset.output.find("\nvchipctl: 1 of 2 images refused\n"), std::string::npos);
  EXPECT_EQ(linked(0), "");
  const Answer states = run("--image " + directory_ + " status -j");
  EXPECT_EQ(states.status, 2);
  const size_t from = states.output.find("[{"), to = states.output.find("}]\n");
  ASSERT_NE(to, std::string::npos) << states.output;
  EXPECT_EQ(json::parse(states.output.substr(from, to + 2 - from)).size(), 1u);
}

TEST_F(VchipctlImages, OneImageWhereOneIsMeant) {
  const std::string list = image_ + "," + directory_ + "/b.img";
  for (const std::string &word : {list, directory_})
    expect_wrong("--image " + word + " link up 3",
                 "'" + word + "' names several images: this command takes one");
  expect_wrong("--image " + image_ + ", reset",
               "an empty name in the list of images '" + image_ + ",'");
  const Answer empty = run("--image " + directory_ + " reset");
  EXPECT_EQ(empty.status, 2);
  EXPECT_EQ(empty.output, "vchipctl: directory " + directory_ + ": has no image\n");
  // A comma in the name of a file that is there is a comma.
  std::ofstream(directory_ + "/a,b") << "hello\n";
  EXPECT_EQ(run("--image " + directory_ + "/a,b reset").output,
            "vchipctl: image " + directory_ + "/a,b: not a virtual chip image\n");
}

TEST_F(VchipctlImages, ARefusedImage) {
  std::ofstream(image_) << "hello\n";
  for (const char *command : {"reset", "dump", "link up 1", "link up 99", "trace on"}) {
    const Answer result = run(command);
    EXPECT_EQ(result.status, 2) << command;
    EXPECT_EQ(result.output, "vchipctl: image " + image_ + ": not a virtual chip image\n");
  }
}

TEST_F(VchipctlImages, DiffNamesWhatDiffers) {
  const std::string other = directory_ + "/other.img", file = directory_ + "/dump.json";
  expect_done("reset");
  expect_done("--image " + other + " reset");
  const std::string both = "diff " + image_ + " " + other;
  expect_done(both);
  expect_done("--image " + other + " medium 25 fibre --unit 1");
  expect_done("--image " + other + " learn 02:00:5e:00:00:01 --port 3 --vlan 10");
  const std::string address =
      R"({"index":468,"vid":10,"mac":"02:00:5e:00:00:01","port":2,"trunk":0,)"
      R"("flags":{"word":0,"names":[]},"violation":false,"state":0,)"
      R"("aux":0,"extra":0,"age":0})";
  const std::string text =
      "units[unit=0].l2.ports[port=2].learned: 0 -> 1\n"
      "units[unit=0].l2.addresses[vid=10,mac=02:00:5e:00:00:01]: nothing -> " +
      address + "\nunits[unit=1].port[port=24].medium: \"copper\" -> \"fibre\"\n";
  EXPECT_EQ(run(both).output, text);
  EXPECT_EQ(run(both).status, 1);
  std::ofstream(file) << printed("--image " + other + " dump");
  expect_done("diff " + other + " " + file);
  EXPECT_EQ(run("diff " + image_ + " " + file).output, text);
  const Answer answer = run(both + " -j");
  EXPECT_EQ(answer.status, 1);
  const json expected = {
      {{"path", "units[unit=0].l2.ports[port=2].learned"}, {"a", 0}, {"b", 1}},
      {{"path", "units[unit=0].l2.addresses[vid=10,mac=02:00:5e:00:00:01]"},
       {"b", json::parse(address)}},
      {{"path", "units[unit=1].port[port=24].medium"}, {"a", "copper"}, {"b", "fibre"}}};
  EXPECT_EQ(json::parse(answer.output), expected);
  EXPECT_EQ(printed("diff " + image_ + " " + image_ + " --json"), "[]\n");
}

TEST_F(VchipctlImages, WhatCannotBeCompared) {
  expect_done("reset");
  const std::string none = directory_ + "/none", bad = directory_ + "/bad";
  expect_refused("diff " + image_ + " " + none, "image " + none + ": there is no such file");
  EXPECT_FALSE(std::filesystem::exists(none));
  std::ofstream(bad) << "{ \"units\": ";
  expect_refused("diff " + bad + " " + image_, "dump " + bad + ": is no JSON object");
  std::ofstream(bad) << "hello\n";
  expect_refused("diff " + bad + " " + image_, "image " + bad + ": not a virtual chip image");
  expect_wrong("diff " + image_, "B is required");
}

TEST_F(VchipctlImages, ADumpBecomesAnImage) {
  expect_done("link up 3 --unit 1");
  expect_done("learn 02:00:5e:00:00:01 --port 3 --vlan 10");
  const std::string file = directory_ + "/dump.json", other = directory_ + "/other.img";
  std::ofstream(file) << printed("dump");
  expect_done("convert " + file + " " + other);
  expect_done("diff " + image_ + " " + other);
  expect_done("check --image " + other);
  expect_refused("convert " + file + " " + other, "image " + other + ": exists already");
  const std::string again = directory_ + "/again.img";
  expect_done("convert " + image_ + " " + again);
  expect_done("diff " + file + " " + again);
}

TEST_F(VchipctlImages, WhatADumpHasAndTheChipHasNot) {
  const std::string file = directory_ + "/dump.json", other = directory_ + "/other.img";
  const std::string line = "convert " + file + " " + other;
  const auto write = [&](const std::string &words) {
    std::ofstream(file) << R"({"byte_order": "little", "words": )" << words << "}";
  };
  write(R"({"units[1].vlan.colour[7]": 5, "units[1].vlan.pvids[3]": 9})");
  EXPECT_EQ(printed(line), "left out: units[1].vlan.colour[7] = 5\n");
  EXPECT_EQ(dump("--image " + other + " --unit 1 --block vlan")["pvid"][3], 9);
  std::filesystem::remove(other);
  EXPECT_EQ(json::parse(printed(line + " -j"))["left_out"],
            json::parse(R"(["units[1].vlan.colour[7] = 5"])"));
  std::filesystem::remove(other);
  write(R"({"units[1].vlan.pvids[3]": 5000})");
  expect_refused(line, "image " + other +
                           ": 1 words that no call could have left, the first of unit 1, "
                           "vlan.pvids[3]: 5000, expected 1 to 4094");
  write(R"({"units[1].vlan.pvids[3]": "9"})");
  expect_refused(line, "dump " + file + ": 'units[1].vlan.pvids[3]' has no number from 0 on");
  write("7");
  expect_refused(line, "dump " + file + ": has no 'words', which name what an image holds");
  EXPECT_FALSE(std::filesystem::exists(other));
}

}  // namespace
