// SPDX-License-Identifier: MIT

#include "model/system_model.h"

#include <gtest/gtest.h>

namespace model {
namespace {

TEST(SystemModel, FixedCountsReplaceWhatTheDatabaseSaid) {
  SystemModel model;
  model.ButtonCount = 16;
  model.ChkBoxCount = 12;
  model.DownloadInterval = 500;
  model.XmapComplete = model.TallySeen = model.RetrieveActive = model.SendBusy = true;
  model.ApplyFixedValues();
  EXPECT_EQ(model.ButtonCount, 32);
  EXPECT_EQ(model.ChkBoxCount, 64);
  EXPECT_EQ(model.OptoCount, 64);
  EXPECT_EQ(model.RelayCount, 64);
  EXPECT_EQ(model.DownloadInterval, 50);
  EXPECT_FALSE(model.XmapComplete || model.TallySeen || model.RetrieveActive || model.SendBusy);
}

TEST(SystemModel, AllocatingTheMapDiscardsWhatWasReceived) {
  SystemModel model;
  model.ChannelCount = 16;
  model.AllocateMap();
  model.CrosspointMap.At(16, 1) = 1;
  model.ChannelStatus[16] = 1;
  model.AllocateMap();
  EXPECT_EQ(model.CrosspointMap.Size(), 16);
  EXPECT_EQ(model.CrosspointMap.At(16, 1), 0);
  EXPECT_EQ(model.ChannelStatus[16], 0);
}

TEST(SystemModel, NoChannelsGiveAnEmptyMap) {
  SystemModel model;
  model.AllocateMap();
  EXPECT_EQ(model.CrosspointMap.Size(), 0);
  EXPECT_EQ(model.ChannelStatus.Size(), 0);
}

TEST(SystemModel, LevelsStartAt64AndNoTallyResponds) {
  SystemModel model;
  model.InputGains[63] = 1;
  model.QdvTally[0] = 1;
  model.ResetLevels();
  EXPECT_EQ(model.InputGains[0], 64);
  EXPECT_EQ(model.InputGains[63], 64);
  EXPECT_EQ(model.QdvTally[0], 0);
}

TEST(SystemModel, AppPathEndsInOneBackslash) {
  EXPECT_EQ(ToAppPath("/srv/console"), "/srv/console\\");
  EXPECT_EQ(ToAppPath("C:\\"), "C:\\");
}

TEST(OneBasedMatrix, RowIsTheInputsOfOneOutput) {
  OneBasedMatrix<std::uint8_t> map(3);
  map.At(2, 3) = 1;
  ASSERT_EQ(map.Row(2).size(), 3U);
  EXPECT_EQ(map.Row(2)[2], 1);
  EXPECT_EQ(map.Row(1)[2], 0);
}

}  // namespace
}  // namespace model
