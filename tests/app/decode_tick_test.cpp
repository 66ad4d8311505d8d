// SPDX-License-Identifier: MIT

#include "app/decode_tick.h"

#include "switcher/decoder.h"
#include "tests/gateway/gateway_fixture.h"
#include "tests/support/silent_link_display.h"

namespace app {
namespace {

// The switcher's link beside the gateway, on one line.
class DecodeTickTest : public gateway::GatewayTest {
 protected:
  bool DecodeTick() { return app::DecodeTick(link_, gateway_); }

  stations::Changes changes_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [] { return nullptr; },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {gateway_}}};
  test::SilentLinkDisplay display_;
  switcher::Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = display_}};
};

TEST_F(DecodeTickTest, ARowFromTheSwitcherReachesThePanelsAndATakeTheSwitcher) {
  const auto panel = ConnectPanel();
  // The first message is decoded as it arrives, the second with the next tick.
  port_.Deliver("F3 04 00 01 00 05 00 0A FF F3 00 00 00 00 00 00 00 FF");
  EXPECT_EQ(panel->TakeWritten(), "F6 00 01 00 04 00 02 00 01 00 00 02 00 0A FF");
  timer_.Elapse();
  panel->Send("FE 20 00 05 00 07 00 2C FF");
  EXPECT_TRUE(DecodeTick());
  EXPECT_EQ(panel->TakeWritten(), "F6 00 01 00 00 00 00 00 00 01 FF");
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
}

TEST_F(DecodeTickTest, TheSwitcherIsServedBeforeThePanels) {
  const auto panel = ConnectPanel();
  port_.Deliver("F3 04 00 00 00 00 00 04 FF F3 05 00 00 00 00 00 05 FF");
  timer_.ElapseAll();
  panel->TakeWritten();
  // Answered with the row that the same tick brings in front of it.
  panel->Send("F5");
  EXPECT_TRUE(DecodeTick());
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F6 00 01 00 05 00 00 00 00 06 FF F4");
}

TEST_F(DecodeTickTest, ATickHasWorkWhenEitherSideHas) {
  const auto panel = ConnectPanel();
  EXPECT_FALSE(DecodeTick());
  port_.Deliver("F3");
  EXPECT_TRUE(DecodeTick());
  port_.Deliver("FF");
  EXPECT_FALSE(DecodeTick());
  panel->Send("41");
  EXPECT_TRUE(DecodeTick());
  EXPECT_FALSE(DecodeTick());
}

TEST_F(DecodeTickTest, ItIsCountedBeforeTheSwitchersMessageGoesToPanels) {
  const auto panel = ConnectPanel();
  port_.Deliver("F3 04 00 00 00 00 00 04 FF F3 05 00 00 00 00 00 05 FF");
  timer_.ElapseAll();
  DecodeTick();
  EXPECT_EQ(Clients().TcpIdleTicks, 0);
  DecodeTick();
  EXPECT_EQ(Clients().TcpIdleTicks, 1);
}

}  // namespace
}  // namespace app
