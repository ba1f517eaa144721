// SPDX-License-Identifier: MIT
// A program that opens the probe itself, and then the platform.
#include <swctl/platform/sdk.h>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace {

using Create = decltype(&rtk_vlan_create);

void *opened(const char *library) {
  void *const handle = dlopen(library, RTLD_NOW | RTLD_GLOBAL);
  if (handle == nullptr) throw std::runtime_error(dlerror());
  return handle;
}

Create create_of(void *library) {
  return reinterpret_cast<Create>(dlsym(library, "rtk_vlan_create"));
}

TEST(OpenedProbe, FindsThePlatformThatIsOpenedAfterIt) {
  void *const probe = opened(PROBE_LIBRARY);
  testing::internal::CaptureStderr();
  EXPECT_EQ(create_of(probe)(0, 10), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "swprobe: no library after the probe has rtk_vlan_create; it answers -1\n");

  void *const platform = opened(PLATFORM_LIBRARY);
  ASSERT_NE(create_of(platform), create_of(probe));
  const int32_t answer = create_of(platform)(0, 10);
  ASSERT_NE(answer, -1);
  EXPECT_EQ(create_of(probe)(0, 10), answer);

  using Forget = void (*)();
  using Take = char *(*)();
  using Release = void (*)(char *);
  reinterpret_cast<Forget>(dlsym(probe, "swprobe_calls_forget"))();
  EXPECT_EQ(create_of(probe)(0, 10), answer);
  char *const text = reinterpret_cast<Take>(dlsym(probe, "swprobe_calls_take"))();
  const std::string calls = text;
  reinterpret_cast<Release>(dlsym(probe, "swprobe_text_free"))(text);
  EXPECT_NE(calls.find("\"call\":\"rtk_vlan_create\""), std::string::npos);
}

}  // namespace
