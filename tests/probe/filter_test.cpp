// SPDX-License-Identifier: MIT
// Which calls a filter lets through.
#include "filter.h"

#include <stdexcept>

#include "sample/sample_test.h"

namespace {

using swprobe::Filter;

class FilterTest : public SampleTest {
 protected:
  Filter filter_;

  static swprobe::Call scalars(int32_t port) {
    uint32_t value = 0;
    sample_scalars(1, port, 2, &value, nullptr);
    return swprobe::take().back();
  }
  static swprobe::Call result() {
    call(1);
    return swprobe::take().back();
  }
};

TEST_F(FilterTest, WithoutAWordAllFit) {
  EXPECT_TRUE(filter_.fits_all());
  EXPECT_TRUE(filter_.fits(scalars(3)));
}

TEST_F(FilterTest, NamesAddUp) {
  filter_.add_name("sample_scalars");
  EXPECT_TRUE(filter_.fits(scalars(3)));
  EXPECT_FALSE(filter_.fits(result()));
  filter_.add_name("*_res?lt");
  EXPECT_TRUE(filter_.fits(result()));
  EXPECT_FALSE(filter_.fits_all());
}

TEST_F(FilterTest, AFamilyIsTheSecondWordOfAName) {
  filter_.add_name("by");
  EXPECT_TRUE(filter_.has_name("sample_by_value"));
  EXPECT_TRUE(filter_.has_name("other_by"));
  EXPECT_FALSE(filter_.has_name("sample_result"));
  EXPECT_FALSE(filter_.has_name("sample_bytes"));
}

TEST_F(FilterTest, AWordThatFitsNoCallIsRefused) {
  EXPECT_THROW(filter_.add_name("vlna"), std::runtime_error);
  EXPECT_THROW(filter_.add_name(""), std::runtime_error);
  EXPECT_THROW(filter_.add_port("three"), std::runtime_error);
}

TEST_F(FilterTest, PortsAreThoseOfTheArgument) {
  filter_.add_port("3");
  filter_.add_port("-1");
  EXPECT_TRUE(filter_.fits(scalars(3)));
  EXPECT_TRUE(filter_.fits(scalars(-1)));
  EXPECT_FALSE(filter_.fits(scalars(1)));
  EXPECT_FALSE(filter_.fits(result())) << "it has no port";
}

TEST_F(FilterTest, NameAndPortMustBothFit) {
  filter_.add_name("result");
  filter_.add_port("3");
  EXPECT_FALSE(filter_.fits(scalars(3)));
}

}  // namespace
