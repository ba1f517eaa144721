// SPDX-License-Identifier: MIT
// Who has an image open, and what the first to open it does.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <signal.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::Environment;
using vchip_test::has_robust_futexes;
using vchip_test::Outcome;
using vchip_test::read_file;
using vchip_test::run;
using vchip_test::set_word;
using vchip_test::wait_for;
using vchip_test::write_file;

class Opening : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
  }
  Environment silent() const {
    Environment environment = image();
    environment["VCHIP_LOG"] = "none";
    return environment;
  }
  std::vector<uint32_t> users() const {
    std::vector<uint32_t> processes;
    for (const vchip::ImageUser &user : vchip::image_status(image_).users)
      processes.push_back(user.process);
    return processes;
  }
};

int count_lines(int lines) {
  for (int line = 0; line < lines; ++line) Log_logging_func(6, 0, "T", "%d\n", line);
  return 0;
}

uint64_t lines_of(const Environment &environment) {
  const Outcome outcome = run(environment, [] {
    printf("%llu", static_cast<unsigned long long>(vchip::platform().log_lines));
    return 0;
  });
  return std::stoull(outcome.output);
}

TEST_F(Opening, TheLockIsWhatTheSystemHas) {
  const std::string best = has_robust_futexes() ? "robust futex" : "record lock";
  EXPECT_EQ(vchip::image_status(image_).lock, best);
  vchip_test::Gate gate;
  const pid_t user = vchip_test::start(image(), [&] {
    vchip_open();
    gate.wait();
    return 0;
  });
  while (users().empty()) usleep(1000);
  EXPECT_EQ(vchip::image_status(image_).lock, best);
  gate.open();
  wait_for(user);
}

// The first decides, and what another one would prefer is all the same.
TEST_F(Opening, TheFirstDecidesOnTheLock) {
  Environment record = silent();
  record["VCHIP_LOCK"] = "record";
  vchip_test::Gate gate;
  const pid_t user = vchip_test::start(record, [&] {
    vchip_open();
    gate.wait();
    return count_lines(1000);
  });
  while (users().empty()) usleep(1000);
  const pid_t other = vchip_test::start(silent(), [] { return count_lines(1000); });
  EXPECT_EQ(vchip::image_status(image_).lock, "record lock");
  gate.open();
  EXPECT_EQ(wait_for(user), 0);
  EXPECT_EQ(wait_for(other), 0);
  EXPECT_EQ(lines_of(image()), 2000u);
}

TEST_F(Opening, AnotherLockIsComplainedAbout) {
  Environment environment = image();
  environment["VCHIP_LOCK"] = "spin";
  const Outcome outcome = run(environment, [] { return vchip_open() == nullptr ? 0 : 1; });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output,
            "swctl-vchip: VCHIP_LOCK=spin: expected record; taking what the system has\n");
}

TEST_F(Opening, EveryUserIsListed) {
  EXPECT_TRUE(users().empty());
  std::vector<pid_t> children;
  vchip_test::Gate gate;
  for (int child = 0; child < 5; ++child)
    children.push_back(vchip_test::start(image(), [&] {
      vchip_open();
      gate.wait();
      return 0;
    }));
  while (users().size() < 5) usleep(1000);
  for (const uint32_t user : users())
    EXPECT_NE(std::find(children.begin(), children.end(), static_cast<pid_t>(user)),
              children.end());
  kill(children[2], SIGKILL);
  wait_for(children[2]);
  EXPECT_EQ(users().size(), 4u);
  gate.open();
  for (const int child : {0, 1, 3, 4}) wait_for(children[static_cast<size_t>(child)]);
  EXPECT_TRUE(users().empty());
}

TEST_F(Opening, MoreUsersThanPlaces) {
  constexpr size_t kMore = 110;
  std::vector<pid_t> children;
  vchip_test::Gate gate;
  for (size_t child = 0; child < kMore; ++child)
    children.push_back(vchip_test::start(silent(), [&] {
      vchip_open();
      gate.wait();
      return count_lines(1);
    }));
  while (!vchip::image_status(image_).more_users) usleep(1000);
  EXPECT_EQ(users().size(), 100u);
  gate.open();
  for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
  EXPECT_EQ(lines_of(image()), kMore);
  EXPECT_FALSE(vchip::image_status(image_).more_users);
}

TEST_F(Opening, AClosedChipIsNotListed) {
  const Outcome outcome = run(image(), [this] {
    vchip_open();
    if (users() != std::vector<uint32_t>{static_cast<uint32_t>(getpid())}) return 1;
    vchip_close();
    return users().empty() ? 0 : 2;
  });
  EXPECT_EQ(outcome.status, 0);
}

// A daemon opens the chip, forks, and ends: its child is who has it.
TEST_F(Opening, AForkedChildIsListedAsItself) {
  for (const char *lock : {"", "record"}) {
    Environment environment = silent();
    environment["VCHIP_LOCK"] = lock;
    environment["VCHIP_IMAGE"] = "chip.img";
    const Outcome outcome = run(environment, [this] {
      if (chdir(directory_.c_str()) != 0) return 1;
      count_lines(1);
      const pid_t parent = getpid();
      const pid_t child = fork();
      if (child != 0) return vchip_test::wait_for(child);
      if (chdir("/") != 0) return 2;
      const auto me = static_cast<uint32_t>(getpid());
      count_lines(1);
      const std::vector<uint32_t> both = users();
      if (both.size() != 2 || both[0] != static_cast<uint32_t>(parent) || both[1] != me) return 3;
      vchip_close();
      return users().size() == 1 ? 0 : 4;
    });
    EXPECT_EQ(outcome.status, 0) << lock;
  }
  EXPECT_EQ(lines_of(image()), 4u);
}

TEST_F(Opening, AForkedChildGoesOnWhenTheFileIsGone) {
  const Outcome outcome = run(silent(), [this] {
    count_lines(1);
    if (rename(image_.c_str(), file("moved.img").c_str()) != 0) return 1;
    const pid_t child = fork();
    count_lines(10);
    if (child == 0) _exit(0);
    return vchip_test::wait_for(child);
  });
  EXPECT_EQ(outcome.status, 0);
  Environment moved = image();
  moved["VCHIP_IMAGE"] = file("moved.img");
  EXPECT_EQ(lines_of(moved), 21u);
}

// Daemons close every descriptor that they do not know. A record lock needs its
// own, and is refused then; a robust futex needs none.
TEST_F(Opening, WhoClosesAllDescriptorsKeepsTheChip) {
  constexpr int kLines = 5000;
  std::vector<pid_t> children;
  vchip_test::Gate gate;
  for (int child = 0; child < 3; ++child)
    children.push_back(vchip_test::start(silent(), [&] {
      vchip_open();
      gate.wait();
      for (int descriptor = 3; descriptor < 1024; ++descriptor) close(descriptor);
      return count_lines(kLines);
    }));
  while (users().size() < 3) usleep(1000);
  gate.open();
  // A process that opens the image meanwhile knows that it is not the first.
  for (int round = 0; round < 20; ++round) run(silent(), [] { return count_lines(10); });
  for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
  EXPECT_EQ(lines_of(image()), (has_robust_futexes() ? 3u * kLines : 0) + 200);
}

// What a power cut leaves: nobody is there, and the lock is whose it was.
TEST_F(Opening, ALockThatWasLeftIsFreed) {
  for (const uint32_t owner : {1u, 0x80000001u, 0xc0000000u, 0x3fffffffu, 0xffffffffu}) {
    std::string bytes = read_file(image_);
    set_word(bytes, vchip_test::kOwnerAt, owner);
    set_word(bytes, vchip_test::kTurnAt, 12345);
    set_word(bytes, vchip_test::kLockKindAt, owner);
    set_word(bytes, vchip_test::kHolderAt, owner);
    write_file(image_, bytes);
    Environment environment = image();
    environment["VCHIP_WAIT"] = "20";
    EXPECT_FALSE(vchip::image_status(image_).held);
    EXPECT_EQ(run(environment, [] { return vchip_trace_set(1); }).status, 0) << owner;
  }
}

// A holder that another container hides is named by its place in the image. The
// word of its thread means nothing for a record lock.
TEST_F(Opening, AHolderOutOfSightIsNamedByTheImage) {
  vchip_test::Gate gate;
  const pid_t user = vchip_test::start(image(), [&] {
    vchip_open();
    gate.wait();
    return 0;
  });
  while (users().empty()) usleep(1000);
  std::string bytes = read_file(image_);
  set_word(bytes, vchip_test::kOwnerAt, 0x3ffffffe);  // no such thread here
  set_word(bytes, vchip_test::kHolderAt, 0);
  vchip_test::overwrite_file(image_, bytes);
  const vchip::ImageStatus status = vchip::image_status(image_);
  EXPECT_EQ(status.held, has_robust_futexes());
  if (status.held) {
    EXPECT_EQ(status.holder, static_cast<uint32_t>(user));
    EXPECT_EQ(status.holder_name, "vchip_image_test");
  }
  gate.open();
  wait_for(user);
}

TEST_F(Opening, TheStatusOfAFileThatIsNoImage) {
  write_file(file("bad.img"), "hello\n");
  for (const auto &[name, reason] : std::vector<std::pair<std::string, std::string>>{
           {"bad.img", "not a virtual chip image"},
           {"none.img", "cannot be opened: No such file or directory"},
           {"", "not a regular file"}}) {
    try {
      vchip::image_status(file(name));
      ADD_FAILURE() << name;
    } catch (const std::runtime_error &error) {
      EXPECT_EQ(error.what(), "image " + file(name) + ": " + reason);
    }
  }
}

}  // namespace
