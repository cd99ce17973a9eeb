#include <gtest/gtest.h>
#include "foundation/foundation.h"
TEST(Smoke, Builds) { EXPECT_EQ(nextPowerOfTwo(3u), 4u); }
