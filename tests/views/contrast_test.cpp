// SPDX-License-Identifier: MIT

#include "views/widgets/contrast.h"

#include <gtest/gtest.h>

#include "views/widgets/find_field.h"

namespace views {
namespace {

TEST(Contrast, GoesFromOneToTwentyOne) {
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-6);
  EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21, 1e-6);
  EXPECT_NEAR(Contrast(Qt::red, Qt::red), 1, 1e-6);
  EXPECT_NEAR(Contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
}

TEST(Contrast, BlendMixesChannelByChannel) {
  EXPECT_EQ(Blend(QColor(100, 0, 200), QColor(0, 100, 200), 0.35), QColor(35, 65, 200));
}

TEST(Contrast, WhatWasFoundCanBeRead) { EXPECT_GE(Contrast(kMatchInk, kMatchGround), 4.5); }

}  // namespace
}  // namespace views
