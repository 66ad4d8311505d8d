// SPDX-License-Identifier: MIT

#include "app/network/access_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/temporary_folder.h"

namespace app {
namespace {

OpenGatewayAccess Gateway(const std::string& lines) {
  return ReadOpenGatewayAccess(config::IniFile("[OPEN GATEWAY]\r\n" + lines));
}
PanelAccess Panels(const std::string& lines) {
  return ReadPanelAccess(config::IniFile("[PANEL ACCESS]\r\n" + lines));
}

TEST(AccessSettings, WithoutTheSectionsNothingIsDifferent) {
  const config::IniFile settings("[CONFIGURATION]\r\nIP Port=1250\r\n");
  EXPECT_FALSE(ReadOpenGatewayAccess(settings).isWanted);
  const PanelAccess panels = ReadPanelAccess(settings);
  EXPECT_TRUE(panels.problem.isEmpty());
  EXPECT_EQ(panels.listen, QHostAddress(QHostAddress::AnyIPv4));
  EXPECT_TRUE(panels.allow.Contains("203.0.113.9"));
  EXPECT_TRUE(panels.takesFrom.Contains("203.0.113.9"));
}

TEST(AccessSettings, APortAloneIsForReadingOnThisComputer) {
  const OpenGatewayAccess access = Gateway("port = 9000\r\n");
  EXPECT_TRUE(access.isWanted);
  EXPECT_TRUE(access.problem.isEmpty());
  EXPECT_EQ(access.port, 9000);
  EXPECT_EQ(access.listen, QHostAddress(QHostAddress::LocalHost));
  EXPECT_FALSE(access.mayTake);
  EXPECT_FALSE(access.TakesFromElsewhere());
}

TEST(AccessSettings, WithoutAPortThereIsNoOpenGateway) {
  EXPECT_FALSE(Gateway("Takes=Yes\r\n").isWanted);
}

TEST(AccessSettings, AllThatTheSectionsSay) {
  const OpenGatewayAccess access = Gateway(
      "; for the house\r\n\r\nPort=9000\r\nListen=0.0.0.0\r\nTakes=yes\r\n"
      "Allow=192.0.2.20, 192.0.2.32/28\r\n[CONFIGURATION]\r\nWhatever=1\r\n");
  EXPECT_TRUE(access.problem.isEmpty()) << access.problem.toStdString();
  EXPECT_EQ(access.listen, QHostAddress(QHostAddress::AnyIPv4));
  EXPECT_TRUE(access.TakesFromElsewhere());
  EXPECT_TRUE(access.allow.Contains("192.0.2.20"));
  EXPECT_TRUE(access.allow.Contains("192.0.2.47"));
  EXPECT_FALSE(access.allow.Contains("192.0.2.48"));
  EXPECT_FALSE(access.allow.Contains("192.0.2.21"));
  const PanelAccess panels =
      Panels("Listen=192.0.2.10\r\nAllow=192.0.2.0/24\r\nTakesFrom=192.0.2.7\r\n");
  EXPECT_TRUE(panels.problem.isEmpty());
  EXPECT_EQ(panels.listen, QHostAddress(QStringLiteral("192.0.2.10")));
  EXPECT_TRUE(panels.allow.Contains("192.0.2.8"));
  EXPECT_FALSE(panels.takesFrom.Contains("192.0.2.8"));
}

// An address of IPv4 is one, however it is written.
TEST(AccessSettings, AddressesOfBothKinds) {
  const OpenGatewayAccess access = Gateway("Port=1\r\nAllow=::ffff:192.0.2.7 2001:db8::/32\r\n");
  EXPECT_TRUE(access.problem.isEmpty());
  EXPECT_TRUE(access.allow.Contains("192.0.2.7"));
  EXPECT_TRUE(access.allow.Contains("::ffff:192.0.2.7"));
  EXPECT_FALSE(access.allow.Contains("192.0.2.8"));
  EXPECT_TRUE(access.allow.Contains("2001:db8:1::5"));
  EXPECT_FALSE(access.allow.Contains("2001:db9::5"));
  EXPECT_FALSE(access.allow.Contains("somebody"));
}

TEST(AccessSettings, WhatCannotBeUnderstoodIsNamed) {
  for (const char* const line :
       {"Port=0", "Port=65536", "Port=90x", "Port=", "Listen=here", "Listen=10.1",
        "Allow=", "Allow=10.1", "Allow=192.0.2.7/33", "Allow=192.0.2.7/", "Allow=2001:db8::/129",
        "Allow=192.0.2.7;192.0.2.8", "Takes=Perhaps", "Takes=", "Alow=192.0.2.7", "Anything="}) {
    const OpenGatewayAccess access = Gateway(std::string("Port=9000\r\n") + line + "\r\n");
    EXPECT_TRUE(access.isWanted);
    EXPECT_EQ(access.problem.toStdString(), line);
  }
  EXPECT_EQ(Gateway("Port=9000\r\nallow everybody\r\n").problem.toStdString(), "allow everybody=");
  EXPECT_EQ(Gateway("Port=9000\r\nTakes=No\r\nTakes=Yes\r\n").problem.toStdString(), "Takes=Yes");
  EXPECT_EQ(Gateway("Port=9000\r\n[A]\r\n[Open Gateway]\r\nPort=9001\r\n").problem.toStdString(),
            "Port=9001");
  EXPECT_EQ(Panels("TakesFrom=panels\r\n").problem.toStdString(), "TakesFrom=panels");
}

// The installer's file is the one that counts.
TEST(AccessSettings, TheFileBesideTheProgramComesFirst) {
  const test::TemporaryFolder root;
  std::filesystem::create_directories(root / "program");
  std::filesystem::create_directories(root / "user");
  const auto read = [&root] {
    return ReadAccessSettings(root / "program" / "Orvotesk.ini", root / "user" / "Orvotesk.ini");
  };
  test::WriteFile(root / "user" / "Orvotesk.ini", "[OPEN GATEWAY]\nPort=9001\n");
  EXPECT_EQ(read().openGateway.port, 9001);
  test::WriteFile(root / "program" / "Orvotesk.ini", "[OPEN GATEWAY]\nPort=9002\n");
  EXPECT_EQ(read().openGateway.port, 9002);
  test::WriteFile(root / "program" / "Orvotesk.ini", "");
  EXPECT_FALSE(read().openGateway.isWanted);
  // One that cannot be read might say anything.
  std::filesystem::remove(root / "program" / "Orvotesk.ini");
  std::filesystem::create_directories(root / "program" / "Orvotesk.ini");
  EXPECT_FALSE(read().panels.problem.isEmpty());
  EXPECT_FALSE(read().openGateway.problem.isEmpty());
  EXPECT_TRUE(read().openGateway.isWanted) << "the operator is told";
  // Nor is one that leads nowhere none: the user's own file must not stand in for it.
  std::filesystem::remove(root / "program" / "Orvotesk.ini");
  std::filesystem::create_symlink(root / "nowhere", root / "program" / "Orvotesk.ini");
  EXPECT_FALSE(read().panels.problem.isEmpty());
  EXPECT_FALSE(read().openGateway.problem.isEmpty());
}

// A slip in the head of a section must not let in whom it would keep out.
TEST(AccessSettings, ASlipAroundTheSectionsAdmitsNobody) {
  using namespace std::string_literals;
  for (const std::string& text : {
           "PANEL ACCESS]\nAllow=192.0.2.7\n"s,
           "[CONFIGURATION]\nIP Port=1250\nPANEL ACCESS]\nAllow=192.0.2.7\n"s,
           "[PANELACCESS]\nAllow=192.0.2.7\n"s,
           "[PANEL_ACCESS]\n"s,
           "[Open-Gateway]\nPort=9000\n"s,
           "[PANEL]\ntakesfrom = 192.0.2.7\n"s,
           "Takes=Yes\n[OPEN GATEWAY]\nPort=9000\n"s,
           "PANEL ACCESS\n"s,
           "[\0P\0A\0N\0E\0L\0 \0A\0C\0C\0E\0S\0S\0]\0"s,
       }) {
    const AccessSettings access = ReadAccessSettings(config::IniFile(text));
    EXPECT_FALSE(access.panels.problem.isEmpty()) << text;
    EXPECT_FALSE(access.openGateway.problem.isEmpty()) << text;
    EXPECT_TRUE(access.openGateway.isWanted) << text;
  }
}

TEST(AccessSettings, WhatIsNoneOfOursIsNoSlip) {
  const AccessSettings access = ReadAccessSettings(
      config::IniFile("; PANEL ACCESS\nWhatever=1\n[CONFIGURATION]\nIP Port=1250\nnoise\n"
                      "[SERIAL DEVICES]\nCOM1=/dev/ttyUSB0\n[PANEL ACCESS]\nAllow=192.0.2.7\n"));
  EXPECT_TRUE(access.panels.problem.isEmpty()) << access.panels.problem.toStdString();
  EXPECT_FALSE(access.openGateway.isWanted);
  EXPECT_EQ(access.inForce, QStringList(QStringLiteral("PANEL ACCESS: Allow=192.0.2.7")));
}

// The toolkit takes these for addresses of IPv4.
TEST(AccessSettings, AddressesOfIpv6AreOnlyThose) {
  EXPECT_EQ(gateway::ParseAddress("::"), QHostAddress(QHostAddress::AnyIPv6));
  EXPECT_EQ(gateway::ParseAddress("::1"), QHostAddress(QHostAddress::LocalHostIPv6));
  EXPECT_EQ(gateway::ParseAddress("::ffff:192.0.2.7"), QHostAddress(QStringLiteral("192.0.2.7")));
  const auto all = gateway::AddressList::Parse("::/0");
  ASSERT_TRUE(all);
  EXPECT_TRUE(all->Contains("2001:db8::1"));
  EXPECT_FALSE(all->Contains("192.0.2.7"));
  EXPECT_FALSE(all->Contains("::ffff:192.0.2.7"));
}

}  // namespace
}  // namespace app
