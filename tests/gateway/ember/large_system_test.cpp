// SPDX-License-Identifier: MIT
//
// The open gateway of the largest system: numbers of two bytes, messages of many packets.

#include <algorithm>

#include "tests/gateway/ember/provider_fixture.h"

namespace ember {
namespace {

class LargeSystemTest : public ProviderTest {
 protected:
  LargeSystemTest() {
    model_.ChannelCount = model::kMaxChannelCount;
    model_.AllocateMap();
    for (int output = 1; output <= model::kMaxChannelCount; ++output) {
      model_.CrosspointMap.At(output, model::kMaxChannelCount + 1 - output) = 1;
      knownMap_.CrosspointRowChanged(output, 0);
    }
  }

  void ReportRow(int output) {
    knownMap_.CrosspointRowChanged(output, 0);
    provider_.CrosspointRowChanged(output, 0);
  }
};

TEST_F(LargeSystemTest, TakesOfTheHighestNumbers) {
  const auto peer = Connect();
  peer->Send(Taking(0, 199, {255}));
  EXPECT_EQ(port_.TakeWritten(), "FD 03 00 7F 01 47 01 49 FF");
  model_.CrosspointMap.At(200, 57) = 0;
  model_.CrosspointMap.At(200, 256) = 1;
  ReportRow(200);
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 199, {255}));
  peer->Send(Taking(1, 255, {128}));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 00 01 7F 01 01 FF");
}

TEST_F(LargeSystemTest, TheNextNumberIsNotThere) {
  const auto peer = Connect();
  peer->Send(Taking(0, 256, {0}));
  peer->Send(Taking(0, 0, {256}));
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(events_.refusals, std::vector(2, Refusal::NoSuchChannel));
}

// One message, so that no target is missing where a consumer takes only the last.
TEST_F(LargeSystemTest, TheMapIsOneMessageOfManyPackets) {
  const auto peer = Connect();
  peer->Send(test::kMatrixAsked);
  std::vector<int> flags;
  std::size_t longest = 0;
  for (auto begin = peer->written.begin(); begin != peer->written.end();) {
    const auto end = std::find(begin, peer->written.end(), 0xFF);
    ASSERT_NE(end, peer->written.end());
    flags.push_back(begin[5]);
    longest = std::max(longest, static_cast<std::size_t>(end - begin) + 1);
    begin = std::next(end);
  }
  ASSERT_GT(flags.size(), 4U);
  EXPECT_EQ(flags.front(), 0x80);
  EXPECT_EQ(flags.back(), 0x40);
  for (std::size_t i = 1; i + 1 < flags.size(); ++i) EXPECT_EQ(flags[i], 0x00);
  EXPECT_LE(longest, 1290U);

  FrameReader reader;
  std::vector<FrameReader::Event> events;
  ASSERT_TRUE(reader.Read(peer->written, &events));
  ASSERT_EQ(events.size(), 1U);
  ASSERT_TRUE(ParseBer(events[0].message).has_value());
  for (int target = 0; target < model::kMaxChannelCount; ++target) {
    const Bytes row =
        BerValue(Application(16), {BerValue(Context(0), BerInteger(target)),
                                   BerValue(Context(1), BerOid(std::vector<int>{255 - target})),
                                   BerValue(Context(2), BerInteger(0))});
    EXPECT_NE(
        std::search(events[0].message.begin(), events[0].message.end(), row.begin(), row.end()),
        events[0].message.end())
        << target;
  }
}

TEST_F(LargeSystemTest, GainsAreThoseOfTheFirstSixtyFour) {
  const auto peer = Connect();
  peer->Send(Setting({1, 4, 2, 63, 1}, std::int64_t{0}));
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 2, 63, 1}, std::int64_t{0}));
  EXPECT_EQ(port_.TakeWritten(), "E3 3F 64 23 FF");
  peer->Send(Setting({1, 4, 2, 64, 1}, std::int64_t{0}));
  peer->Send(Asked({1, 4, 2, 64}));
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
}

// What is beyond is answered, and has no news.
TEST_F(LargeSystemTest, SubscriptionsAreBounded) {
  const auto peer = Connect();
  Bytes asked;
  for (int target = 0; target < 32; ++target) {
    for (int source = 0; source < 256; ++source) {
      const Bytes one = Asked({1, 4, 3, target, source});
      asked.insert(asked.end(), one.begin(), one.end());
    }
  }
  peer->Send(asked);
  peer->written.clear();
  peer->Send(Asked({1, 6, 1}));
  EXPECT_NE(peer->TakeWritten(), "");
  model_.LinkStatus[0] = 0;
  provider_.LinkChanged();
  EXPECT_EQ(peer->TakeWritten(), "");
}

// Of the whole table that has changed, only what somebody asked for is told.
TEST_F(LargeSystemTest, AnInhibitIsToldToWhoAskedForIt) {
  const auto peer = Connect();
  peer->Send(Asked({1, 4, 3, 4, 200}));
  peer->written.clear();
  Edit(5, "Inhibits", std::string(200, '1'));
  newsTimer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), "");
  Edit(5, "Inhibits", std::string(201, '1'));
  newsTimer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 3, 4, 200, 1}, true));
}

// Who asked for the node and for the parameter is told once.
TEST_F(LargeSystemTest, AnInhibitIsToldOnce) {
  const auto peer = Connect();
  peer->Send(Asked({1, 4, 3, 4, 200}));
  peer->Send(Asked({1, 4, 3, 4, 200, 1}));
  peer->written.clear();
  Edit(5, "Inhibits", std::string(201, '1'));
  newsTimer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 3, 4, 200, 1}, true));
}

// Thousands that change for many are told in turns, several in a message, and what changes
// meanwhile comes behind them.
TEST_F(LargeSystemTest, ManyInhibitsAreToldInTurns) {
  std::vector<std::shared_ptr<test::FakePeer>> peers;
  for (int i = 0; i < 4; ++i) {
    peers.push_back(Connect("10.0.2." + std::to_string(i)));
    for (int source = 0; source < 256; ++source) peers.back()->Send(Asked({1, 4, 3, 6, source}));
    peers.back()->written.clear();
  }
  Edit(7, "Inhibits", std::string(256, '1'));
  workTakes_ = std::chrono::milliseconds(2);
  newsTimer_.Elapse();
  EXPECT_FALSE(peers[0]->written.empty());
  EXPECT_TRUE(peers[3]->written.empty());
  EXPECT_TRUE(newsTimer_.IsRunning());
  Edit(7, "Inhibits", "0" + std::string(255, '1'));
  newsTimer_.ElapseAll();
  std::vector<Bytes> elements;
  Bytes expected;
  for (int source = 0; source < 256; ++source) {
    const bool isFirst = source == 0;  // of the second edit, which is known when it is the turn
    elements.push_back(ParameterValue({1, 4, 3, 6, source, 1}, !isFirst));
    if (elements.size() < News::kMostTogether) continue;
    const Bytes frames = Packets(GlowMessage(elements));
    expected.insert(expected.end(), frames.begin(), frames.end());
    elements.clear();
  }
  const std::string last = ValueFrame({1, 4, 3, 6, 0, 1}, false);
  EXPECT_EQ(peers[3]->TakeWritten(), test::Hex(expected) + " " + last);
  const std::string first = peers[0]->TakeWritten();
  EXPECT_NE(first, test::Hex(expected) + " " + last);
  EXPECT_TRUE(first.ends_with(last));
}

}  // namespace
}  // namespace ember
