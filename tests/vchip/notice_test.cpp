// SPDX-License-Identifier: MIT
// What the chip says of itself to a person, and to nobody else.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "child.h"

namespace {

// A terminal of our own; what is written to it can be read here.
class Terminal {
 public:
  Terminal() : side_(posix_openpt(O_RDWR | O_NOCTTY)) {
    EXPECT_GE(side_, 0);
    EXPECT_EQ(grantpt(side_), 0);
    EXPECT_EQ(unlockpt(side_), 0);
    name_ = ptsname(side_);
  }
  ~Terminal() { close(side_); }
  Terminal(const Terminal &) = delete;
  Terminal &operator=(const Terminal &) = delete;

  // In the child: turns a standard stream to it.
  void take(int descriptor) const {
    const int other = open(name_.c_str(), O_RDWR | O_NOCTTY);
    dup2(other, descriptor);
    close(other);
  }
  std::string taken() const {
    fcntl(side_, F_SETFL, O_NONBLOCK);
    char text[1024];
    const ssize_t length = read(side_, text, sizeof text);
    return length < 0 ? "" : std::string(text, static_cast<size_t>(length));
  }

 private:
  int side_;
  std::string name_;
};

int call_twice() {
  uint32_t link = 0;
  if (rtk_port_link_get(0, 3, &link) != 0) return 1;
  return rtk_port_link_get(0, 4, &link) == 0 ? 0 : 2;
}

class Notice : public vchip_test::ImageTest {
 protected:
  // What appears on the terminal that a stream of the child is turned to.
  static std::string said(const vchip_test::Environment &environment, int descriptor) {
    const Terminal terminal;
    // Keeps what was written when the child is gone.
    const int kept = open_other(terminal);
    const vchip_test::Outcome outcome = vchip_test::run(environment, [&] {
      terminal.take(descriptor);
      return call_twice();
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    std::string text = terminal.taken();
    close(kept);
    return text;
  }

 private:
  static int open_other(const Terminal &terminal) {
    const int kept = dup(STDIN_FILENO);
    terminal.take(kept);
    return kept;
  }
};

TEST_F(Notice, APrivateChipSaysSoOnce) {
  const std::string line =
      "swctl-vchip: VCHIP_IMAGE is not set: the chip is gone when the process ends\r\n";
  EXPECT_EQ(said({}, STDERR_FILENO), line);
  EXPECT_EQ(said({{"VCHIP_IMAGE", ""}}, STDERR_FILENO), line);
}

TEST_F(Notice, AnImageThatIsMadeSaysSoOnce) {
  EXPECT_EQ(said(image(), STDERR_FILENO), "swctl-vchip: image " + image_ + ": newly made\r\n");
  EXPECT_EQ(said(image(), STDERR_FILENO), "");
}

TEST_F(Notice, StandardOutputIsNotAsked) {
  EXPECT_EQ(said({}, STDOUT_FILENO), "");
  EXPECT_EQ(said(image(), STDOUT_FILENO), "");
}

}  // namespace
