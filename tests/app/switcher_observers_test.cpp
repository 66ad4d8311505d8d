// SPDX-License-Identifier: MIT

#include "app/switcher_observers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "app/log/switcher_reports.h"
#include "app/presets/presets.h"
#include "app/shell/link_aids.h"
#include "app/shell/open_views.h"
#include "gateway/ember/provider.h"
#include "gateway/panel_gateway.h"
#include "switcher/known_map.h"
#include "switcher/unsent/unsent_messages.h"
#include "switcher/wire/message_table.h"

namespace app {
namespace {

// Writes its name into a list that all share.
class Recorder : public switcher::SwitcherEvents {
 public:
  Recorder(std::string name, std::vector<std::string>& told)
      : name_(std::move(name)), told_(told) {}
  void CrosspointRowChanged(int output, int mode) override {
    told_.push_back(name_ + " " + std::to_string(output) + " " + std::to_string(mode));
  }

 private:
  const std::string name_;
  std::vector<std::string>& told_;
};

TEST(SwitcherObservers, TheLogIsToldBeforeTheViewsAndTheNetworkLast) {
  std::vector<std::string> told;
  Recorder panels("panels", told);
  Recorder presets("presets", told);
  Recorder views("views", told);
  Recorder aids("aids", told);
  Recorder log("log", told);
  Recorder unsent("unsent", told);
  Recorder knownMap("known", told);
  Recorder gateway("gateway", told);
  const auto observers = InOrder({.knownMap = knownMap,
                                  .unsent = unsent,
                                  .log = log,
                                  .aids = aids,
                                  .views = views,
                                  .presets = presets,
                                  .panels = panels,
                                  .openGateway = gateway});
  observers.Tell(&switcher::SwitcherEvents::CrosspointRowChanged, 5, 1);
  EXPECT_THAT(told, testing::ElementsAre("known 5 1", "unsent 5 1", "log 5 1", "aids 5 1",
                                         "views 5 1", "presets 5 1", "panels 5 1", "gateway 5 1"));
}

// Whether this operation is one that its class has overridden.
template <typename Class, typename... Values>
constexpr bool IsOwn(void (Class::* /*event*/)(Values...)) {
  return !std::is_same_v<Class, switcher::SwitcherEvents>;
}

// Who has an operation of its own for an event.
template <typename HasOwn>
std::vector<std::string> HearersOf(HasOwn hasOwn) {
  std::vector<std::string> hearers;
  if (hasOwn.template operator()<switcher::KnownMap>()) hearers.emplace_back("known");
  if (hasOwn.template operator()<switcher::UnsentMessages>()) hearers.emplace_back("unsent");
  if (hasOwn.template operator()<SwitcherReports>()) hearers.emplace_back("log");
  if (hasOwn.template operator()<LinkAids>()) hearers.emplace_back("aids");
  if (hasOwn.template operator()<OpenViews>()) hearers.emplace_back("views");
  if (hasOwn.template operator()<Presets>()) hearers.emplace_back("presets");
  if (hasOwn.template operator()<gateway::PanelGateway>()) hearers.emplace_back("panels");
  if (hasOwn.template operator()<ember::Provider>()) hearers.emplace_back("gateway");
  return hearers;
}

// A message of the switcher, who hears the event that announces it, and who is to.
struct Announced {
  switcher::MessageCode code;
  std::vector<std::string> hearers;
  std::vector<std::string> wanted;
};

const Announced kAnnounced[] = {
    {switcher::kCrosspointRowCode,
     HearersOf([]<typename T>() { return IsOwn(&T::CrosspointRowChanged); }),
     {"known", "log", "aids", "views", "presets", "panels", "gateway"}},
    {switcher::kGainReportCode,
     HearersOf([]<typename T>() { return IsOwn(&T::GainsChanged); }),
     {"views", "gateway"}},
    {switcher::kTallyCode,
     HearersOf([]<typename T>() { return IsOwn(&T::TallyChanged); }),
     {"views", "gateway"}},
    {switcher::kAlphaLabelsCode,
     HearersOf([]<typename T>() { return IsOwn(&T::LabelsChanged); }),
     {"views", "panels"}},
    {switcher::kInhibitRowCode,
     HearersOf([]<typename T>() { return IsOwn(&T::InhibitsChanged); }),
     {"views"}},
    {switcher::kRelayRowCode,
     HearersOf([]<typename T>() { return IsOwn(&T::RelaysChanged); }),
     {"views"}},
    {switcher::kButtonDataCode,
     HearersOf([]<typename T>() { return IsOwn(&T::ButtonsChanged); }),
     {"views", "panels"}},
    {switcher::kOptoDataCode,
     HearersOf([]<typename T>() { return IsOwn(&T::OptosChanged); }),
     {"views"}},
};

TEST(SwitcherObservers, EveryMessageOfTheSwitcherIsHeardByWhomItConcerns) {
  for (const switcher::MessageKind& kind : switcher::kMessages) {
    if (!kind.FromSwitcher()) continue;
    const auto* const announced = std::ranges::find(kAnnounced, kind.code, &Announced::code);
    ASSERT_NE(announced, std::end(kAnnounced)) << "say who hears of it: " << kind.name;
    EXPECT_EQ(announced->hearers, announced->wanted) << kind.name;
  }
}

TEST(SwitcherObservers, WhatIsRefusedIsToldToTheLogAlone) {
  EXPECT_THAT(HearersOf([]<typename T>() { return IsOwn(&T::MessageRefused); }),
              testing::ElementsAre("log"));
}

}  // namespace
}  // namespace app
