// SPDX-License-Identifier: MIT

#include "app/network/connection_flood.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <string>
#include <vector>

#include "tests/app/patience.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kBegins[] =
    "Connections flood in from the network, more than 600 within a minute, most of them from "
    "192.0.2.9";

// A minute of a fifth of a second.
class ConnectionFloodTest : public testing::Test {
 protected:
  ConnectionFloodTest() {
    QObject::connect(&flood_, &ConnectionFlood::Happened,
                     [this](const QString& text) { lines_.push_back(text.toStdString()); });
  }

  void Note(const std::string& address, int times) {
    for (int i = 0; i < times; ++i) flood_.Note(address);
  }

  HintStrip strip_;
  ConnectionFlood flood_{strip_, std::chrono::milliseconds(200)};
  std::vector<std::string> lines_;
};

TEST_F(ConnectionFloodTest, AHouseThatComesBackIsNone) {
  for (int i = 0; i < 160; ++i) Note("192.0.2." + std::to_string(i), 1);
  EXPECT_FALSE(strip_.Has(Hint::ConnectionFlood));
  EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(ConnectionFloodTest, IsHintedAtWithWhoMakesMost) {
  Note("192.0.2.8", 200);
  Note("192.0.2.9", 400);
  EXPECT_FALSE(strip_.Has(Hint::ConnectionFlood));
  Note("192.0.2.7", 1);
  EXPECT_TRUE(strip_.Has(Hint::ConnectionFlood));
  Note("192.0.2.9", 100'000);
  EXPECT_THAT(lines_, ElementsAre(kBegins)) << "once";
}

TEST_F(ConnectionFloodTest, TheHintGoesWhenAMinuteWasCalm) {
  Note("192.0.2.9", 601);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !strip_.Has(Hint::ConnectionFlood); }, kPatience));
  EXPECT_THAT(lines_, ElementsAre(kBegins, "No more connections flood in"));
  Note("192.0.2.9", 601);
  EXPECT_TRUE(strip_.Has(Hint::ConnectionFlood));
}

// As many as there are addresses of IPv6.
TEST_F(ConnectionFloodTest, AnyNumberOfAddressesIsCounted) {
  Note("192.0.2.9", 2);
  for (int i = 0; i < 100'000; ++i) flood_.Note("2001:db8::" + std::to_string(i));
  EXPECT_THAT(lines_, ElementsAre(kBegins));
}

}  // namespace
}  // namespace app
