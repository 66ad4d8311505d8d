// SPDX-License-Identifier: MIT

#include "switcher/presets/preset.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "switcher/presets/preset_text.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PresetTest : public testing::Test {
 protected:
  PresetTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
  }

  std::vector<PresetDifference> Find(const Preset& preset) {
    return Differences(preset, model_, locks_, facts_);
  }
  PresetObstacle ObstacleOf(const Preset& preset) {
    const std::vector<PresetDifference> found = Find(preset);
    EXPECT_THAT(found, SizeIs(1));
    return found.empty() ? PresetObstacle::None : found.front().obstacle;
  }
  Preset Store(const std::vector<int>& outputs) {
    return PresetOf(model_, facts_, outputs, "2026-04-17 12:03:44");
  }
  void Make(int output, int input, int made = 1) {
    model_.CrosspointMap.At(output, input) = static_cast<std::uint8_t>(made);
  }

  model::SystemModel model_;
  model::Locks locks_;
  std::string moved_;
  std::set<std::pair<int, int>> inhibited_;
  ChannelFacts facts_{
      .outputLabel = [this](int output) { return moved_ + "OUT " + std::to_string(output); },
      .inputLabel = [](int input) { return "IN " + std::to_string(input); },
      .isInhibited =
          [this](int output, int input) {
            return isReadable_ ? std::optional(inhibited_.contains({output, input})) : std::nullopt;
          }};
  bool isReadable_ = true;
};

constexpr char kPresetText[] =
    "{\n"
    "  \"channels\": 8,\n"
    "  \"made\": \"2026-04-17 12:03:44\",\n"
    "  \"outputs\": [\n"
    "    {\"output\": 2, \"label\": \"OUT 2\", \"priority\": false, \"hears\": []},\n"
    "    {\"output\": 6, \"label\": \"OUT 6\", \"priority\": true, \"hears\": [\n"
    "      {\"input\": 1, \"label\": \"IN 1\"},\n"
    "      {\"input\": 8, \"label\": \"IN 8\"}\n"
    "    ]}\n"
    "  ]\n"
    "}\n";

TEST_F(PresetTest, IsWrittenForAPersonToRead) {
  Make(6, 1);
  Make(6, 8);
  model_.ChannelStatus[6] = 1;
  const Preset preset = Store({2, 6, 9});
  EXPECT_EQ(WritePreset(preset), kPresetText);
  Preset read;
  ASSERT_TRUE(ReadPreset(kPresetText, &read));
  EXPECT_EQ(read, preset);
}

TEST_F(PresetTest, AnythingElseIsNoPreset) {
  const std::string text = kPresetText;
  const auto with = [&](const std::string& part, const std::string& other) {
    std::string changed = text;
    changed.replace(changed.find(part), part.size(), other);
    return changed;
  };
  for (const std::string& each : {
           std::string(),
           std::string("[]"),
           text + "more",
           with("8,", "257,"),
           with("\"channels\": 8,", ""),
           with("\"output\": 2", "\"output\": 0"),
           with("\"output\": 2", "\"output\": 6"),
           with("\"output\": 2", "\"output\": -2"),
           with("\"output\": 6", "\"output\": 257"),
           with("\"input\": 8", "\"input\": 1"),
           with("\"input\": 8", "\"input\": 8.0"),
           with("\"OUT 2\"", "2"),
           with("true", "1"),
           with("[]", "{}"),
           with("\"IN 1\"", "\"IN 1\", \"more\": 1"),
           with("OUT 2", std::string(1025, 'x')),
       }) {
    Preset read{.channels = 1, .made = "x", .rows = {}};
    EXPECT_FALSE(ReadPreset(each, &read)) << each.substr(0, 400);
    EXPECT_EQ(read, Preset());
  }
}

TEST_F(PresetTest, OfAMapThatIsAsItWasNothingDiffers) {
  Make(6, 1);
  const Preset preset = Store({1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_THAT(Find(preset), IsEmpty());
  Make(6, 1, 0);
  Make(6, 3);
  const std::vector<PresetDifference> found = Find(preset);
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].Output(), 6);
  EXPECT_EQ(found[0].now, Sources().set(3));
  EXPECT_EQ(found[0].wanted, Sources().set(1));
  EXPECT_EQ(found[0].obstacle, PresetObstacle::None);
}

TEST_F(PresetTest, SaysWhatKeepsARowFromBeingRecalled) {
  Make(6, 1);
  Make(6, 3);
  const Preset preset = Store({6});
  Make(6, 1, 0);
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::None);
  inhibited_ = {{6, 3}};
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::None) << "it stands already";
  inhibited_ = {{6, 1}};
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::Inhibited);
  EXPECT_EQ(Find(preset)[0].concerned, (NamedChannel{1, "IN 1"}));
  isReadable_ = false;
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::NotKnown);
  locks_.LockOutput(6, model::Locks::Against::Console);
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::Locked);
  model_.ChannelStatus[6] = 1;
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::Priority);
  EXPECT_EQ(ObstacleOf(Preset{preset.channels, preset.made, {{{6, "OUT 6"}, true, {}}}}),
            PresetObstacle::StoredPriority);
  moved_ = "X";
  EXPECT_EQ(ObstacleOf(preset), PresetObstacle::OtherLabel);
}

TEST_F(PresetTest, OfAnotherMapNamesWhatDoesNotFit) {
  Make(2, 8);
  const Preset preset = Store({2, 8});
  model_.ChannelCount = 7;
  model_.AllocateMap();
  const std::vector<PresetDifference> found = Find(preset);
  ASSERT_THAT(found, SizeIs(2)) << "a row that is not there is named, whatever it heard";
  EXPECT_TRUE(found[0].IsMisfit());
  EXPECT_EQ(found[0].concerned, (NamedChannel{8, "IN 8"}));
  EXPECT_EQ(found[1].obstacle, PresetObstacle::NoChannel);
  EXPECT_EQ(found[1].concerned, (NamedChannel{8, "OUT 8"}));
}

TEST(PresetName, CanBeTheNameOfAFile) {
  for (const char* const name : {"Morning show", "Sunday, 2nd half (live)", "Frühstück", "x"}) {
    EXPECT_TRUE(IsPresetName(name)) << name;
  }
  const std::string longest(80, 'x');
  EXPECT_TRUE(IsPresetName(longest));
  for (const std::string& name :
       {std::string(),           longest + "x",          std::string(".hidden"),
        std::string("a/b"),      std::string("a\\b"),    std::string("a:b"),
        std::string(" a"),       std::string("a "),      std::string("a."),
        std::string("a\nb"),     std::string(".."),      std::string("a\xFF"),
        std::string("a\xC3"),    std::string("CON"),     std::string("nul.old"),
        std::string("Com1 .x"),  std::string("LPT9"),    std::string("a\u202Eb"),
        std::string("a\u200Bb"), std::string("a\u0085b")}) {
    EXPECT_FALSE(IsPresetName(name)) << name;
  }
  for (const char* const name : {"Console", "COM10", "NULL", "日本", "🎙 Studio"}) {
    EXPECT_TRUE(IsPresetName(name)) << name;
  }
}

TEST(PresetName, IsShortenedByWholeCharacters) {
  const std::string behind = ", 2026-11-22 22.16.03";
  EXPECT_EQ(PresetNameOf("Before recall of ", "Morning", behind),
            "Before recall of Morning, 2026-11-22 22.16.03");
  std::string wide;
  for (int i = 0; i < 66; ++i) wide += "日";
  std::string pairs;
  for (int i = 0; i < 60; ++i) pairs += "🎙";
  for (const std::string& name : {std::string(80, 'x'), std::string(62, 'x') + ".yyyyyyyyyyyyyyy",
                                  wide, pairs, "x" + pairs}) {
    const std::string made = PresetNameOf("Before recall of ", name, behind);
    EXPECT_TRUE(IsPresetName(made)) << made;
    EXPECT_THAT(made, testing::EndsWith(behind));
    EXPECT_GT(made.size(), 70U);
  }
}

TEST(PresetOutputs, AreTypedAsNumbersAndRanges) {
  std::vector<int> outputs;
  EXPECT_TRUE(ReadOutputs("", 3, &outputs));
  EXPECT_THAT(outputs, ElementsAre(1, 2, 3)) << "all";
  EXPECT_TRUE(ReadOutputs(" 7, 2-4,3 - 5 ", 8, &outputs));
  EXPECT_THAT(outputs, ElementsAre(2, 3, 4, 5, 7));
  for (const char* const text : {"0", "9", "1-", "-3", "4-2", "1,", ",1", "1;2", "a", "1 2", "1-9",
                                 "99999999999999999999", "1-2-3", "+1"}) {
    EXPECT_FALSE(ReadOutputs(text, 8, &outputs)) << text;
  }
}

}  // namespace
}  // namespace switcher
