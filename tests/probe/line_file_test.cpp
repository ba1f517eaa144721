// SPDX-License-Identifier: MIT
// Files that are written line by line, over several processes and sizes.
#include "line_file.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using swprobe::LineFile;
using testing::UnorderedElementsAre;

class LineFileTest : public testing::Test {
 protected:
  std::filesystem::path directory_ =
      testing::TempDir() + "swprobe_line_file_test." + std::to_string(getpid());

  void SetUp() override { std::filesystem::create_directory(directory_); }
  void TearDown() override { std::filesystem::remove_all(directory_); }

  std::string path(const std::string &name = "file") const { return directory_ / name; }
  std::string text(const std::string &name = "file") const {
    std::string all;
    std::getline(std::ifstream(path(name)), all, '\0');
    return all;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto &entry : std::filesystem::directory_iterator(directory_))
      all.push_back(entry.path().filename());
    return all;
  }
  // Runs work() in a child of fork().
  template <class Work>
  static void in_child(Work work) {
    const pid_t child = fork();
    if (child == 0) {
      LineFile::in_child();
      work();
      _exit(0);
    }
    waitpid(child, nullptr, 0);
  }
};

TEST_F(LineFileTest, WritesWholeLinesAndEmptiesAnOldFile) {
  std::ofstream(path()) << "old\n";
  LineFile file(path());
  file.write("one");
  file.write("");
  EXPECT_EQ(text(), "one\n\n");
}

TEST_F(LineFileTest, BeginsWithItsHeader) {
  LineFile file(path(), {}, "head");
  EXPECT_EQ(text(), "head\n");
  file.write("one");
  EXPECT_EQ(text(), "head\none\n");
}

TEST_F(LineFileTest, SaysWhenTheDeviceIsFull) {
  LineFile file("/dev/full");
  testing::internal::CaptureStderr();
  file.write("one");
  file.write("two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "swprobe: cannot write '/dev/full' any further: No space left on device\n");
}

TEST_F(LineFileTest, AFileThatIsFullBecomesAnOldOne) {
  LineFile file(path(), {10, 2}, "h");
  for (const char *line : {"111", "222", "333", "444", "555", "666", "777"}) file.write(line);
  EXPECT_EQ(text("file.2"), "h\n333\n444\n");
  EXPECT_EQ(text("file.1"), "h\n555\n666\n");
  EXPECT_EQ(text(), "h\n777\n");
  EXPECT_THAT(names(), UnorderedElementsAre("file", "file.1", "file.2"));
}

TEST_F(LineFileTest, ALineThatIsLongerThanAFileHasOneOfItsOwn) {
  LineFile file(path(), {10, 4}, "h");
  file.write("1");
  file.write("22222222222222222222");
  file.write("3");
  EXPECT_EQ(text("file.2"), "h\n1\n");
  EXPECT_EQ(text("file.1"), "h\n22222222222222222222\n");
  EXPECT_EQ(text(), "h\n3\n");
}

TEST_F(LineFileTest, NoOldFileNeedBeKept) {
  LineFile file(path(), {6, 0}, "h");
  for (const char *line : {"11", "22", "33"}) file.write(line);
  EXPECT_EQ(text(), "h\n33\n");
  EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(LineFileTest, AnotherProcessMayHaveMadeItAnOldOne) {
  LineFile file(path(), {10, 4});
  file.write("1111");
  in_child([&] {
    file.write("2222");
    file.write("3333");
  });
  file.write("4");
  EXPECT_EQ(text("file.1"), "1111\n2222\n4\n") << "it was written as long as it had room";
  file.write("555555");
  EXPECT_EQ(text(), "3333\n555555\n");
}

TEST_F(LineFileTest, AChildHasAFileOfItsOwnIfTheNameSaysSo) {
  LineFile file(path("%p"), {}, "head");
  file.write("parent");
  in_child([&] {
    file.write("child");
    file.write("again");
  });
  file.write("still");
  const std::string own = std::to_string(getpid());
  const std::vector<std::string> all = names();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(text(own), "head\nparent\nstill\n");
  EXPECT_EQ(text(all[0] == own ? all[1] : all[0]), "head\nchild\nagain\n");
}

TEST_F(LineFileTest, AChildThatWritesNothingMakesNone) {
  LineFile file(path("%p"));
  in_child([] {});
  EXPECT_THAT(names(), UnorderedElementsAre(std::to_string(getpid())));
}

TEST_F(LineFileTest, AChildWritesToTheSameFileOtherwise) {
  LineFile file(path());
  file.write("parent");
  in_child([&] { file.write("child"); });
  file.write("still");
  EXPECT_EQ(text(), "parent\nchild\nstill\n");
}

}  // namespace
